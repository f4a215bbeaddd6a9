#include "PropsCommand.h"

#include "ItemSession.h"

#include "platform/ImageList.h"
#include "repository/Errors.h"
#include "tools/ItemPropertiesDialog.h"
#include "view/View.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextStream>

namespace {

TQXItemSession::Shape PropsShape() {
    TQXItemSession::Shape shape;
    shape.Command = QStringLiteral("props");
    shape.Synopsis = QStringLiteral("--path TEXT/TEXT/...");
    shape.Description = QStringLiteral(
        "Prints what the Item Properties dialog shows for the node at the path: its kind,\n"
        "name, file, icon (and the icons it may choose among), identifiers, and what may\n"
        "be changed.");
    return shape;
}

QString IconText(int icon) {
    if (icon < 0)
        return QStringLiteral("(none)");
    return QString::number(icon) + QStringLiteral(" (") + TQXImageList::Standard().Meaning(icon) +
           QLatin1Char(')');
}

} // namespace

QString TQXPropsCommand::Summary() const {
    return QStringLiteral("print a node's item properties: korvane-cli props REPO --path P");
}

QString TQXPropsCommand::Help() const {
    return TQXItemSession::Help(PropsShape());
}

int TQXPropsCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    TQXItemSession session(PropsShape(), arguments);
    if (session.HelpRequested()) {
        out << Help();
        return ExitOk;
    }
    session.Open(err);
    bool shown = false;
    // The dialog the view opens, read as it is filled.
    const QStringList said =
        session.RunCommand([](TQXView& view) { view.Properties2Click(nullptr); },
                           [&](QDialog& dialog) {
                               auto& properties = static_cast<TQXItemProperties&>(dialog);
                               shown = true;
                               const TQXItemFacts& facts = properties.Facts();
                               QStringList choices;
                               for (int icon : facts.IconChoices)
                                   choices << QString::number(icon);
                               QStringList editable;
                               if (properties.tbItemName->isEnabled())
                                   editable << QStringLiteral("name");
                               if (properties.cbeIcon->isEnabled())
                                   editable << QStringLiteral("icon");
                               out << "Type:        " << properties.tbItemType->text() << "\n"
                                   << "Name:        " << properties.tbItemName->text() << "\n"
                                   << "In File:     " << properties.mmInFile->toPlainText() << "\n"
                                   << "Icon:        " << IconText(properties.ChosenIcon()) << "\n"
                                   << "Icons:       " << choices.join(QLatin1Char(' ')) << "\n"
                                   << "KVID in DB:  " << properties.tbKVID->text() << "\n"
                                   << "Editable:    "
                                   << (editable.isEmpty() ? QStringLiteral("nothing")
                                                          : editable.join(QStringLiteral(", ")))
                                   << "\n";
                           });
    for (const QString& message : said)
        err << "korvane-cli: the dialog said: " << message << "\n";
    if (!shown)
        throw EQXError(QStringLiteral("the node has no item: ") + session.PathTexts().constFirst());
    return ExitOk;
}
