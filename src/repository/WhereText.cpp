#include "repository/WhereText.h"

#include "repository/SchemaNames.h"

#include <QStringList>

namespace where {

QString Number(qint32 value) {
    return QString::number(value);
}

QString Quoted(const QString& value) {
    if (value.contains(QChar(u'\0')))
        return QStringLiteral("NULL");
    QString escaped = value;
    escaped.replace(QLatin1Char('\''), QLatin1String("''"));
    return QLatin1Char('\'') + escaped + QLatin1Char('\'');
}

QString Keys(std::initializer_list<std::pair<const char*, qint32>> keys) {
    QString text;
    for (const auto& [column, value] : keys) {
        if (!text.isEmpty())
            text += QLatin1String(" AND ");
        text += QLatin1String(column) + QLatin1String(" = ") + Number(value);
    }
    return text;
}

QString FileObjectKeys(qint32 fileID, qint32 objectID) {
    return Keys({{"QXFileID", fileID}, {"QXObjectID", objectID}});
}

QString AndVariableDeclarations() {
    return QLatin1String(" AND QXWordType = ") + Number(qx::code::WordVariableDeclaration);
}

QString AndKey(const char* column, qint32 value) {
    return QLatin1String(" AND ") + QLatin1String(column) + QLatin1String(" = ") + Number(value);
}

QString TextEquals(const char* column, const QString& value) {
    return QLatin1String(column) + QLatin1String(" = ") + Quoted(value);
}

QString AndText(const char* column, const QString& value) {
    return QLatin1String(" AND ") + TextEquals(column, value);
}

QString AndSub(const QString& condition) {
    if (condition.isEmpty())
        return {};
    return QLatin1String(" AND (") + condition + QLatin1Char(')');
}

QString In(const char* column, const QList<qint32>& values, const QString& separator) {
    QStringList numbers;
    numbers.reserve(values.size());
    for (qint32 value : values)
        numbers << Number(value);
    return QLatin1String(column) + QLatin1String(" IN (") + numbers.join(separator) +
           QLatin1Char(')');
}

QString Upper(const QString& column) {
    return QLatin1String("Upper(") + column + QLatin1Char(')');
}

QString UpperCase(const QString& text) {
    QString upper;
    upper.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t code = text.at(i).unicode();
        if (QChar::isHighSurrogate(code) && i + 1 < text.size() &&
            text.at(i + 1).isLowSurrogate()) {
            code = QChar::surrogateToUcs4(text.at(i), text.at(i + 1));
            ++i;
        }
        code = QChar::toUpper(code); // a lone surrogate stays as it is
        if (QChar::requiresSurrogates(code)) {
            upper += QChar(QChar::highSurrogate(code));
            upper += QChar(QChar::lowSurrogate(code));
        } else {
            upper += QChar(static_cast<char16_t>(code));
        }
    }
    return upper;
}

QString LikePrefix(const QString& prefix) {
    QString escaped;
    escaped.reserve(prefix.size() + 1);
    for (const QChar c : prefix) {
        if (c == QLatin1Char('\\') || c == QLatin1Char('_') || c == QLatin1Char('%'))
            escaped += QLatin1Char('\\');
        escaped += c;
    }
    return Quoted(escaped + QLatin1Char('%')) + QStringLiteral(" ESCAPE '\\'");
}

} // namespace where
