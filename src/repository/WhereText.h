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
// can never end the literal; other values come out as they stand. A value
// holding a NUL character comes out as NULL: no statement text can carry it
// and PostgreSQL cannot store it, so a comparison with it finds nothing.
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

// The text upper-cased as Upper( does it: one code point at a time by its
// simple case mapping, as PostgreSQL does in a UTF-8 database and the
// repository connection's own Upper does on SQLite ("ü" becomes "Ü",
// "ß" stays, "ı" becomes "I").
QString UpperCase(const QString& text);

// A LIKE pattern for the texts that begin with prefix: the prefix in quotes,
// each backslash, "_" and "%" in it escaped by a backslash, then "%'" and
// " ESCAPE '\'". Both databases read it the same (PostgreSQL keeps a
// backslash in a literal as it stands), and the prefix matches only itself.
QString LikePrefix(const QString& prefix);

} // namespace where
