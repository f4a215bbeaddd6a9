// Refresh with the root-item filter against the refresh without it, through
// the very view the host shows (off screen): for every level of both view
// types, the unfiltered refresh, then a filter every file passes (the
// filter's own cost: the same root items), one on an attribute (one
// system) and one on the level's own names. Prints medians, 95th
// percentiles, round trips and the ratio to the unfiltered median.
//
//   bench_filter [--runs N] [--limit N] [--system NAME] REPOSITORY...
#include "BenchStats.h"

#include "driver/ViewDriver.h"
#include "filter/FilterChoices.h"
#include "filter/FilterDialog.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "view/View.h"

#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QRadioButton>

#include <optional>

namespace {

struct Condition {
    QString Attribute;
    QString Operator;
    QString Value;
    QString Text() const { return Attribute + ' ' + Operator + ' ' + Value; }
};

// A condition on the level's own names that narrows it without emptying it
// on the sample estates.
std::optional<Condition> NamesOf(TQXLevel level) {
    switch (level) {
    case TQXLevel::Package:
        return Condition{"Packages Name", "begins with", "ACC"};
    case TQXLevel::Object:
        return Condition{"Objects Name", "begins with", "PAY"};
    case TQXLevel::Entry:
        return Condition{"Entrys Name", "begins with", "0000"};
    case TQXLevel::Code:
        return Condition{"Line of Code", "contains", "PERFORM"};
    case TQXLevel::Data:
        return Condition{"Variables Name", "begins with", "WS-"};
    default:
        return std::nullopt;
    }
}

// Puts the condition in force, or switches the filter off without one.
void SetFilter(TQXView& view, const std::optional<Condition>& condition) {
    TQXFilter& filter = *view.Filter();
    filter.cbClearClick();
    if (!condition) {
        view.rbFilterOff->setChecked(true);
        return;
    }
    filter.InitFilter(view.cbViewBy->currentText());
    TQXQueryRow* row = filter.GetQueryRow(0);
    row->cbAttribute->setCurrentIndex(filterchoice::AttributeIndex(condition->Attribute));
    row->cbOperator->setCurrentIndex(filterchoice::OperatorIndex(condition->Operator));
    row->cbValue->setEditText(condition->Value);
    filter.cbApplyClick();
    view.rbFilterOn->setChecked(true);
}

QString Ms(double value) {
    return QString::number(value, 'f', value < 10 ? 2 : 1);
}

void BenchLevels(TQXViewDriver& driver, const QString& label, int runs, const QString& limit,
                 const QString& system) {
    driver.Connect();
    for (bool dependencies : {false, true}) {
        for (const QString& level : level::Names()) {
            if (dependencies && level == QLatin1String("Data"))
                continue; // the Dependencies view has no Data level
            TQXViewSettings settings;
            settings.Type = dependencies ? TQXViewType::Dependencies : TQXViewType::Distribution;
            settings.Level = *level::FromName(level);
            settings.LimitText = limit;
            driver.Apply(settings);
            double unfiltered = 0;
            QList<std::optional<Condition>> conditions{std::nullopt,
                                                       Condition{"Files Name", "contains", "."},
                                                       Condition{"Systems Name", "equals", system}};
            if (const std::optional<Condition> names = NamesOf(settings.Level))
                conditions << names;
            for (const std::optional<Condition>& condition : conditions) {
                SetFilter(driver.View(), condition);
                qint64 trips = 0;
                const BenchSamples refresh = Measure(runs, [&] {
                    const qint64 before = driver.RoundTrips();
                    driver.Refresh();
                    trips = driver.RoundTrips() - before;
                });
                if (!condition)
                    unfiltered = refresh.Median();
                Out() << "| " << label << " | " << (dependencies ? "Dependencies" : "Distribution")
                      << " | " << level << " | "
                      << (condition ? condition->Text() : QStringLiteral("(off)")) << " | "
                      << driver.Tree().RootCount() << " | " << Ms(refresh.Median()) << " | "
                      << Ms(refresh.P95()) << " | " << trips << " | "
                      << QString::number(refresh.Median() / unfiltered, 'f', 2) << " |\n";
                Out().flush();
            }
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument("repository", "SQLite files or PostgreSQL connection strings.");
    parser.addOption({"runs", "Refreshes per level and filter.", "n", "5"});
    parser.addOption({"limit", "Root-item limit.", "n", "100"});
    parser.addOption({"system", "The system the attribute filter selects.", "name", "INSURANCE"});
    parser.process(app);
    if (parser.positionalArguments().isEmpty())
        parser.showHelp(2);
    Out() << "| estate | view | level | filter | root nodes | refresh median ms | p95 ms | "
             "round trips | median / unfiltered |\n"
             "|---|---|---|---|---|---|---|---|---|\n";
    try {
        for (const QString& repository : parser.positionalArguments()) {
            const QString label = QFileInfo(repository).exists()
                                      ? QFileInfo(repository).completeBaseName()
                                      : repository;
            TQXViewDriver driver(repository);
            BenchLevels(driver, label, parser.value("runs").toInt(), parser.value("limit"),
                        parser.value("system"));
        }
    } catch (const EQXError& e) {
        Out() << "bench_filter: " << e.Message() << "\n";
        return 1;
    }
    return 0;
}
