// The views on estates of several sizes, through the very view the host
// shows (off screen): refresh of every level in both view types, single node
// expansions, and opening many nodes of a Dependencies tree breadth first.
// Prints medians, 95th percentiles and database round trips per operation;
// each refresh beside its floor (ViewFloors.h) with the ratio, and the peak
// resident memory of each case.
//
//   bench_views [--runs N] [--expansions N] [--bfs N] [--limit N] [--bfs-only] [--reference]
//               [--only TYPE/LEVEL] REPOSITORY...
#include "BenchStats.h"
#include "ViewFloors.h"

#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "sqlaccess/RepositoryConnection.h"
#include "view/View.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>

#include <deque>

namespace {

struct Options {
    int runs = 5;
    int expansions = 20;
    int breadthFirst = 1000;
    QString limit = QStringLiteral("100");
    QString only; // "Type/Level": that case alone
};

QString Ms(double value) {
    return QString::number(value, 'f', value < 10 ? 2 : 1);
}

// Peak resident memory (Linux): reset before a case, read after it.
void ResetPeakRss() {
    QFile refs(QStringLiteral("/proc/self/clear_refs"));
    if (refs.open(QIODevice::WriteOnly))
        refs.write("5");
}

QString PeakRssMb() {
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return QStringLiteral("?");
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return QString::number(line.mid(6).trimmed().split(' ').front().toDouble() / 1024.0,
                                   'f', 0);
    return QStringLiteral("?");
}

// The ids of the root nodes that carry an item, sorted.
QStringList RootIds(TQXTreeControl& tree) {
    QStringList ids;
    for (int i = 0; i < tree.RootCount(); ++i)
        if (const auto* item = tree.Root(i)->ItemAs<TQXItem>())
            ids << item->GetItemID();
    ids.sort();
    return ids;
}

// The floor's median, its ratio to the refresh, and whether it found the
// same root nodes.
QString FloorColumns(const TQXViewSettings& settings, QSqlDatabase* db, int runs, int limit,
                     double refreshMedian, TQXTreeControl& tree) {
    const std::optional<ViewFloor> floor =
        db != nullptr ? ViewFloor::For(settings, limit, IsPostgreSQL(*db)) : std::nullopt;
    if (!floor)
        return QStringLiteral("- | - | ");
    QStringList ids;
    const BenchSamples samples = Measure(runs, [&] { ids = floor->Run(*db); });
    ids.sort();
    const QString same = ids == RootIds(tree) ? QString() : QStringLiteral(" (other nodes!)");
    return Ms(samples.Median()) + same + QStringLiteral(" | ") +
           QString::number(refreshMedian / std::max(samples.Median(), 0.001), 'f', 1) +
           QStringLiteral(" | ");
}

// Root nodes that can still be opened.
QList<TQXTreeNode*> Expandable(TQXTreeControl& tree, int most) {
    QList<TQXTreeNode*> nodes;
    for (int i = 0; i < tree.RootCount() && nodes.size() < most; ++i)
        if (TQXTreeNode* node = tree.Root(i); TQXTreeControl::HasPlaceholder(node))
            nodes << node;
    return nodes;
}

void BenchLevels(TQXViewDriver& driver, QSqlDatabase* floorDb, const QString& label,
                 const Options& options) {
    for (bool dependencies : {false, true}) {
        for (const QString& level : level::Names()) {
            if (dependencies && level == QLatin1String("Data"))
                continue; // the Dependencies view has no Data level yet
            const QString name =
                (dependencies ? QStringLiteral("Dependencies/") : QStringLiteral("Distribution/")) +
                level;
            if (!options.only.isEmpty() && options.only.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            TQXViewSettings settings;
            settings.Type = dependencies ? TQXViewType::Dependencies : TQXViewType::Distribution;
            settings.Level = *level::FromName(level);
            settings.LimitText = options.limit;
            driver.Apply(settings);
            qint64 trips = 0;
            ResetPeakRss();
            const BenchSamples refresh = Measure(options.runs, [&] {
                const qint64 before = driver.RoundTrips();
                driver.Refresh();
                trips = driver.RoundTrips() - before;
            });
            const QString refreshRss = PeakRssMb();
            const int roots = driver.Tree().RootCount();
            const QString floor =
                FloorColumns(settings, floorDb, options.runs, options.limit.toInt(),
                             refresh.Median(), driver.Tree());
            BenchSamples expand;
            qint64 expandTrips = 0;
            const QList<TQXTreeNode*> nodes = Expandable(driver.Tree(), options.expansions);
            for (TQXTreeNode* node : nodes) {
                const qint64 before = driver.RoundTrips();
                expand.ms.push_back(Measure(1, [&] { driver.Expand(node); }).ms.front());
                expandTrips += driver.RoundTrips() - before;
            }
            Out() << "| " << label << " | " << (dependencies ? "Dependencies" : "Distribution")
                  << " | " << level << " | " << roots << " | " << Ms(refresh.Median()) << " | "
                  << Ms(refresh.P95()) << " | " << floor << trips << " | " << refreshRss << " | "
                  << nodes.size() << " | "
                  << (nodes.isEmpty() ? QStringLiteral("-") : Ms(expand.Median())) << " | "
                  << (nodes.isEmpty() ? QStringLiteral("-") : Ms(expand.P95())) << " | "
                  << (nodes.isEmpty() ? 0 : expandTrips / nodes.size()) << " |\n";
            Out().flush();
        }
    }
}

// Opens up to `count` nodes of the Dependencies tree by objects, TopDown,
// breadth first, one after another; as many root items as nodes to open.
void BenchBreadthFirst(TQXViewDriver& driver, const QString& label, const Options& options) {
    TQXViewSettings settings;
    settings.Type = TQXViewType::Dependencies;
    settings.Level = TQXLevel::Object;
    settings.LimitText = QString::number(options.breadthFirst);
    driver.Apply(settings);
    driver.Refresh();
    std::deque<TQXTreeNode*> queue;
    for (int i = 0; i < driver.Tree().RootCount(); ++i)
        queue.push_back(driver.Tree().Root(i));
    int opened = 0;
    BenchSamples each;
    const qint64 before = driver.RoundTrips();
    const BenchSamples total = Measure(1, [&] {
        while (!queue.empty() && opened < options.breadthFirst) {
            TQXTreeNode* node = queue.front();
            queue.pop_front();
            if (!TQXTreeControl::HasPlaceholder(node))
                continue;
            each.ms.push_back(Measure(1, [&] { driver.Expand(node); }).ms.front());
            ++opened;
            for (int c = 0; c < node->ChildCount(); ++c)
                queue.push_back(node->Child(c));
        }
    });
    Out() << "\n"
          << label << ": opened " << opened
          << " nodes of the Dependencies tree by Object, TopDown, breadth first in "
          << Ms(total.Median()) << " ms (per node median " << Ms(each.Median()) << " ms, p95 "
          << Ms(each.P95()) << " ms), " << (driver.RoundTrips() - before) << " round trips, "
          << driver.Tree().NodeCount() << " nodes in the tree\n";
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument("repository", "SQLite files or PostgreSQL connection strings.");
    parser.addOption({"runs", "Refreshes per level.", "n", "5"});
    parser.addOption({"expansions", "Root nodes opened per level.", "n", "20"});
    parser.addOption({"bfs", "Nodes opened breadth first.", "n", "1000"});
    parser.addOption({"limit", "Root-item limit.", "n", "100"});
    parser.addOption({"bfs-only", "Only the breadth-first opening."});
    parser.addOption({"only", "Only this case, e.g. Dependencies/Application.", "type/level"});
    parser.addOption({"reference", "The record-by-record reference path."});
    parser.process(app);
    if (parser.positionalArguments().isEmpty())
        parser.showHelp(2);
    Options options;
    options.runs = parser.value("runs").toInt();
    options.expansions = parser.value("expansions").toInt();
    options.breadthFirst = parser.value("bfs").toInt();
    options.limit = parser.value("limit");
    options.only = parser.value("only");
    const TQXReadPath path =
        parser.isSet("reference") ? TQXReadPath::Reference : TQXReadPath::SetBased;
    Out() << "| estate | view | level | root nodes | refresh median ms | p95 ms | floor ms | "
             "ratio | round trips | peak RSS MB | nodes opened | open median ms | p95 ms | round "
             "trips per open |\n"
             "|---|---|---|---|---|---|---|---|---|---|---|---|---|---|\n";
    try {
        for (const QString& repository : parser.positionalArguments()) {
            if (parser.isSet("bfs-only"))
                break;
            const QString label = QFileInfo(repository).exists()
                                      ? QFileInfo(repository).completeBaseName()
                                      : repository;
            TQXViewDriver driver(repository);
            driver.View().SetReadPath(path);
            {
                QSqlDatabase floorDb =
                    OpenRepositoryDatabase(RepositoryLocation::Parse(repository), "floor");
                BenchLevels(driver, &floorDb, label, options);
            }
            CloseRepositoryDatabase(QStringLiteral("floor"));
        }
        for (const QString& repository : parser.positionalArguments()) {
            if (options.breadthFirst <= 0)
                break;
            TQXViewDriver driver(repository);
            driver.View().SetReadPath(path);
            BenchBreadthFirst(driver, QFileInfo(repository).completeBaseName(), options);
        }
    } catch (const EQXError& e) {
        Out() << "bench_views: " << e.Message() << "\n";
        return 1;
    }
    return 0;
}
