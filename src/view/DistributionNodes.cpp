#include "view/DistributionNodes.h"

#include "repository/SchemaNames.h"
#include "repository/WhereText.h"

#include <memory>

QString ObjectNodeText(TQXRecordReader& records) {
    return records.Text(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectName) + QStringLiteral(" [") +
           records.Text(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectType) + QLatin1Char(']');
}

bool IsSetName(const QString& name) {
    return name.compare(QLatin1String(" ")) > 0;
}

QList<qint32> TQXUpperFileNames::Beginning(TQXRecordReader& records, const QString& prefix) {
    if (!FNames) {
        FNames.emplace();
        TQXDataAccessInterface& access = records.Access();
        std::unique_ptr<TQXDataSet> query = access.OpenQuery(
            nullptr,
            {QStringLiteral("SELECT QXFileID, ") + where::Upper(QStringLiteral("QXFileName")) +
             QStringLiteral(" FROM QXFILE")},
            0);
        for (bool more = !query->Eof(); more; more = access.NextRecord(query.get()))
            if (const QVariant name = query->FieldValue(1); !name.isNull())
                FNames->emplace_back(query->FieldValue(0), name.toString());
        query->Close();
    }
    QList<qint32> files;
    for (const auto& [id, name] : *FNames)
        if (name.startsWith(prefix))
            files << RecordInt(id, QStringLiteral("QXFILE"), QStringLiteral("QXFileID"), nullptr);
    return files;
}

QList<qint32> FilesSharingBaseName(TQXRecordReader& records, qint32 fileID, bool includeOwn,
                                   TQXUpperFileNames* names) {
    using qx::Table;
    if (!records.Select(Table::QXFILE, where::Keys({{"QXFileID", fileID}})))
        return {};
    const QString fileName = records.Text(Table::QXFILE, qx::QXFILE::QXFileName);
    const qsizetype dot = fileName.indexOf(QLatin1Char('.'));
    const QString base = dot < 0 ? QString() : where::UpperCase(fileName.left(dot + 1));
    if (names) {
        QList<qint32> files = names->Beginning(records, base);
        if (!includeOwn)
            files.removeAll(fileID);
        return files;
    }
    QString condition = where::Upper(QStringLiteral("QXFileName")) + QStringLiteral(" LIKE ") +
                        where::LikePrefix(base);
    if (!includeOwn)
        condition += QStringLiteral(" AND QXFileID <> ") + where::Number(fileID);
    QList<qint32> files;
    if (!records.Select(Table::QXFILE, condition))
        return files;
    do
        files << records.Int(Table::QXFILE, qx::QXFILE::QXFileID);
    while (records.Next(Table::QXFILE));
    return files;
}

bool ObjectHasContents(TQXRecordReader& records, qint32 fileID, qint32 objectID) {
    using qx::Table;
    if (!records.Select(Table::QXOBJECT, where::FileObjectKeys(fileID, objectID)))
        return false;
    const QString inherits = records.Text(Table::QXOBJECT, qx::QXOBJECT::QXObjectInherits);
    const QString identifier = records.Text(Table::QXOBJECT, qx::QXOBJECT::QXObjectIdentifier);
    if (records.Select(Table::QXOBJECT, where::Keys({{"QXFileID", fileID}}) +
                                            where::AndText("QXSubObjectParentName", identifier)))
        return true;
    if (!inherits.isEmpty())
        return true;
    if (records.Select(Table::QXENTRY, where::FileObjectKeys(fileID, objectID)))
        return true;
    return records.Select(Table::QXWORD, where::FileObjectKeys(fileID, objectID) +
                                             QStringLiteral(" AND QXEntryID = 0") +
                                             where::AndVariableDeclarations());
}
