#include "RowsCommand.h"

#include "ItemSession.h"
#include "UsageError.h"

#include "platform/ScriptedUIServices.h"
#include "tools/DependentRowsWindow.h"
#include "view/View.h"

#include <QTextStream>

namespace {

TQXItemSession::Spec RowsSpec() {
    TQXItemSession::Spec spec;
    spec.Command = QStringLiteral("rows");
    spec.Synopsis = QStringLiteral("--path TEXT/... --path TEXT/.../TEXT");
    spec.Description = QStringLiteral(
        "Prints the dependent rows of the two nodes, typically a node and one of its\n"
        "children, as \"Show Dependent Rows\" lists them: the lines of code through which\n"
        "the one calls the other, each with \"[OBJECT.ENTRY]\".");
    spec.Paths = 2;
    spec.Defaults.Type = TQXViewType::Dependencies;
    spec.Defaults.Level = TQXLevel::Object;
    return spec;
}

} // namespace

QString TQXRowsCommand::Summary() const {
    return QStringLiteral("print the rows through which one node calls another: "
                          "korvane-cli rows REPO --path P --path P/C");
}

QString TQXRowsCommand::Help() const {
    return TQXItemSession::Help(RowsSpec());
}

int TQXRowsCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    TQXItemSession session(RowsSpec(), arguments);
    if (session.HelpRequested()) {
        out << Help();
        return ExitOk;
    }
    session.Open(err);
    TQXScriptedUIServices& ui = session.Driver().Ui();
    const qsizetype messages = ui.Messages().size();
    bool shown = false;
    ui.QueueDialog([&](QDialog& dialog) {
        shown = true;
        for (const QString& row : static_cast<TQXDependentRows&>(dialog).Rows())
            out << row << "\n";
        return int(QDialog::Accepted);
    });
    session.Driver().View().ShowDependentRows1Click(nullptr);
    if (!shown) {
        const QStringList said = ui.Messages().mid(messages);
        throw EQXUsageError(said.join(QLatin1Char('\n')));
    }
    return ExitOk;
}
