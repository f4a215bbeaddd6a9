#include "repository/DataAccessInterface.h"

#include "repository/Errors.h"

#include <cmath>
#include <limits>
#include <optional>

namespace {

enum class Reading { Number, Null, NotWhole, OutOfRange };

struct WholeNumber {
    Reading reading = Reading::Number;
    qint64 number = 0;
};

bool IsDigits(const QString& text) {
    qsizetype i = text.startsWith(QLatin1Char('-')) ? 1 : 0;
    if (i == text.size())
        return false;
    for (; i < text.size(); ++i)
        if (text.at(i) < QLatin1Char('0') || text.at(i) > QLatin1Char('9'))
            return false;
    return true;
}

// Integers as they are; floating point numbers when whole (PostgreSQL's
// numeric arrives as a double); texts that are an integer.
WholeNumber ReadWholeNumber(const QVariant& value) {
    if (value.isNull())
        return {Reading::Null};
    bool ok = false;
    qint64 number = 0;
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float: {
        const double real = value.toDouble();
        if (!std::isfinite(real) || std::trunc(real) != real)
            return {Reading::NotWhole};
        if (std::fabs(real) >= 9.2e18)
            return {Reading::OutOfRange};
        number = static_cast<qint64>(real);
        ok = true;
        break;
    }
    case QMetaType::ULongLong: {
        const qulonglong unsignedNumber = value.toULongLong();
        if (unsignedNumber > qulonglong(std::numeric_limits<qint64>::max()))
            return {Reading::OutOfRange};
        number = qint64(unsignedNumber);
        ok = true;
        break;
    }
    case QMetaType::QString:
    case QMetaType::QByteArray: {
        const QString text = value.toString().trimmed();
        number = text.toLongLong(&ok);
        if (!ok) // digits too many for 64 bits are still a number, out of range
            return {IsDigits(text) ? Reading::OutOfRange : Reading::NotWhole};
        break;
    }
    default:
        number = value.toLongLong(&ok);
    }
    if (!ok)
        return {Reading::NotWhole};
    if (number < std::numeric_limits<qint32>::min() || number > std::numeric_limits<qint32>::max())
        return {Reading::OutOfRange, number};
    return {Reading::Number, number};
}

QString Shown(const QVariant& value) {
    QString text = value.toString();
    if (text.size() > 40)
        text = text.left(40) + QStringLiteral("...");
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

const QString RangeText = QStringLiteral("the 32-bit range (-2147483648 to 2147483647)");

} // namespace

void TQXDataAccessInterface::BeginTransaction() {
    throw EQXError(QStringLiteral("This repository connection cannot keep writes together"));
}

void TQXDataAccessInterface::CommitTransaction() {}

void TQXDataAccessInterface::RollbackTransaction() {}

TQXTransaction::TQXTransaction(TQXDataAccessInterface& dataAccess) : FDataAccess(dataAccess) {
    FDataAccess.BeginTransaction();
}

TQXTransaction::~TQXTransaction() {
    if (!FOpen)
        return;
    try {
        FDataAccess.RollbackTransaction();
    } catch (...) {
        // A connection lost mid-way has rolled back on the server already.
    }
}

void TQXTransaction::Commit() {
    // A commit that fails (a SQLite file locked by a reader) leaves the
    // transaction to the rollback of the destructor.
    FDataAccess.CommitTransaction();
    FOpen = false;
}

qint32 VariantToInt(const QVariant& value) {
    const WholeNumber read = ReadWholeNumber(value);
    switch (read.reading) {
    case Reading::Number:
        return static_cast<qint32>(read.number);
    case Reading::OutOfRange:
        throw EQXError(QStringLiteral("The value ") + value.toString() +
                       QStringLiteral(" lies outside ") + RangeText);
    case Reading::Null:
    case Reading::NotWhole:
        break;
    }
    throw EQXError(
        QStringLiteral("Could not convert variant of type (%1) into type (Integer)")
            .arg(value.isNull() ? QStringLiteral("Null") : QString::fromLatin1(value.typeName())));
}

QString VariantToText(const QVariant& value) {
    return value.isNull() ? QString() : value.toString();
}

qint32 RecordInt(const QVariant& value, const QString& table, const QString& column,
                 const TQXDataSet* record) {
    const WholeNumber read = ReadWholeNumber(value);
    if (read.reading == Reading::Number)
        return static_cast<qint32>(read.number);
    QString where = record ? record->RecordName() : QString();
    if (where.isEmpty())
        where = QStringLiteral("the current record");
    const QString field = table + QLatin1Char('.') + column;
    switch (read.reading) {
    case Reading::Null:
        throw EQXError(field + QStringLiteral(" is NULL in ") + where);
    case Reading::NotWhole:
        throw EQXError(field + QStringLiteral(" is not a whole number in ") + where +
                       QStringLiteral(": ") + Shown(value));
    case Reading::OutOfRange:
    case Reading::Number:
        break;
    }
    throw EQXError(field + QStringLiteral(" is ") + value.toString().trimmed() +
                   QStringLiteral(" in ") + where + QStringLiteral(", outside ") + RangeText);
}

QList<QVariantList> TQXDataAccessInterface::PeekKeys(TQXTableRef, const QString&, int) {
    return {};
}

void TQXDataAccessInterface::PrepareLocate(TQXTableRef, const QString&,
                                           const QList<QVariantList>&) {}
