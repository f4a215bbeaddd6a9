#include "platform/QtUIServices.h"

#include "platform/FindDialog.h"
#include "platform/PrinterCanvas.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>

namespace {

QWidget* DialogParent(QWidget* owner) {
    return owner ? owner : QApplication::activeWindow();
}

} // namespace

void TQXQtUIServices::ShowMessage(const QString& text) {
    QMessageBox::information(DialogParent(nullptr), QApplication::applicationDisplayName(), text);
}

void TQXQtUIServices::ShowError(const QString& text) {
    QMessageBox::critical(DialogParent(nullptr), QApplication::applicationDisplayName(), text);
}

bool TQXQtUIServices::Ask(const QString& text, TQXQuestionKind kind) {
    const auto buttons = QMessageBox::Yes | QMessageBox::No;
    const auto answer =
        kind == TQXQuestionKind::Warning
            ? QMessageBox::warning(DialogParent(nullptr), QApplication::applicationDisplayName(),
                                   text, buttons, QMessageBox::No)
            : QMessageBox::question(DialogParent(nullptr), QApplication::applicationDisplayName(),
                                    text, buttons, QMessageBox::Yes);
    return answer == QMessageBox::Yes;
}

QString TQXQtUIServices::QtFilter(const QString& filter) {
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString& description = parts[i];
        const QString patterns = QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' '));
        filters << (description.contains(QLatin1Char('('))
                        ? description
                        : description + QStringLiteral(" (") + patterns + QLatin1Char(')'));
    }
    if (parts.size() % 2 == 1 && !parts.last().isEmpty())
        filters << parts.last();
    return filters.join(QStringLiteral(";;"));
}

int TQXQtUIServices::ShowModal(QDialog& dialog) {
    return dialog.exec();
}

QString TQXQtUIServices::OpenFileName(QWidget* owner, const QString& caption, const QString& filter,
                                      const QString& initialPath) {
    return QFileDialog::getOpenFileName(DialogParent(owner), caption, initialPath,
                                        QtFilter(filter));
}

QString TQXQtUIServices::SaveFileName(QWidget* owner, const QString& caption, const QString& filter,
                                      const QString& initialPath, const QString& defaultExtension) {
    QFileDialog dialog(DialogParent(owner), caption, initialPath, QtFilter(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The caller asks before overwriting, with its own words.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    QString suffix = defaultExtension;
    if (suffix.startsWith(QLatin1Char('.')))
        suffix.remove(0, 1);
    dialog.setDefaultSuffix(suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return QString();
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> TQXQtUIServices::ChooseItem(QWidget* owner, const QString& caption,
                                                   const QString& prompt, const QStringList& items,
                                                   const QString& current) {
    QInputDialog dialog(DialogParent(owner));
    dialog.setWindowTitle(caption);
    dialog.setLabelText(prompt);
    dialog.setComboBoxItems(items);
    dialog.setOption(QInputDialog::UseListViewForComboBoxItems);
    if (items.contains(current))
        dialog.setTextValue(current);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

void TQXQtUIServices::ShowFind(QWidget* owner, const TQXFindRequest& initial, bool showWholeWord,
                               std::function<void(const TQXFindRequest&)> onFind) {
    // Owned by `owner` and deleted when closed.
    auto* dialog = new TQXFindDialog(DialogParent(owner), initial, showWholeWord);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &TQXFindDialog::Find, dialog, std::move(onFind));
    dialog->show();
}

bool TQXQtUIServices::Print(QWidget* owner, const QString& documentTitle,
                            const std::function<void(TQXPrintCanvas&)>& draw) {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, DialogParent(owner));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    printer.setPageOrientation(QPageLayout::Portrait);
    // Print commands lay lines out in units of a 600 dpi printer.
    printer.setResolution(600);
    printer.setDocName(documentTitle);
    TQXPrinterCanvas canvas(printer);
    draw(canvas);
    return true;
}

namespace {

// A window-modal progress dialog that appears once the operation has taken
// half a second, and lets events through a few times a second so that its
// Cancel button works.
class TQtProgress final : public TQXProgress {
public:
    TQtProgress(QWidget* owner, const QString& caption)
        : FDialog(caption, QObject::tr("Cancel"), 0, 0, DialogParent(owner)) {
        FDialog.setWindowTitle(caption);
        FDialog.setWindowModality(Qt::WindowModal);
        FDialog.setMinimumDuration(500);
        FDialog.setAutoReset(false);
        FStarted.start();
        FLastEvents.start();
    }

    bool Step(int, const QString& text) override {
        if (FLastEvents.elapsed() < 100)
            return !FDialog.wasCanceled();
        FLastEvents.restart();
        if (!FDialog.isVisible() && FStarted.elapsed() >= 500)
            FDialog.show();
        FDialog.setLabelText(text);
        QCoreApplication::processEvents();
        return !FDialog.wasCanceled();
    }

private:
    QProgressDialog FDialog;
    QElapsedTimer FStarted;
    QElapsedTimer FLastEvents;
};

} // namespace

std::unique_ptr<TQXProgress> TQXQtUIServices::StartProgress(QWidget* owner,
                                                            const QString& caption) {
    return std::make_unique<TQtProgress>(owner, caption);
}

void TQXQtUIServices::SetClipboardText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

QString TQXQtUIServices::ClipboardText() {
    return QGuiApplication::clipboard()->text();
}

Qt::CursorShape TQXQtUIServices::ScreenCursor() {
    if (!FCursorOverridden || !QGuiApplication::overrideCursor())
        return Qt::ArrowCursor;
    return QGuiApplication::overrideCursor()->shape();
}

void TQXQtUIServices::SetScreenCursor(Qt::CursorShape shape) {
    if (shape == Qt::ArrowCursor) {
        if (FCursorOverridden)
            QGuiApplication::restoreOverrideCursor();
        FCursorOverridden = false;
    } else if (FCursorOverridden) {
        QGuiApplication::changeOverrideCursor(QCursor(shape));
    } else {
        QGuiApplication::setOverrideCursor(QCursor(shape));
        FCursorOverridden = true;
    }
}
