#include "RowsCommand.h"

#include "ItemSession.h"
#include "UsageError.h"

#include "tools/DependentRowsWindow.h"
#include "view/View.h"

#include <QTextStream>

namespace {

TQXItemSession::Shape RowsShape() {
    TQXItemSession::Shape shape;
    shape.Command = QStringLiteral("rows");
    shape.Synopsis = QStringLiteral("--path TEXT/... --path TEXT/.../TEXT");
    shape.Description = QStringLiteral(
        "Prints the dependent rows of the two nodes, typically a node and one of its\n"
        "children, as \"Show Dependent Rows\" lists them: the lines of code through which\n"
        "the one calls the other, each with \"[OBJECT.ENTRY]\".");
    shape.Paths = 2;
    shape.Defaults.Type = TQXViewType::Dependencies;
    shape.Defaults.Level = TQXLevel::Object;
    return shape;
}

} // namespace

QString TQXRowsCommand::Summary() const {
    return QStringLiteral("print the rows through which one node calls another: "
                          "korvane-cli rows REPO --path P --path P/C");
}

QString TQXRowsCommand::Help() const {
    return TQXItemSession::Help(RowsShape());
}

int TQXRowsCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    TQXItemSession session(RowsShape(), arguments);
    if (session.HelpRequested()) {
        out << Help();
        return ExitOk;
    }
    session.Open(err);
    bool shown = false;
    const QStringList said = session.RunCommand(
        [](TQXView& view) { view.ShowDependentRows1Click(nullptr); },
        [&](QDialog& dialog) {
            shown = true;
            for (const QString& row : static_cast<TQXDependentRows&>(dialog).Rows())
                out << row << "\n";
        });
    if (!shown)
        throw EQXUsageError(said.join(QLatin1Char('\n')));
    return ExitOk;
}
