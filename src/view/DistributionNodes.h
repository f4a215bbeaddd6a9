#pragma once

#include "repository/RecordReader.h"

#include <QList>
#include <QString>

// Pieces shared by the Distribution expansion, the object contents and the
// root items.

// The text of an object node: QXObjectName + " [" + QXObjectType + "]" of the
// current QXOBJECT record.
QString ObjectNodeText(TQXRecordReader& records);

// True for a name that compares greater than a single blank: the way a set
// QXSubObjectParentName or QXInheritsParentName is told from an unset one.
bool IsSetName(const QString& name);

// The files whose upper-cased name begins with the base name of the given
// file (its name up to and including the first "."; empty without one), so
// that ACCT.CBL finds ACCT.CPY ("_" and "%" in a name are letters like any
// other). The file itself is included when asked. Empty
// when the file is missing or nothing matches. Leaves a QXFILE selection.
QList<qint32> FilesSharingBaseName(TQXRecordReader& records, qint32 fileID, bool includeOwn);

// Whether an object shown in its file has anything to show when opened:
// sub-objects, an ancestor, entries, or variables of its own. False for a
// missing object.
bool ObjectHasContents(TQXRecordReader& records, qint32 fileID, qint32 objectID);
