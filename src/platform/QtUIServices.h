#pragma once

#include "platform/UIServices.h"

// The UI services with Qt's dialogs, clipboard and override cursor.
class TQXQtUIServices final : public TQXUIServices {
public:
    void ShowMessage(const QString& text) override;
    void ShowError(const QString& text) override;
    bool Ask(const QString& text, TQXQuestionKind kind) override;
    int ShowModal(QDialog& dialog) override;
    QString OpenFileName(QWidget* owner, const QString& caption, const QString& filter,
                         const QString& initialPath) override;
    QString SaveFileName(QWidget* owner, const QString& caption, const QString& filter,
                         const QString& initialPath, const QString& defaultExtension) override;
    std::optional<QString> ChooseItem(QWidget* owner, const QString& caption, const QString& prompt,
                                      const QStringList& items, const QString& current) override;
    void ShowFind(QWidget* owner, const TQXFindRequest& initial, bool showWholeWord,
                  std::function<void(const TQXFindRequest&)> onFind) override;
    bool Print(QWidget* owner, const QString& documentTitle,
               const std::function<void(TQXPrintCanvas&)>& draw) override;
    std::unique_ptr<TQXProgress> StartProgress(QWidget* owner, const QString& caption) override;
    void SetClipboardText(const QString& text) override;
    QString ClipboardText() override;
    Qt::CursorShape ScreenCursor() override;
    void SetScreenCursor(Qt::CursorShape shape) override;

    // "Text files (*.txt)|*.txt|All (*)|*" becomes "Text files (*.txt);;All (*)".
    static QString QtFilter(const QString& filter);

private:
    bool FCursorOverridden = false;
};
