// The item and row tools on a large estate, through the very view the host
// shows (off screen):
//  - "Expand All" from one application node of the Dependencies view by
//    Application, TopDown (the first one, or --root): nodes opened per
//    second and the process's peak
//    memory, stopped (as a user's Cancel would) after --max-nodes nodes;
//  - "Show Dependent Rows" of an object called from --lines lines of one
//    caller, added to a copy of the estate: median and p95.
//
//   bench_tools [--max-nodes N] [--root TEXT] [--lines N] [--runs N] REPOSITORY
#include "BenchStats.h"

#include "driver/ViewDriver.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "sqlaccess/SqlDataAccess.h"
#include "tools/DependentRows.h"
#include "view/View.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <cstdio>

namespace {

// The process's peak resident memory so far, in MiB (VmHWM).
double PeakMiB() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return -1;
}

void ExpandAll(const QString& repository, int maxNodes, const QString& rootText) {
    TQXViewDriver driver(repository);
    TQXViewSettings settings;
    settings.Type = TQXViewType::Dependencies;
    settings.Level = TQXLevel::Application;
    settings.LimitText = QStringLiteral("100000");
    driver.Apply(settings);
    driver.Refresh();
    TQXTreeNode* root = nullptr;
    for (int i = 0; i < driver.Tree().RootCount() && !root; ++i)
        if (TQXTreeControl::HasPlaceholder(driver.Tree().Root(i)) &&
            (rootText.isEmpty() || driver.Tree().Root(i)->Text() == rootText))
            root = driver.Tree().Root(i);
    if (!root)
        throw EQXError(QStringLiteral("no application node to expand"));
    driver.Tree().Select(root);
    driver.Ui().SetCancelProgressAfter(maxNodes);
    const double before = PeakMiB();
    QElapsedTimer clock;
    clock.start();
    driver.View().ExpandAll1Click(
        driver.View().pmnuView->findChild<QAction*>(QStringLiteral("ExpandAll1")));
    const double seconds = clock.nsecsElapsed() / 1e9;
    const int opened = driver.Ui().ProgressSteps();
    std::printf("expand all from %s: %d nodes opened%s, %d nodes in the tree, %.2f s, %.0f nodes "
                "opened/s, %.0f nodes/s, peak memory %.0f MiB (%.0f MiB before)\n",
                qPrintable(root->Text()), opened, opened >= maxNodes ? " (stopped)" : "",
                driver.Tree().NodeCount(), seconds, opened / seconds,
                driver.Tree().NodeCount() / seconds, PeakMiB(), before);
}

// A copy of the estate in which the first object calls the second from
// `lines` lines of its first entry.
QString WithCallingLines(const QString& repository, const QTemporaryDir& dir, int lines,
                         std::unique_ptr<TQXItem>& caller, std::unique_ptr<TQXItem>& called) {
    const QString copy = dir.filePath(QStringLiteral("rows.kvdb"));
    if (!QFile::copy(repository, copy))
        throw EQXError(QStringLiteral("cannot copy ") + repository);
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("w"));
        db.setDatabaseName(copy);
        db.open();
        QSqlQuery query(db);
        query.exec(
            QStringLiteral("SELECT QXFileID, QXObjectID FROM QXOBJECT ORDER BY QXSeq LIMIT 2"));
        query.next();
        caller = TQXItem::ForObject(query.value(0).toInt(), query.value(1).toInt());
        query.next();
        called = TQXItem::ForObject(query.value(0).toInt(), query.value(1).toInt());
        db.transaction();
        QSqlQuery row(db), call(db);
        row.prepare(QStringLiteral("INSERT INTO QXROW (QXFileID, QXObjectID, QXEntryID, QXRowID, "
                                   "QXRow, QXCall) VALUES (?, ?, 1, ?, ?, 1)"));
        call.prepare(QStringLiteral("INSERT INTO QXDEPENDENCIES (QXFileID, QXObjectID, "
                                    "QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID) "
                                    "VALUES (?, ?, ?, ?, 1, ?)"));
        for (int i = 0; i < lines; ++i) {
            const int rowID = 900000000 + i;
            row.addBindValue(caller->FileID);
            row.addBindValue(caller->ObjectID);
            row.addBindValue(rowID);
            row.addBindValue(QStringLiteral("           CALL 'BENCH' USING AREA-%1").arg(i));
            row.exec();
            for (const QVariant& value :
                 {QVariant(called->FileID), QVariant(called->ObjectID), QVariant(caller->FileID),
                  QVariant(caller->ObjectID), QVariant(rowID)})
                call.addBindValue(value);
            call.exec();
        }
        db.commit();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("w"));
    return copy;
}

void DependentRows(const QString& repository, int lines, int runs) {
    QTemporaryDir dir;
    std::unique_ptr<TQXItem> caller, called;
    const QString copy = WithCallingLines(repository, dir, lines, caller, called);
    SqlDataAccess access(copy);
    int listed = 0;
    qint64 trips = 0;
    const BenchSamples samples = Measure(runs, [&] {
        const qint64 before = access.RoundTrips();
        TQXDependentRowsReader reader(access);
        listed = static_cast<int>(reader.Rows(*reader.Condition(*caller, *called, true)).size());
        trips = access.RoundTrips() - before;
        access.EndRefresh(true, false); // each run reads afresh
    });
    std::printf("dependent rows of an object called from %d lines: %d rows listed, median %.1f "
                "ms, p95 %.1f ms, %lld round trips\n",
                lines, listed, samples.Median(), samples.P95(), static_cast<long long>(trips));
}

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOption(
        {QStringLiteral("max-nodes"), QString(), QStringLiteral("N"), QStringLiteral("20000")});
    parser.addOption(
        {QStringLiteral("lines"), QString(), QStringLiteral("N"), QStringLiteral("1000")});
    parser.addOption({QStringLiteral("root"), QString(), QStringLiteral("TEXT")});
    parser.addOption({QStringLiteral("runs"), QString(), QStringLiteral("N"), QStringLiteral("5")});
    parser.process(app);
    if (parser.positionalArguments().size() != 1) {
        std::fprintf(stderr,
                     "usage: bench_tools [--max-nodes N] [--lines N] [--runs N] REPOSITORY\n");
        return 2;
    }
    const QString repository = parser.positionalArguments().constFirst();
    try {
        ExpandAll(repository, parser.value(QStringLiteral("max-nodes")).toInt(),
                  parser.value(QStringLiteral("root")));
        DependentRows(repository, parser.value(QStringLiteral("lines")).toInt(),
                      parser.value(QStringLiteral("runs")).toInt());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "bench_tools: %s\n", qPrintable(ExceptionMessage(e)));
        return 1;
    }
    return 0;
}
