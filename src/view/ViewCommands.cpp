// The host's file commands as the view answers them: they open and save
// view documents. Print and the edit commands are in ViewTools.cpp.
#include "view/View.h"

#include "host/BaseFunctionsInterface.h"
#include "platform/UIServices.h"

#include <QFileInfo>

void TQXView::Open1Click(QObject* sender) {
    // Only the host's item for opening a view opens a document.
    if (!sender || sender->objectName() != QLatin1String("View3")) {
        TQXFormInterface::Open1Click(sender);
        return;
    }
    const QString path = TQXUIServices::Current().OpenFileName(this, QStringLiteral("Open View"),
                                                               viewdoc::FileFilter, QString());
    if (!path.isEmpty())
        OpenViewDoc(path);
}

void TQXView::Save1Click(QObject* sender) {
    if (FDocumentFile.isEmpty())
        SaveAs1Click(sender);
    else
        SaveViewDoc(FDocumentFile);
}

void TQXView::SaveAs1Click(QObject*) {
    TQXUIServices& ui = TQXUIServices::Current();
    const QString path = ui.SaveFileName(this, QStringLiteral("Save View As"), viewdoc::FileFilter,
                                         FDocumentName, QStringLiteral("kvv"));
    if (path.isEmpty())
        return;
    if (QFileInfo::exists(path) && !ui.Ask(QStringLiteral("Overwrite existing file?")))
        return;
    // The file's name without folders and without anything from its first ".".
    const QString name = QFileInfo(path).fileName();
    FDocumentName = name.left(name.indexOf(QLatin1Char('.')) >= 0 ? name.indexOf(QLatin1Char('.'))
                                                                  : name.size());
    setWindowTitle(QStringLiteral("Korvane - ") + FDocumentName);
    FBaseFunctions->ViewRenamed(this, FDocumentName);
    SaveViewDoc(path);
}

void TQXView::Edit1Click(QObject* sender) {
    TQXFormInterface::Edit1Click(sender);
}
