// Selections on a large estate: the time from SelectRecords to the first
// record, and the cost of walking on, for whole tables and for selections
// narrowed by where texts, with the number of database round trips.
//
//   bench_select REPOSITORY [--runs N] [--walk N]
#include "BenchStats.h"

#include "repository/Errors.h"
#include "sqlaccess/SqlDataAccess.h"

#include <QCommandLineParser>
#include <QCoreApplication>

namespace {

struct Case {
    const char* table;
    QString where;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument("repository", "SQLite file or PostgreSQL connection string.");
    parser.addOption({"runs", "Runs per case.", "n", "7"});
    parser.addOption({"walk", "Records walked with NextRecord after the first.", "n", "100000"});
    parser.process(app);
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(2);
    const int runs = parser.value("runs").toInt();
    const int walk = parser.value("walk").toInt();
    try {
        SqlDataAccess access(parser.positionalArguments().first());
        const Case cases[] = {
            {"QXWORD", QString()},
            {"QXROW", QString()},
            {"QXWORD", QStringLiteral("QXWordType = 1011")},
            {"QXWORD", QStringLiteral("QXFileID = 7 AND QXObjectID = 1")},
            {"QXOBJECT", QStringLiteral("QXIcon = 20 OR QXIcon = 43")},
            {"QXDEPENDENCIES", QStringLiteral("QXFileID = 3")},
        };
        Out() << "case | first record median ms | p95 ms | walk of up to " << walk
              << " records median ms | records walked | round trips per walk\n";
        for (const Case& c : cases) {
            TQXTableRef table = access.GetTableRef(QLatin1String(c.table));
            const BenchSamples first = Measure(runs, [&] { access.SelectRecords(table, c.where); });
            int walked = 0;
            qint64 trips = 0;
            const BenchSamples walks = Measure(runs, [&] {
                const qint64 before = access.RoundTrips();
                walked = 0;
                if (access.SelectRecords(table, c.where))
                    for (walked = 1; walked < walk && access.NextRecord(table); ++walked) {
                    }
                trips = access.RoundTrips() - before;
            });
            Out() << c.table << (c.where.isEmpty() ? QString() : " where " + c.where) << " | "
                  << QString::number(first.Median(), 'f', 2) << " | "
                  << QString::number(first.P95(), 'f', 2) << " | "
                  << QString::number(walks.Median(), 'f', 1) << " | " << walked << " | " << trips
                  << "\n";
            Out().flush();
        }
    } catch (const EQXError& e) {
        Out() << "bench_select: " << e.Message() << "\n";
        return 1;
    }
    return 0;
}
