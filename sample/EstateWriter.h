#pragma once

#include "SampleEstate.h"

#include <QSqlDatabase>
#include <QString>

#include <functional>
#include <initializer_list>
#include <vector>

// Appends records to one table with multi-row INSERT statements whose values
// are written into the statement text: binding values one by one through Qt
// costs more than the database spends on the whole row. Texts are quoted
// with single quotes doubled, which both databases read literally.
class TTableWriter {
public:
    TTableWriter(const QSqlDatabase& db, const char* table,
                 std::initializer_list<const char*> columns, int rowsPerStatement,
                 std::function<void()> beforeFlush);
    TTableWriter(const TTableWriter&) = delete;
    TTableWriter& operator=(const TTableWriter&) = delete;

    template <typename... Values> void Add(const Values&... values) {
        Q_ASSERT(sizeof...(values) == std::size_t(FColumnCount));
        FSql += FPendingRows == 0 ? QStringView(u"(") : QStringView(u",(");
        bool first = true;
        ((Append(values, first), first = false), ...);
        FSql += QLatin1Char(')');
        if (++FPendingRows == FRowsPerStatement)
            Flush();
    }

    void Flush();
    qint64 Total() const { return FTotal; }

private:
    void Append(int number, bool first);
    void Append(const QString& text, bool first);
    void Start();

    QSqlDatabase FDb;
    QString FHead; // INSERT INTO ... VALUES
    int FColumnCount;
    int FRowsPerStatement;
    std::function<void()> FBeforeFlush;
    QString FSql;
    int FPendingRows = 0;
    qint64 FTotal = 0;
};

// One writer per repository table, in the column order of the schema.
// Nothing is buffered beyond one statement per table, so memory stays flat
// however large the estate.
class TEstateWriter {
public:
    // beforeFlush runs before every statement; it may throw to stop the load.
    TEstateWriter(const QSqlDatabase& db, std::function<void()> beforeFlush);

    void Attribute(qint32 id, int type, const QString& name, int icon);
    void File(qint32 id, qint32 computer, qint32 system, qint32 application, int language,
              const QString& name, const QString& directory);
    void Object(qint32 file, qint32 object, int language, qint32 inPackage, const QString& name,
                const QString& inherits, const QString& identifier, const QString& type, int icon,
                const QString& parentName, const QString& inheritsParentName);
    void Entry(qint32 file, qint32 object, qint32 entry, const QString& name,
               const QString& identifier);
    void Row(qint32 file, qint32 object, qint32 entry, qint32 row, const QString& text, bool call);
    void Word(qint32 file, qint32 object, qint32 entry, qint32 row, qint32 word, int sectionType,
              int sectionLevel, const QString& text, int wordType, const QString& identifier,
              int language);
    void Dependency(qint32 file, qint32 object, qint32 entry, qint32 inheritsFile,
                    qint32 inheritsObject, qint32 fromFile, qint32 fromObject, qint32 fromEntry,
                    qint32 fromRow, qint32 fromWord);
    void Package(qint32 file, qint32 package, const QString& packageName, const QString& objectName,
                 qint32 objectFile, qint32 object);
    void DataFlow(qint32 file, qint32 row, qint32 word, qint32 fromFile, qint32 fromRow,
                  qint32 fromWord);
    void Load(qint32 load, const QString& directory, const QString& fileName, int language,
              const QString& systemName, const QString& computerType,
              const QString& computerLocation, const QString& applicationName);

    void Flush(); // writes what every table still holds
    SampleEstateCounts Counts() const;

private:
    TTableWriter FAttributes, FFiles, FObjects, FEntries, FRows, FWords, FDependencies, FPackages,
        FDataFlows, FLoads;
};
