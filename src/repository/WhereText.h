#pragma once

#include <QList>
#include <QString>

#include <initializer_list>
#include <utility>

// Helpers that build where texts from the fixed pieces the view uses: a
// column, " = " and a decimal number; " AND " between conditions; text values
// in single quotes. Each helper produces exactly the concatenation of those
// pieces, so callers can still be read against the texts they must produce.
namespace where {

// Plain decimal, minus sign for negatives, never quoted.
QString Number(qint32 value);

// A text value in single quotes. A quote inside the value is doubled, so it
// can never end the literal; other values come out as they stand.
QString Quoted(const QString& value);

// "A = 1 AND B = 2 ...": a conjunction of equalities on key columns.
QString Keys(std::initializer_list<std::pair<const char*, qint32>> keys);

// "QXFileID = " + file + " AND QXObjectID = " + object: one object's keys.
QString FileObjectKeys(qint32 fileID, qint32 objectID);

// " AND QXWordType = " + the word type of a variable declaration.
QString AndVariableDeclarations();

// " AND " + column + " = " + number.
QString AndKey(const char* column, qint32 value);

// column + " = '" + value + "'" and " AND " + that.
QString TextEquals(const char* column, const QString& value);
QString AndText(const char* column, const QString& value);

// " AND (" + condition + ")", or nothing when the condition is empty.
QString AndSub(const QString& condition);

// column + " IN (" + numbers joined by separator + ")".
QString In(const char* column, const QList<qint32>& values, const QString& separator);

// "Upper(" + column + ")".
QString Upper(const QString& column);

} // namespace where
