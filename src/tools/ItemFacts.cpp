#include "tools/ItemFacts.h"

#include "repository/SchemaNames.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "tools/NamedTable.h"

namespace {

QString Joined(std::initializer_list<qint32> ids) {
    QStringList parts;
    for (qint32 id : ids)
        parts << where::Number(id);
    return parts.join(QLatin1Char(';'));
}

void ReadAttribute(TQXDataAccessInterface& dataAccess, qint32 id, TQXItemFacts& facts) {
    facts.AttributeID = id;
    facts.KVID = QStringLiteral("QXAttributeID = ") + where::Number(id);
    TQXNamedTable attributes(dataAccess, QStringLiteral("QXATTRIBUTE"));
    if (!attributes.Select(where::Keys({{"QXAttributeID", id}})))
        return;
    facts.AttributeFound = true;
    facts.Name = attributes.Text("QXAttributeName");
    const int icon = attributes.Int("QXIcon");
    if (facts.Kind == QLatin1String("System")) {
        facts.IconChoices = {icon};
        facts.Icon = icon;
        facts.IconEditable = false;
        return;
    }
    if (icon == qx::code::IconComputerAmongApplications) {
        // A computer listed among applications: locked.
        facts.IconChoices = AttributeIconChoices(facts.Kind == QLatin1String("Computer")
                                                     ? qx::code::AttributeComputer
                                                     : qx::code::AttributeApplication);
        facts.IconChoices << icon;
        facts.Icon = icon;
        facts.NameEditable = false;
        facts.IconEditable = false;
        return;
    }
    facts.IconChoices = AttributeIconChoices(facts.Kind == QLatin1String("Computer")
                                                 ? qx::code::AttributeComputer
                                                 : qx::code::AttributeApplication);
    if (facts.IconChoices.contains(icon))
        facts.Icon = icon;
}

// The read-only kinds, by the first identifier above 0.
void ReadOtherKind(TQXDataAccessInterface& dataAccess, const TQXItem& item, TQXItemFacts& facts) {
    facts.NameEditable = false;
    facts.IconEditable = false;
    const qint32 f = item.FileID, o = item.ObjectID, e = item.EntryID, r = item.RowID;
    QString kind, table, condition;
    const char* nameColumn = nullptr;
    int icon = 0;
    bool iconFromRecord = false;
    if (item.WordID > 0) {
        kind = QStringLiteral("Variable");
        facts.KVID = Joined({f, o, e, r, item.WordID});
        table = QStringLiteral("QXWORD");
        condition = where::Keys({{"QXFileID", f},
                                 {"QXObjectID", o},
                                 {"QXEntryID", e},
                                 {"QXRowID", r},
                                 {"QXWordID", item.WordID}});
        nameColumn = "QXWord";
        icon = 35;
    } else if (r > 0) {
        kind = QStringLiteral("Line of Code");
        facts.KVID = Joined({f, o, e, r});
        table = QStringLiteral("QXROW");
        condition =
            where::Keys({{"QXFileID", f}, {"QXObjectID", o}, {"QXEntryID", e}, {"QXRowID", r}});
    } else if (e > 0) {
        kind = QStringLiteral("Entry");
        facts.KVID = Joined({f, o, e});
        table = QStringLiteral("QXENTRY");
        condition = where::Keys({{"QXFileID", f}, {"QXObjectID", o}, {"QXEntryID", e}});
        nameColumn = "QXEntryName";
        icon = 29;
    } else if (o > 0) {
        kind = QStringLiteral("Object");
        facts.KVID = Joined({f, o});
        table = QStringLiteral("QXOBJECT");
        condition = where::FileObjectKeys(f, o);
        nameColumn = "QXObjectName";
        iconFromRecord = true;
    } else if (item.PackageID > 0) {
        kind = QStringLiteral("Package");
        facts.KVID = QStringLiteral("QXPackageID = ") + where::Number(item.PackageID);
        table = QStringLiteral("QXPACKAGE");
        condition = where::Keys({{"QXFileID", f}, {"QXPackageID", item.PackageID}});
        nameColumn = "QXPackageName";
        icon = 12;
    }
    if (table.isEmpty()) {
        facts.Unsupported = true;
        return;
    }
    TQXNamedTable records(dataAccess, table);
    if (!records.Select(condition)) {
        facts.Unsupported = true;
        return;
    }
    facts.Kind = kind;
    facts.Name = nameColumn ? records.Text(nameColumn) : QString();
    facts.Icon = iconFromRecord ? records.Int("QXIcon") : icon;
    facts.IconChoices = {facts.Icon};
}

} // namespace

QList<int> AttributeIconChoices(int attributeType) {
    if (attributeType == qx::code::AttributeComputer)
        return {2, 3, 4, 5, 6, 7, 8};
    if (attributeType == qx::code::AttributeApplication)
        return {9, 10};
    return {};
}

TQXItemFacts ReadItemFacts(TQXDataAccessInterface& dataAccess, const TQXItem& item) {
    TQXItemFacts facts;
    qint32 attribute = 0;
    if (item.SystemID > 0) {
        attribute = item.SystemID;
        facts.Kind = QStringLiteral("System");
    } else if (item.ComputerID > 0) {
        attribute = item.ComputerID;
        facts.Kind = QStringLiteral("Computer");
    } else if (item.ApplicationID > 0) {
        attribute = item.ApplicationID;
        facts.Kind = QStringLiteral("Application");
    }
    if (attribute > 0)
        ReadAttribute(dataAccess, attribute, facts);
    else
        ReadOtherKind(dataAccess, item, facts);

    TQXNamedTable files(dataAccess, QStringLiteral("QXFILE"));
    if (files.Select(where::Keys({{"QXFileID", item.FileID}}))) {
        facts.InFile = files.Text("QXDirectory") + QLatin1Char('\\') + files.Text("QXFileName");
        facts.InFileKnown = true;
    }
    return facts;
}
