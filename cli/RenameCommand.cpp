#include "RenameCommand.h"

#include "ItemSession.h"
#include "UsageError.h"

#include "tools/ItemPropertiesDialog.h"
#include "view/View.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTextStream>

namespace {

TQXItemSession::Shape RenameShape() {
    TQXItemSession::Shape shape;
    shape.Command = QStringLiteral("rename");
    shape.Synopsis = QStringLiteral("--path TEXT/TEXT/... --name NEW [--icon N]");
    shape.Description = QStringLiteral(
        "Saves a new name (and icon) for the system, computer or application at the path, as\n"
        "the Item Properties dialog does: the rename is carried into every load record that\n"
        "names it (a computer's name is type@location), all in one transaction. Prints how\n"
        "many load records changed. Icons: 2 to 8 for a computer, 9 or 10 for an\n"
        "application; a system keeps its own.");
    shape.Rename = true;
    return shape;
}

} // namespace

QString TQXRenameCommand::Summary() const {
    return QStringLiteral("rename a system, computer or application: korvane-cli rename REPO "
                          "--path P --name NEW");
}

QString TQXRenameCommand::Help() const {
    return TQXItemSession::Help(RenameShape());
}

int TQXRenameCommand::Run(const QStringList& arguments, QTextStream& out, QTextStream& err) {
    TQXItemSession session(RenameShape(), arguments);
    if (session.HelpRequested()) {
        out << Help();
        return ExitOk;
    }
    if (session.Name().isEmpty())
        throw EQXUsageError(QStringLiteral("Name is required"));
    session.Open(err);
    QString refused;
    QString written;
    const QStringList said = session.RunCommand(
        [](TQXView& view) { view.Properties2Click(nullptr); },
        [&](QDialog& dialog) {
            auto& properties = static_cast<TQXItemProperties&>(dialog);
            const TQXItemFacts& facts = properties.Facts();
            const QString what = facts.Kind.isEmpty() ? QStringLiteral("item") : facts.Kind;
            if (facts.AttributeID == 0) {
                refused = what + QStringLiteral(" items cannot be renamed; only systems, "
                                                "computers and applications can");
            } else if (!facts.AttributeFound) {
                refused =
                    QStringLiteral("the ") + what + QStringLiteral(" is not in the repository");
            } else if (!properties.tbItemName->isEnabled()) {
                refused = QStringLiteral("the ") + what +
                          QStringLiteral(" is a computer listed among applications (icon 49) and "
                                         "cannot be renamed");
            } else if (session.Icon() >= 0 && session.Icon() != properties.ChosenIcon() &&
                       (!properties.cbeIcon->isEnabled() ||
                        properties.cbeIcon->findData(session.Icon()) < 0)) {
                QStringList choices;
                for (int icon : facts.IconChoices)
                    choices << QString::number(icon);
                refused = QStringLiteral("icon ") + QString::number(session.Icon()) +
                          QStringLiteral(" is not offered for this ") + what +
                          QStringLiteral(" (icons: ") + choices.join(QStringLiteral(", ")) +
                          QLatin1Char(')');
            }
            if (!refused.isEmpty())
                return;
            const QString oldName = properties.tbItemName->text();
            properties.tbItemName->setText(session.Name());
            if (session.Icon() >= 0)
                properties.cbeIcon->setCurrentIndex(properties.cbeIcon->findData(session.Icon()));
            properties.cbSaveClick();
            if (!properties.cbSave->isEnabled())
                written = what + QLatin1Char(' ') + oldName + QStringLiteral(" renamed to ") +
                          session.Name() + QStringLiteral(" (icon ") +
                          QString::number(properties.ChosenIcon()) + QStringLiteral("); ") +
                          QString::number(properties.LastLoadRecordsChanged()) +
                          QStringLiteral(" load records changed");
        });
    if (!refused.isEmpty())
        throw EQXUsageError(refused);
    if (written.isEmpty())
        throw EQXError(said.isEmpty() ? QStringLiteral("nothing was written")
                                      : said.join(QLatin1Char('\n')));
    out << written << "\n";
    return ExitOk;
}
