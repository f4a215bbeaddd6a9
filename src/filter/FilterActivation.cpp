#include "filter/FilterActivation.h"

#include "filter/FilterDialog.h"
#include "repository/ImageIndexes.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"

#include <QCheckBox>

namespace {

// Attribute positions in the dialog's list of attributes.
enum Attribute : int {
    SystemsName = 0,
    ComputersName = 1,
    ApplicationsName = 2,
    PackagesName = 3,
    ObjectsName = 4,
    EntrysName = 6,
    LineOfCode = 7,
    VariablesName = 8,
    FilesName = 10,
};
constexpr int EqualsOperator = 0;
constexpr int AndJoint = 1;

} // namespace

QString ActivateFilterFor(TQXFilter& filter, TQXRecordReader& records, const TQXItem& item) {
    using qx::Table;
    filter.WhereClause().Clear();
    int joint = -1;
    QString level;
    auto addRow = [&](int attribute, const QString& name, const char* rowLevel) {
        filter.AddFilterRow(attribute, EqualsOperator, name, joint);
        joint = AndJoint;
        level = QLatin1String(rowLevel);
    };

    const struct {
        qint32 Id;
        int Attribute;
        const char* Level;
    } attributes[] = {{item.SystemID, SystemsName, "System"},
                      {item.ComputerID, ComputersName, "Computer"},
                      {item.ApplicationID, ApplicationsName, "Application"}};
    for (const auto& attribute : attributes)
        if (attribute.Id > 0 &&
            records.Select(Table::QXATTRIBUTE,
                           QStringLiteral("QXAttributeID = ") + where::Number(attribute.Id)))
            addRow(attribute.Attribute,
                   records.Text(Table::QXATTRIBUTE, qx::QXATTRIBUTE::QXAttributeName),
                   attribute.Level);

    // Each level found narrows the next one's lookup.
    QString keys =
        item.FileID > 0 ? QStringLiteral("QXFileID = ") + where::Number(item.FileID) : QString();
    auto extend = [&keys](const char* column, qint32 id) {
        if (!keys.isEmpty())
            keys += QStringLiteral(" AND ");
        keys += QLatin1String(column) + QStringLiteral(" = ") + where::Number(id);
    };
    if (item.PackageID > 0) {
        extend("QXPackageID", item.PackageID);
        if (records.Select(Table::QXPACKAGE, keys))
            addRow(PackagesName, records.Text(Table::QXPACKAGE, qx::QXPACKAGE::QXPackageName),
                   "Package");
    }
    if (item.ObjectID > 0) {
        extend("QXObjectID", item.ObjectID);
        if (records.Select(Table::QXOBJECT, keys)) {
            addRow(ObjectsName, records.Text(Table::QXOBJECT, qx::QXOBJECT::QXObjectName),
                   "Object");
            if (records.Int(Table::QXOBJECT, qx::QXOBJECT::QXIcon) == image::IconInFile &&
                records.Select(Table::QXFILE,
                               QStringLiteral("QXFileID = ") + where::Number(item.FileID)))
                filter.AddFilterRow(FilesName, EqualsOperator,
                                    records.Text(Table::QXFILE, qx::QXFILE::QXFileName), joint);
        }
    }
    if (item.EntryID > 0) {
        extend("QXEntryID", item.EntryID);
        if (records.Select(Table::QXENTRY, keys))
            addRow(EntrysName, records.Text(Table::QXENTRY, qx::QXENTRY::QXEntryName), "Entry");
    }
    if (item.WordID > 0) {
        extend("QXWordID", item.WordID);
        if (records.Select(Table::QXWORD, keys))
            addRow(VariablesName, records.Text(Table::QXWORD, qx::QXWORD::QXWord), "Data");
    } else if (item.RowID > 0) {
        extend("QXRowID", item.RowID);
        if (records.Select(Table::QXROW, keys))
            addRow(LineOfCode, records.Text(Table::QXROW, qx::QXROW::QXRow), "Code");
    }

    if (level.isEmpty())
        return level;
    filter.cbCaseSensitive->setChecked(true);
    filter.cbCaseSensitiveClick();
    filter.cbApplyClick();
    return level;
}
