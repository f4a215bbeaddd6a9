#include "tools/AttributeWriter.h"

#include "repository/DataAccessInterface.h"
#include "repository/Errors.h"
#include "repository/SchemaNames.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "tools/NamedTable.h"

TQXComputerName TQXComputerName::Split(const QString& name) {
    // Empty parts are empty texts, never NULL: the columns are NOT NULL.
    auto text = [](const QString& part) { return part.isNull() ? QStringLiteral("") : part; };
    const qsizetype at = name.indexOf(QLatin1Char('@'));
    if (at < 0)
        return {text(name), text(QString()), false};
    return {text(name.left(at)), text(name.mid(at + 1)), true};
}

namespace {

// Renames the load records that name the attribute by its old name; the
// number of records changed.
int RenameLoadRecords(TQXDataAccessInterface& dataAccess, int type, const QString& oldName,
                      const QString& newName) {
    const char* column = type == qx::code::AttributeSystem        ? "QXSystemName"
                         : type == qx::code::AttributeComputer    ? "QXComputerType"
                         : type == qx::code::AttributeApplication ? "QXApplicationName"
                                                                  : nullptr;
    // Another type, or a name that stays: no load record changes.
    if (!column || oldName == newName)
        return 0;
    const bool computer = type == qx::code::AttributeComputer;
    const TQXComputerName oldComputer = TQXComputerName::Split(oldName);
    const TQXComputerName newComputer = TQXComputerName::Split(newName);
    QString condition;
    if (computer && oldComputer.HasLocation)
        condition = where::TextEquals("QXComputerType", oldComputer.Type) +
                    where::AndText("QXComputerLocation", oldComputer.Location);
    else
        condition = where::TextEquals(column, oldName);

    TQXNamedTable loads(dataAccess, QLatin1String(qx::QXLOADName));
    int changed = 0;
    if (!loads.Select(condition))
        return 0;
    do {
        if (computer) {
            loads.Set("QXComputerType", newComputer.Type);
            loads.Set("QXComputerLocation", newComputer.Location);
        } else {
            loads.Set(column, newName);
        }
        ++changed;
    } while (loads.Next());
    return changed;
}

} // namespace

int SaveAttribute(TQXDataAccessInterface& dataAccess, qint32 attributeID, const QString& name,
                  std::optional<int> icon) {
    int changed = 0;
    {
        TQXTransaction transaction(dataAccess);
        TQXNamedTable attributes(dataAccess, QStringLiteral("QXATTRIBUTE"));
        if (!attributes.Select(where::Keys({{"QXAttributeID", attributeID}})))
            throw EQXError(QStringLiteral("The attribute with QXAttributeID = ") +
                           where::Number(attributeID) +
                           QStringLiteral(" is no longer in the repository"));
        const QString oldName = attributes.Text("QXAttributeName");
        const int type = attributes.Int("QXAttributeType");
        attributes.Set("QXAttributeName", name);
        if (icon)
            attributes.Set("QXIcon", *icon);
        changed = RenameLoadRecords(dataAccess, type, oldName, name);
        transaction.Commit();
    }
    dataAccess.EndRefresh(true, false);
    return changed;
}

bool DeleteAttribute(TQXDataAccessInterface& dataAccess, const TQXItem& item) {
    const char* column = nullptr;
    qint32 id = 0;
    if (item.ApplicationID > 0) {
        column = "QXApplicationID";
        id = item.ApplicationID;
    } else if (item.ComputerID > 0) {
        column = "QXComputerID";
        id = item.ComputerID;
    } else if (item.SystemID > 0) {
        column = "QXSystemID";
        id = item.SystemID;
    } else {
        return false;
    }
    TQXTransaction transaction(dataAccess);
    TQXNamedTable(dataAccess, QStringLiteral("QXATTRIBUTE"))
        .Delete(where::Keys({{"QXAttributeID", id}}));
    TQXNamedTable files(dataAccess, QStringLiteral("QXFILE"));
    if (files.Select(where::Keys({{column, id}}))) {
        do
            files.Set(column, 0);
        while (files.Next());
    }
    transaction.Commit();
    return true;
}
