#pragma once

#include "filter/RootFilter.h"
#include "host/WhereClause.h"
#include "repository/RecordReader.h"
#include "repository/ViewSettings.h"

// The where text of one condition on `column`. Values go in as typed,
// between single quotes, a quote in them doubled; upper-cased with the
// column in Upper(...) unless case sensitive. In a LIKE pattern a value's
// "%", "_" and "\" stand for themselves: a value holding any of them is
// written with each escaped by a backslash and " ESCAPE '\'" after the
// pattern, which both databases read the same way. Throws EQXError for an
// operator that is none of the four.
QString FilterConditionText(const QString& column, TOperator op, const QString& value,
                            bool caseSensitive);

// Appends condition `index` of the clause to `text`: after " AND " or " OR "
// (by the condition's joint) when the text is not empty. The column is the
// one the data access names for the condition's table and field.
void AppendFilterString(TQXDataAccessInterface& access, const TQXWhereClause& clause, int index,
                        bool caseSensitive, QString& text);

// Narrows the selections of QXFILE and, by level, QXPACKAGE, QXOBJECT and
// QXENTRY to what the conditions let through, and returns the condition
// texts of objects, entries, rows and words. Conditions on attributes become
// a list of the matching attribute ids on the files ("QXSystemID IN (3,7)"),
// or "QXFileID = 0" when none matches; those below the level's attributes
// (computers at System, applications at System and Computer) are left out.
// Conditions on different tables are combined by AND through the selections.
// An empty clause selects what the levels need unfiltered.
TQXRootFilter SelectFiltered(TQXRecordReader& records, TQXLevel level, const TQXWhereClause& clause,
                             bool caseSensitive);
