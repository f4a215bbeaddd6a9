#pragma once

#include "platform/ScriptedPrintCanvas.h"
#include "platform/UIServices.h"

#include <QList>
#include <QQueue>

#include <optional>

// UI services for tests and unattended runs: answers come from queues, and
// everything shown is recorded. While it lives it is the current instance;
// its destructor puts the previous one back. A question without a queued
// answer gets the default answer (No unless set otherwise) and is recorded
// in Unanswered(); a file dialog or choice without one is cancelled.
class TQXScriptedUIServices final : public TQXUIServices {
public:
    TQXScriptedUIServices();
    ~TQXScriptedUIServices() override;

    TQXScriptedUIServices(const TQXScriptedUIServices&) = delete;
    TQXScriptedUIServices& operator=(const TQXScriptedUIServices&) = delete;

    // Answers, used in the order queued.
    void QueueAnswer(bool yes) { FAnswers.enqueue(yes); }
    // The answer to a question when none is queued.
    void SetDefaultAnswer(bool yes) { FDefaultAnswer = yes; }
    void QueueOpenFileName(const QString& path) { FOpenFileNames.enqueue(path); }
    void QueueSaveFileName(const QString& path) { FSaveFileNames.enqueue(path); }
    void QueueChoice(const std::optional<QString>& choice) { FChoices.enqueue(choice); }
    void QueuePrint(bool print) { FPrintAnswers.enqueue(print); }
    // What the user does in the next dialog shown modally; a dialog without
    // a script is cancelled (rejected).
    void QueueDialog(std::function<void(QDialog&)> script) {
        FDialogScripts.enqueue(std::move(script));
    }
    void SetPageHeight(int height) { FPageHeight = height; }
    // Progress reports after which the operation counts as cancelled; 0: never.
    void SetCancelProgressAfter(int steps) { FCancelProgressAfter = steps; }

    // What was shown.
    const QStringList& Messages() const { return FMessages; }
    const QStringList& Errors() const { return FErrors; }
    const QStringList& Questions() const { return FQuestions; }
    const QStringList& FileDialogs() const { return FFileDialogs; }
    // Window titles of the dialogs shown modally.
    const QStringList& Dialogs() const { return FDialogs; }
    const QStringList& Unanswered() const { return FUnanswered; }
    const QList<Qt::CursorShape>& CursorLog() const { return FCursorLog; }
    const std::optional<TQXScriptedPrintCanvas>& LastPrint() const { return FLastPrint; }
    // Progress reports of the last operation, and its last text.
    int ProgressSteps() const { return FProgressSteps; }
    const QString& ProgressText() const { return FProgressText; }
    void ClearLog();

    // The find dialog: whether one is open, and a search started from it.
    bool FindShown() const { return static_cast<bool>(FOnFind); }
    const TQXFindRequest& FindInitial() const { return FFindInitial; }
    bool FindShowsWholeWord() const { return FFindShowsWholeWord; }
    void TriggerFind(const TQXFindRequest& request);

    void ShowMessage(const QString& text) override { FMessages << text; }
    void ShowError(const QString& text) override { FErrors << text; }
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
    void SetClipboardText(const QString& text) override { FClipboard = text; }
    QString ClipboardText() override { return FClipboard; }
    Qt::CursorShape ScreenCursor() override { return FCursor; }
    void SetScreenCursor(Qt::CursorShape shape) override;

private:
    TQXUIServices* FPrevious;
    QQueue<bool> FAnswers;
    bool FDefaultAnswer = false;
    QQueue<QString> FOpenFileNames;
    QQueue<QString> FSaveFileNames;
    QQueue<std::optional<QString>> FChoices;
    QQueue<bool> FPrintAnswers;
    QQueue<std::function<void(QDialog&)>> FDialogScripts;
    int FPageHeight = 6000;

    QStringList FMessages;
    QStringList FErrors;
    QStringList FQuestions;
    QStringList FFileDialogs;
    QStringList FDialogs;
    QStringList FUnanswered;
    QList<Qt::CursorShape> FCursorLog;
    std::optional<TQXScriptedPrintCanvas> FLastPrint;

    std::function<void(const TQXFindRequest&)> FOnFind;
    TQXFindRequest FFindInitial;
    bool FFindShowsWholeWord = true;

    QString FClipboard;
    Qt::CursorShape FCursor = Qt::ArrowCursor;

    int FCancelProgressAfter = 0;
    int FProgressSteps = 0;
    QString FProgressText;
};
