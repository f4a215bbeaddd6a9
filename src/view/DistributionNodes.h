#pragma once

#include "repository/RecordReader.h"

#include <QList>
#include <QString>

#include <optional>
#include <utility>
#include <vector>

// Pieces shared by the Distribution expansion, the object contents and the
// root items.

// The text of an object node: QXObjectName + " [" + QXObjectType + "]" of the
// current QXOBJECT record.
QString ObjectNodeText(TQXRecordReader& records);

// True for a name that compares greater than a single blank: the way a set
// QXSubObjectParentName or QXInheritsParentName is told from an unset one.
bool IsSetName(const QString& name);

// The upper-cased names of the repository's files as the database folds
// them, read once when first asked and kept for one refresh: the set-based
// path matches base names against them instead of scanning QXFILE with
// Upper(QXFileName) LIKE for every object opened.
class TQXUpperFileNames {
public:
    void Clear() { FNames.reset(); }
    // The files whose upper-cased name begins with `prefix`, in no order.
    QList<qint32> Beginning(TQXRecordReader& records, const QString& prefix);

private:
    std::optional<std::vector<std::pair<QVariant, QString>>> FNames; // id, name
};

// The files whose upper-cased name begins with the base name of the given
// file (its name up to and including the first "."; empty without one), so
// that ACCT.CBL finds ACCT.CPY ("_" and "%" in a name are letters like any
// other). The file itself is included when asked. Empty
// when the file is missing or nothing matches. Leaves a QXFILE selection.
// With `names`, the matching is done against them.
QList<qint32> FilesSharingBaseName(TQXRecordReader& records, qint32 fileID, bool includeOwn,
                                   TQXUpperFileNames* names = nullptr);

// Whether an object shown in its file has anything to show when opened:
// sub-objects, an ancestor, entries, or variables of its own. False for a
// missing object.
bool ObjectHasContents(TQXRecordReader& records, qint32 fileID, qint32 objectID);
