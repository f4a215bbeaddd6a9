#include "FlowCommand.h"

#include "TreeCommand.h"
#include "TreeOptions.h"
#include "TreeWriter.h"
#include "UsageError.h"

#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "sqlaccess/RepositoryConnection.h"
#include "view/View.h"

#include <QRadioButton>
#include <QTextStream>

#include <algorithm>
#include <iterator>

namespace {

struct TFlowArguments {
    QString Object;
    QString Variable;
    QStringList Rest; // for the tree's own options
};

// Takes --object and --variable out ("--name VALUE", "--name=VALUE", or
// with one dash); the rest are the options "tree" reads.
TFlowArguments Split(const QStringList& arguments) {
    TFlowArguments split;
    const std::pair<QString, QString*> named[] = {{QStringLiteral("object"), &split.Object},
                                                  {QStringLiteral("variable"), &split.Variable}};
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        const QString option = argument.startsWith(QLatin1String("--")) ? argument.mid(2)
                               : argument.startsWith(QLatin1Char('-'))  ? argument.mid(1)
                                                                        : QString();
        const QString name = option.section(QLatin1Char('='), 0, 0);
        const auto* found = std::find_if(std::begin(named), std::end(named),
                                         [&](const auto& pair) { return pair.first == name; });
        if (option.isEmpty() || found == std::end(named)) {
            split.Rest << argument;
        } else if (option.contains(QLatin1Char('='))) {
            *found->second = option.section(QLatin1Char('='), 1);
        } else if (i + 1 < arguments.size()) {
            *found->second = arguments.at(++i);
        } else {
            throw EQXUsageError(QStringLiteral("--") + name + QStringLiteral(" needs a value"));
        }
    }
    return split;
}

} // namespace

QString TQXFlowCommand::Summary() const {
    return QStringLiteral("print where a variable's value goes: korvane-cli flow REPO --object "
                          "NAME --variable NAME [options]");
}

QString TQXFlowCommand::Help() const {
    return QStringLiteral(
        "usage: korvane-cli flow REPO --object NAME --variable NAME\n"
        "                        [--direction TopDown|BottomUp] [--depth D | --expand-all]\n"
        "                        [--format text|json|csv] [--max-nodes N] [--timeout SECONDS]\n"
        "                        [--path P] [--save FILE.kvv]\n\n"
        "Opens the data flow of the variable NAME as the object NAME knows it (declared\n"
        "in it or in a member it includes), as \"Show Data Flow\" does in the window: the\n"
        "Dependencies view at the Data level with the variable as its only root node.\n"
        "TopDown lists where the value goes, BottomUp where it comes from. The nodes are\n"
        "printed as \"tree\" prints them (korvane-cli help tree).\n\n"
        "exit status: 0 success, 1 failure, 2 bad usage or an unknown object or variable\n");
}

int TQXFlowCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    const TFlowArguments split = Split(arguments);
    for (const QString& argument : split.Rest)
        for (const char* name : {"type", "level", "limit", "option", "open", "filter", "or",
                                 "case-sensitive", "filter-on", "filter-off", "yes"})
            if (argument == QStringLiteral("--") + QLatin1String(name) ||
                argument.startsWith(QStringLiteral("--") + QLatin1String(name) + QLatin1Char('=')))
                throw EQXUsageError(QStringLiteral("--%1 does not apply to flow: it opens the "
                                                   "Data level of the Dependencies view")
                                        .arg(QLatin1String(name)));
    const TQXTreeOptions options = TQXTreeOptions::Parse(split.Rest);
    if (options.HelpRequested) {
        out << Help();
        return ExitOk;
    }
    if (split.Object.isEmpty() || split.Variable.isEmpty())
        throw EQXUsageError(QStringLiteral("flow needs --object NAME and --variable NAME"));
    const std::unique_ptr<TQXTreeWriter> writer = TQXTreeWriter::Create(options.Format);
    TQXTreeCommand::CheckRepositoryExists(options.Repository);
    TQXTreeCommand::SetTimeouts(options);

    TQXViewDriver driver(options.Repository);
    if (!driver.RepositoryNotice().isEmpty())
        err << "korvane-cli: note: " << driver.RepositoryNotice() << "\n";
    driver.View().SetReadPath(options.Reference ? TQXReadPath::Reference : TQXReadPath::SetBased);
    if (const QString missing = driver.ShowVariable(split.Object, split.Variable);
        !missing.isEmpty())
        throw EQXUsageError(missing);
    if (!options.Settings.IsTopDown())
        driver.View().rbBottomUp->click(); // the roots stay, to be opened the other way
    TQXTreeCommand::Open(driver, options, err);
    writer->Write(driver.Tree(), out);
    if (!options.SaveFile.isEmpty())
        driver.SaveDocument(options.SaveFile);
    return ExitOk;
}
