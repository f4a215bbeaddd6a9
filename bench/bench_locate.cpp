// LocateRecord in a large selection: 10,000 lookups by two key columns in a
// selection of 100,000 records, as the root-item listing does when it tests
// membership in the filtered selections.
//
//   bench_locate [--records N] [--locates N] [--runs N] [--pg CONNINFO]
#include "BenchStats.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/RepositorySchema.h"
#include "sqlaccess/SqlDataAccess.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QRandomGenerator>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace {

void Fill(QSqlDatabase& db, int records) {
    RepositorySchema::DropTables(db);
    RepositorySchema::CreateTables(db);
    db.transaction();
    QSqlQuery insert(db);
    insert.prepare(QStringLiteral(
        "INSERT INTO QXOBJECT (QXFileID, QXObjectID, QXObjectName, QXIcon) VALUES (?, ?, ?, ?)"));
    for (int i = 0; i < records; ++i) {
        insert.addBindValue(1 + i / 50);
        insert.addBindValue(1 + i % 50);
        insert.addBindValue(QStringLiteral("PROG%1").arg(i));
        insert.addBindValue(20);
        insert.exec();
    }
    db.commit();
    RepositorySchema::CreateIndexes(db);
}

void Run(const QString& label, const QString& repository, int records, int locates, int runs) {
    SqlDataAccess access(repository);
    TQXTableRef object = access.GetTableRef(QStringLiteral("QXOBJECT"));
    const QString keys = QStringLiteral("QXFileID;QXObjectID");
    const int files = records / 50;
    int found = 0;
    qint64 trips = 0;
    const BenchSamples samples = Measure(runs, [&] {
        // A fresh selection each run, so the index is built inside the measurement.
        access.SelectRecords(object, QString());
        QRandomGenerator random(42);
        const qint64 before = access.RoundTrips();
        found = 0;
        for (int i = 0; i < locates; ++i) {
            // One lookup in five asks for an object that is not there.
            const int file = 1 + random.bounded(files + files / 4);
            const int id = 1 + random.bounded(50);
            found += access.LocateRecord(object, keys, {file, id}, 1) ? 1 : 0;
        }
        trips = access.RoundTrips() - before;
    });
    Out() << QStringLiteral("%1: %2 LocateRecord in a %3-record selection: median %4 ms, p95 %5 "
                            "ms (%6 us per locate), %7 found, %8 round trips per run, %9 runs\n")
                 .arg(label)
                 .arg(locates)
                 .arg(records)
                 .arg(samples.Median(), 0, 'f', 1)
                 .arg(samples.P95(), 0, 'f', 1)
                 .arg(1000.0 * samples.Median() / locates, 0, 'f', 2)
                 .arg(found)
                 .arg(trips)
                 .arg(runs);
    Out().flush();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({"records", "Records in the selection.", "n", "100000"});
    parser.addOption({"locates", "LocateRecord calls per run.", "n", "10000"});
    parser.addOption({"runs", "Runs.", "n", "7"});
    parser.addOption({"pg", "Also on this PostgreSQL database (its QX tables are replaced).",
                      "conninfo", qEnvironmentVariable("KV_BENCH_PG")});
    parser.process(app);
    const int records = parser.value("records").toInt();
    const int locates = parser.value("locates").toInt();
    const int runs = parser.value("runs").toInt();
    try {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("locate.kvdb"));
        {
            QSqlDatabase db = OpenRepositoryDatabase(RepositoryLocation::Parse(file), "fill",
                                                     OpenMode::CreateIfMissing);
            Fill(db, records);
        }
        CloseRepositoryDatabase("fill");
        Run(QStringLiteral("SQLite"), file, records, locates, runs);
        if (!parser.value("pg").isEmpty()) {
            {
                QSqlDatabase db = OpenRepositoryDatabase(
                    RepositoryLocation::Parse(parser.value("pg")), "fill", OpenMode::ExistingOnly);
                Fill(db, records);
            }
            CloseRepositoryDatabase("fill");
            Run(QStringLiteral("PostgreSQL"), parser.value("pg"), records, locates, runs);
        }
    } catch (const EQXError& e) {
        Out() << "bench_locate: " << e.Message() << "\n";
        return 1;
    }
    return 0;
}
