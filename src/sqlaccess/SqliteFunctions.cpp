#include "sqlaccess/SqliteFunctions.h"

#include "repository/Errors.h"
#include "repository/WhereText.h"

#include <QSqlDriver>
#include <QStringDecoder>
#include <QVariant>

#include <sqlite3.h>

#include <algorithm>

namespace {

QByteArray AsciiUpper(QByteArrayView bytes) {
    QByteArray upper(bytes.data(), bytes.size());
    for (char& c : upper)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

// Text that is not UTF-8 keeps its bytes; only its ASCII letters are folded.
QByteArray Upper(QByteArrayView utf8) {
    if (std::all_of(utf8.begin(), utf8.end(), [](char c) { return (c & 0x80) == 0; }))
        return AsciiUpper(utf8);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(utf8);
    if (decoder.hasError())
        return AsciiUpper(utf8);
    return where::UpperCase(text).toUtf8();
}

// Upper(x): NULL stays NULL, anything else is read as text and folded.
void UpperFunction(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (sqlite3_value_type(arguments[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(arguments[0]));
    const int size = sqlite3_value_bytes(arguments[0]);
    if (text == nullptr && size > 0) {
        sqlite3_result_error_nomem(context);
        return;
    }
    try {
        const QByteArray upper = Upper(QByteArrayView(text, size));
        sqlite3_result_text64(context, upper.constData(), static_cast<sqlite3_uint64>(upper.size()),
                              SQLITE_TRANSIENT, SQLITE_UTF8);
    } catch (...) { // nothing may leave a callback of SQLite's
        sqlite3_result_error_nomem(context);
    }
}

sqlite3* Handle(const QSqlDatabase& db) {
    const QVariant handle = db.isOpen() ? db.driver()->handle() : QVariant();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        throw EQXError(QStringLiteral("Not an open SQLite connection: ") + db.connectionName());
    sqlite3* connection = *static_cast<sqlite3* const*>(handle.constData());
    if (connection == nullptr)
        throw EQXError(QStringLiteral("Not an open SQLite connection: ") + db.connectionName());
    return connection;
}

} // namespace

void RegisterSqliteFunctions(const QSqlDatabase& db) {
    sqlite3* connection = Handle(db);
    int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
#ifdef SQLITE_INNOCUOUS
    flags |= SQLITE_INNOCUOUS;
#endif
    if (sqlite3_create_function_v2(connection, "Upper", 1, flags, nullptr, &UpperFunction, nullptr,
                                   nullptr, nullptr) != SQLITE_OK)
        throw EQXError(QStringLiteral("Could not register Upper on the SQLite connection: ") +
                       QString::fromUtf8(sqlite3_errmsg(connection)));
}
