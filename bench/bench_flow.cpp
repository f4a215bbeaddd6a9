// Data flows on a large estate, through the very view the host shows (off
// screen): for each object whose name begins with --object (the suite's
// copies of one program), the variable --variable opened as "Show Data
// Flow" opens it, then each scope it is used in, then each variable below.
// Per kind of expansion: median and p95 time and the statements each made;
// and the test whether a node can be opened (CheckOnly), per node.
//
//   bench_flow [--object NAME] [--variable NAME] [--roots N] [--direction D]
//              [--reference] REPOSITORY
#include "BenchStats.h"

#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "platform/TreeNode.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "view/View.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QRadioButton>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <cstdio>
#include <map>

namespace {

struct Kind {
    BenchSamples Ms;
    std::vector<double> Statements;
};

void Report(const QString& name, const Kind& kind) {
    BenchSamples statements{kind.Statements};
    Out() << QStringLiteral("| %1 | %2 | %3 | %4 | %5 / %6 |\n")
                 .arg(name)
                 .arg(kind.Ms.ms.size())
                 .arg(kind.Ms.Median(), 0, 'f', 2)
                 .arg(kind.Ms.P95(), 0, 'f', 2)
                 .arg(statements.Median(), 0, 'f', 0)
                 .arg(statements.Percentile(1.0), 0, 'f', 0);
}

// The names of the objects the bench starts from, in name order.
QStringList ObjectsNamed(TQXViewDriver& driver, const QString& prefix, int count) {
    TQXDataAccessInterface& access = *driver.View().DataAccess();
    std::unique_ptr<TQXDataSet> query = access.OpenQuery(
        nullptr,
        {QStringLiteral("SELECT QXObjectName FROM QXOBJECT WHERE QXIcon >= 0 AND QXObjectName "
                        "LIKE ") +
             where::LikePrefix(prefix),
         QStringLiteral(" ORDER BY QXObjectName")},
        0);
    QStringList names;
    for (bool more = !query->Eof(); more && names.size() < count;
         more = access.NextRecord(query.get()))
        names << query->FieldValue(0).toString();
    query->Close();
    return names;
}

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addOption(
        {QStringLiteral("object"), QString(), QStringLiteral("NAME"), QStringLiteral("PAYCALC")});
    parser.addOption({QStringLiteral("variable"), QString(), QStringLiteral("NAME"),
                      QStringLiteral("PAY-AMOUNT")});
    parser.addOption(
        {QStringLiteral("roots"), QString(), QStringLiteral("N"), QStringLiteral("20")});
    parser.addOption({QStringLiteral("direction"), QString(), QStringLiteral("TopDown|BottomUp"),
                      QStringLiteral("TopDown")});
    parser.addOption({QStringLiteral("reference"), QString()});
    parser.process(app);
    if (parser.positionalArguments().size() != 1) {
        std::fputs("usage: bench_flow [--object NAME] [--variable NAME] [--roots N] "
                   "[--direction D] [--reference] REPOSITORY\n",
                   stderr);
        return 2;
    }
    try {
        TQXViewDriver driver(parser.positionalArguments().constFirst());
        driver.Connect();
        driver.View().SetReadPath(parser.isSet(QStringLiteral("reference"))
                                      ? TQXReadPath::Reference
                                      : TQXReadPath::SetBased);
        const bool bottomUp =
            parser.value(QStringLiteral("direction")) == QLatin1String("BottomUp");
        const QString variable = parser.value(QStringLiteral("variable"));
        std::map<QString, Kind> kinds;
        auto expand = [&](const char* kind, TQXTreeNode* node) {
            const qint64 before = driver.RoundTrips();
            const double start = NowMs();
            driver.Expand(node);
            kinds[QLatin1String(kind)].Ms.Add(NowMs() - start);
            kinds[QLatin1String(kind)].Statements.push_back(double(driver.RoundTrips() - before));
        };
        auto check = [&](TQXTreeNode* node) {
            const auto* item = node->ItemAs<TQXDataItem>();
            if (!item)
                return;
            const qint64 before = driver.RoundTrips();
            const double start = NowMs();
            driver.View().GetDataFlow(*item, bottomUp ? 1 : 0, true);
            kinds[QStringLiteral("test (CheckOnly)")].Ms.Add(NowMs() - start);
            kinds[QStringLiteral("test (CheckOnly)")].Statements.push_back(
                double(driver.RoundTrips() - before));
        };
        int nodes = 0;
        for (const QString& object : ObjectsNamed(driver, parser.value(QStringLiteral("object")),
                                                  parser.value(QStringLiteral("roots")).toInt())) {
            if (!driver.ShowVariable(object, variable).isEmpty())
                continue;
            if (bottomUp)
                driver.View().rbBottomUp->click();
            TQXTreeNode* root = driver.Tree().Root(0);
            expand("root variable", root);
            for (int i = 0; i < root->ChildCount(); ++i) {
                TQXTreeNode* scope = root->Child(i);
                check(scope);
                expand("scope (As used in)", scope);
                for (int j = 0; j < scope->ChildCount(); ++j) {
                    TQXTreeNode* flow = scope->Child(j);
                    if (!TQXTreeControl::HasPlaceholder(flow))
                        continue;
                    check(flow);
                    expand("variable below", flow);
                }
            }
            nodes += driver.Tree().NodeCount();
            if (bottomUp)
                driver.View().rbTopDown->click();
        }
        Out() << "| expansion | count | median ms | p95 ms | statements median / max |\n"
                 "|---|---|---|---|---|\n";
        for (const auto& [name, kind] : kinds)
            Report(name, kind);
        Out() << "nodes shown: " << nodes << "\n";
        Out().flush();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "bench_flow: %s\n", ExceptionMessage(e).toLocal8Bit().constData());
        return 1;
    }
    return 0;
}
