#include "ViewFloors.h"

#include "repository/Errors.h"
#include "repository/TreeItems.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

// Attribute roots: the attributes of the type that some file names.
QString Attributes(const QString& type, const QString& fileColumn, const QString& order,
                   int limit) {
    return QStringLiteral("SELECT a.QXAttributeID, a.QXAttributeType, a.QXAttributeName, a.QXIcon "
                          "FROM QXATTRIBUTE a WHERE a.QXAttributeType = ") +
           type + QStringLiteral(" AND EXISTS (SELECT 1 FROM QXFILE f WHERE f.") + fileColumn +
           QStringLiteral(" = a.QXAttributeID) ORDER BY a.") + order + QStringLiteral(" LIMIT ") +
           QString::number(limit);
}

} // namespace

std::optional<ViewFloor> ViewFloor::For(const TQXViewSettings& settings, int limit, bool postgres) {
    const QString order = postgres ? QStringLiteral("ctid") : QStringLiteral("rowid");
    const QString rows = QStringLiteral(" LIMIT ") + QString::number(limit);
    switch (settings.Level) {
    case TQXLevel::System:
        return ViewFloor(Kind::System, Attributes(QStringLiteral("1"), QStringLiteral("QXSystemID"),
                                                  order, limit));
    case TQXLevel::Computer:
        return ViewFloor(Kind::Computer, Attributes(QStringLiteral("2"),
                                                    QStringLiteral("QXComputerID"), order, limit));
    case TQXLevel::Application:
        return ViewFloor(
            Kind::Application,
            QStringLiteral(
                "SELECT a.QXAttributeID, a.QXAttributeType, a.QXAttributeName, a.QXIcon "
                "FROM QXATTRIBUTE a WHERE (a.QXAttributeType = 3 AND EXISTS (SELECT 1 FROM "
                "QXFILE f WHERE f.QXApplicationID = a.QXAttributeID)) OR (a.QXAttributeType <> 3 "
                "AND a.QXIcon = 49 AND EXISTS (SELECT 1 FROM QXFILE f WHERE f.QXComputerID = "
                "a.QXAttributeID)) ORDER BY a.") +
                order + rows);
    case TQXLevel::Package:
        return ViewFloor(
            Kind::Package,
            QStringLiteral("SELECT p.QXFileID, p.QXPackageID, MIN(p.QXPackageName), MIN(p.") +
                order +
                QStringLiteral(") AS first FROM QXPACKAGE p JOIN QXFILE f ON f.QXFileID = "
                               "p.QXFileID WHERE p.QXPackageID > 0 GROUP BY p.QXFileID, "
                               "p.QXPackageID ORDER BY first") +
                rows);
    case TQXLevel::Object:
        return ViewFloor(Kind::Object,
                         QStringLiteral("SELECT o.QXFileID, o.QXObjectID, o.QXObjectName, "
                                        "o.QXObjectType, o.QXIcon, f.QXFileName FROM QXOBJECT o "
                                        "JOIN QXFILE f ON f.QXFileID = o.QXFileID WHERE o.QXIcon "
                                        "<> -1 ORDER BY o.") +
                             order + rows);
    case TQXLevel::Code:
        if (!settings.IsDependencies())
            return ViewFloor(
                Kind::Row,
                QStringLiteral(
                    "SELECT r.QXFileID, r.QXObjectID, r.QXEntryID, r.QXRowID, r.QXRow, "
                    "o.QXObjectName, e.QXEntryName FROM QXROW r LEFT JOIN QXOBJECT o ON "
                    "o.QXFileID = r.QXFileID AND o.QXObjectID = r.QXObjectID LEFT JOIN QXENTRY e "
                    "ON e.QXFileID = r.QXFileID AND e.QXObjectID = r.QXObjectID AND e.QXEntryID = "
                    "r.QXEntryID ORDER BY r.") +
                    order + rows);
        [[fallthrough]]; // the Dependencies view lists entries at this level
    case TQXLevel::Entry:
        return ViewFloor(
            Kind::Entry,
            QStringLiteral(
                "SELECT e.QXFileID, e.QXObjectID, e.QXEntryID, e.QXEntryName, o.QXObjectName, "
                "o.QXIcon, f.QXFileName FROM QXENTRY e JOIN QXOBJECT o ON o.QXFileID = "
                "e.QXFileID AND o.QXObjectID = e.QXObjectID JOIN QXFILE f ON f.QXFileID = "
                "e.QXFileID ORDER BY e.") +
                order + rows);
    case TQXLevel::Data:
        return ViewFloor(
            Kind::Word,
            QStringLiteral(
                "SELECT w.QXFileID, w.QXObjectID, w.QXEntryID, w.QXRowID, w.QXWordID, w.QXWord, "
                "w.QXObjectIdentifier, o.QXObjectName, o.QXIcon, e.QXEntryName FROM QXWORD w "
                "JOIN QXFILE f ON f.QXFileID = w.QXFileID JOIN QXOBJECT o ON o.QXFileID = "
                "w.QXFileID AND o.QXObjectID = w.QXObjectID LEFT JOIN QXENTRY e ON e.QXFileID = "
                "w.QXFileID AND e.QXObjectID = w.QXObjectID AND e.QXEntryID = w.QXEntryID WHERE "
                "w.QXWordType = 1011 AND (w.QXEntryID <= 0 OR e.QXEntryID IS NOT NULL) ORDER "
                "BY w.") +
                order + rows);
    }
    return std::nullopt;
}

QStringList ViewFloor::Run(QSqlDatabase& db) const {
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(FSql))
        throw EQXError(QStringLiteral("floor statement failed: ") + query.lastError().text());
    QStringList ids;
    auto id = [&](int i) { return query.value(i).toInt(); };
    while (query.next()) {
        std::unique_ptr<TQXItem> item;
        switch (FKind) {
        case Kind::System:
            item = TQXItem::ForSystem(id(0));
            break;
        case Kind::Computer:
            item = TQXItem::ForComputer(id(0));
            break;
        case Kind::Application:
            item = id(1) == 3 ? TQXItem::ForApplication(id(0)) : TQXItem::ForComputer(id(0));
            break;
        case Kind::Package:
            item = TQXItem::ForPackage(id(0), id(1));
            break;
        case Kind::Object:
            item = TQXItem::ForObject(id(0), id(1));
            break;
        case Kind::Entry:
            item = TQXItem::ForEntry(id(0), id(1), id(2));
            break;
        case Kind::Row:
            item = TQXItem::ForRow(id(0), id(1), id(2), id(3));
            break;
        case Kind::Word:
            item = TQXItem::ForWord(id(0), id(1), id(2), id(3), id(4));
            break;
        }
        // Every column is read, as the view reads the texts it shows.
        for (int i = 0; i < query.record().count(); ++i)
            query.value(i);
        ids << item->GetItemID();
    }
    return ids;
}
