#include "EstateWriter.h"

#include "repository/Errors.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace {
// Rows per statement: enough to amortise the statement's cost, small enough
// that a statement stays a few hundred kilobytes.
constexpr int WideBatch = 500;
constexpr int NarrowBatch = 1000;
} // namespace

TTableWriter::TTableWriter(const QSqlDatabase& db, const char* table,
                           std::initializer_list<const char*> columns, int rowsPerStatement,
                           std::function<void()> beforeFlush)
    : FDb(db), FColumnCount(int(columns.size())), FRowsPerStatement(rowsPerStatement),
      FBeforeFlush(std::move(beforeFlush)) {
    QStringList names;
    for (const char* column : columns)
        names << QLatin1String(column);
    FHead = QStringLiteral("INSERT INTO ") + QLatin1String(table) + QStringLiteral(" (") +
            names.join(QLatin1Char(',')) + QStringLiteral(") VALUES ");
    Start();
}

void TTableWriter::Start() {
    FSql.clear();
    FSql += FHead;
}

void TTableWriter::Append(int number, bool first) {
    char16_t digits[12];
    int at = 12;
    unsigned magnitude = number < 0 ? 0u - unsigned(number) : unsigned(number);
    do {
        digits[--at] = char16_t(u'0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (number < 0)
        digits[--at] = u'-';
    if (!first)
        FSql += QLatin1Char(',');
    FSql += QStringView(digits + at, 12 - at);
}

void TTableWriter::Append(const QString& text, bool first) {
    FSql += first ? QStringView(u"'") : QStringView(u",'");
    if (text.contains(QLatin1Char('\'')))
        FSql += QString(text).replace(QLatin1Char('\''), QStringLiteral("''"));
    else
        FSql += text;
    FSql += QLatin1Char('\'');
}

void TTableWriter::Flush() {
    if (FPendingRows == 0)
        return;
    if (FBeforeFlush)
        FBeforeFlush();
    QSqlQuery query(FDb);
    if (!query.exec(FSql))
        throw EQXError(QStringLiteral("Writing ") + FHead.section(QLatin1Char(' '), 2, 2) +
                       QStringLiteral(" failed: ") + query.lastError().text());
    FTotal += FPendingRows;
    FPendingRows = 0;
    Start();
}

TEstateWriter::TEstateWriter(const QSqlDatabase& db, std::function<void()> beforeFlush)
    : FAttributes(db, "QXATTRIBUTE",
                  {"QXAttributeID", "QXAttributeType", "QXAttributeName", "QXIcon"}, NarrowBatch,
                  beforeFlush),
      FFiles(db, "QXFILE",
             {"QXFileID", "QXComputerID", "QXSystemID", "QXApplicationID", "QXLanguageID",
              "QXFileName", "QXDirectory"},
             NarrowBatch, beforeFlush),
      FObjects(db, "QXOBJECT",
               {"QXFileID", "QXObjectID", "QXLanguageID", "QXInPackage", "QXObjectName",
                "QXObjectInherits", "QXObjectIdentifier", "QXObjectType", "QXIcon",
                "QXSubObjectParentName", "QXInheritsParentName"},
               WideBatch, beforeFlush),
      FEntries(db, "QXENTRY",
               {"QXFileID", "QXObjectID", "QXEntryID", "QXEntryName", "QXObjectIdentifier"},
               NarrowBatch, beforeFlush),
      FRows(db, "QXROW", {"QXFileID", "QXObjectID", "QXEntryID", "QXRowID", "QXRow", "QXCall"},
            NarrowBatch, beforeFlush),
      FWords(db, "QXWORD",
             {"QXFileID", "QXObjectID", "QXEntryID", "QXRowID", "QXWordID", "QXSectionType",
              "QXSectionLevel", "QXWord", "QXWordType", "QXObjectIdentifier", "QXLanguageID"},
             WideBatch, beforeFlush),
      FDependencies(db, "QXDEPENDENCIES",
                    {"QXFileID", "QXObjectID", "QXEntryID", "QXInheritsFileID",
                     "QXInheritsObjectID", "QXFromFileID", "QXFromObjectID", "QXFromEntryID",
                     "QXFromRowID", "QXFromWordID"},
                    WideBatch, beforeFlush),
      FPackages(db, "QXPACKAGE",
                {"QXFileID", "QXPackageID", "QXPackageName", "QXObjectName", "QXObjectFileID",
                 "QXObjectID"},
                NarrowBatch, beforeFlush),
      FDataFlows(db, "QXDATAFLOW",
                 {"QXFileID", "QXRowID", "QXWordID", "QXFromFileID", "QXFromRowID", "QXFromWordID"},
                 NarrowBatch, beforeFlush),
      FLoads(db, "QXLOAD",
             {"QXLoadID", "QXDirectory", "QXFileName", "QXLanguageID", "QXSystemName",
              "QXComputerType", "QXComputerLocation", "QXApplicationName"},
             NarrowBatch, beforeFlush) {}

void TEstateWriter::Attribute(qint32 id, int type, const QString& name, int icon) {
    FAttributes.Add(id, type, name, icon);
}

void TEstateWriter::File(qint32 id, qint32 computer, qint32 system, qint32 application,
                         int language, const QString& name, const QString& directory) {
    FFiles.Add(id, computer, system, application, language, name, directory);
}

void TEstateWriter::Object(qint32 file, qint32 object, int language, qint32 inPackage,
                           const QString& name, const QString& inherits, const QString& identifier,
                           const QString& type, int icon, const QString& parentName,
                           const QString& inheritsParentName) {
    FObjects.Add(file, object, language, inPackage, name, inherits, identifier, type, icon,
                 parentName, inheritsParentName);
}

void TEstateWriter::Entry(qint32 file, qint32 object, qint32 entry, const QString& name,
                          const QString& identifier) {
    FEntries.Add(file, object, entry, name, identifier);
}

void TEstateWriter::Row(qint32 file, qint32 object, qint32 entry, qint32 row, const QString& text,
                        bool call) {
    FRows.Add(file, object, entry, row, text, call ? 1 : 0);
}

void TEstateWriter::Word(qint32 file, qint32 object, qint32 entry, qint32 row, qint32 word,
                         int sectionType, int sectionLevel, const QString& text, int wordType,
                         const QString& identifier, int language) {
    FWords.Add(file, object, entry, row, word, sectionType, sectionLevel, text, wordType,
               identifier, language);
}

void TEstateWriter::Dependency(qint32 file, qint32 object, qint32 entry, qint32 inheritsFile,
                               qint32 inheritsObject, qint32 fromFile, qint32 fromObject,
                               qint32 fromEntry, qint32 fromRow, qint32 fromWord) {
    FDependencies.Add(file, object, entry, inheritsFile, inheritsObject, fromFile, fromObject,
                      fromEntry, fromRow, fromWord);
}

void TEstateWriter::Package(qint32 file, qint32 package, const QString& packageName,
                            const QString& objectName, qint32 objectFile, qint32 object) {
    FPackages.Add(file, package, packageName, objectName, objectFile, object);
}

void TEstateWriter::DataFlow(qint32 file, qint32 row, qint32 word, qint32 fromFile, qint32 fromRow,
                             qint32 fromWord) {
    FDataFlows.Add(file, row, word, fromFile, fromRow, fromWord);
}

void TEstateWriter::Load(qint32 load, const QString& directory, const QString& fileName,
                         int language, const QString& systemName, const QString& computerType,
                         const QString& computerLocation, const QString& applicationName) {
    FLoads.Add(load, directory, fileName, language, systemName, computerType, computerLocation,
               applicationName);
}

void TEstateWriter::Flush() {
    for (TTableWriter* table : {&FAttributes, &FFiles, &FObjects, &FEntries, &FRows, &FWords,
                                &FDependencies, &FPackages, &FDataFlows, &FLoads})
        table->Flush();
}

SampleEstateCounts TEstateWriter::Counts() const {
    SampleEstateCounts counts;
    counts.files = FFiles.Total();
    counts.objects = FObjects.Total();
    counts.entries = FEntries.Total();
    counts.rows = FRows.Total();
    counts.words = FWords.Total();
    counts.dependencies = FDependencies.Total();
    counts.packages = FPackages.Total();
    counts.attributes = FAttributes.Total();
    counts.dataflows = FDataFlows.Total();
    counts.loads = FLoads.Total();
    return counts;
}
