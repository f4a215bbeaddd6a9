#include "platform/ScriptedUIServices.h"

#include <QDialog>

TQXScriptedUIServices::TQXScriptedUIServices() : FPrevious(TQXUIServices::SetCurrent(this)) {}

TQXScriptedUIServices::~TQXScriptedUIServices() {
    TQXUIServices::SetCurrent(FPrevious);
}

void TQXScriptedUIServices::ClearLog() {
    FMessages.clear();
    FErrors.clear();
    FQuestions.clear();
    FFileDialogs.clear();
    FDialogs.clear();
    FUnanswered.clear();
    FCursorLog.clear();
    FLastPrint.reset();
}

void TQXScriptedUIServices::TriggerFind(const TQXFindRequest& request) {
    if (FOnFind)
        FOnFind(request);
}

bool TQXScriptedUIServices::Ask(const QString& text, TQXQuestionKind) {
    FQuestions << text;
    if (FAnswers.isEmpty()) {
        FUnanswered << text;
        return FDefaultAnswer;
    }
    return FAnswers.dequeue();
}

int TQXScriptedUIServices::ShowModal(QDialog& dialog) {
    FDialogs << dialog.windowTitle();
    if (FDialogScripts.isEmpty()) {
        FUnanswered << dialog.windowTitle();
        dialog.reject();
    } else
        FDialogScripts.dequeue()(dialog);
    return dialog.result();
}

QString TQXScriptedUIServices::OpenFileName(QWidget*, const QString& caption, const QString& filter,
                                            const QString&) {
    FFileDialogs << caption + QLatin1Char('|') + filter;
    if (FOpenFileNames.isEmpty()) {
        FUnanswered << caption;
        return QString();
    }
    return FOpenFileNames.dequeue();
}

QString TQXScriptedUIServices::SaveFileName(QWidget*, const QString& caption, const QString& filter,
                                            const QString&, const QString&) {
    FFileDialogs << caption + QLatin1Char('|') + filter;
    if (FSaveFileNames.isEmpty()) {
        FUnanswered << caption;
        return QString();
    }
    return FSaveFileNames.dequeue();
}

std::optional<QString> TQXScriptedUIServices::ChooseItem(QWidget*, const QString& caption,
                                                         const QString&, const QStringList&,
                                                         const QString&) {
    FQuestions << caption;
    if (FChoices.isEmpty()) {
        FUnanswered << caption;
        return std::nullopt;
    }
    return FChoices.dequeue();
}

void TQXScriptedUIServices::ShowFind(QWidget*, const TQXFindRequest& initial, bool showWholeWord,
                                     std::function<void(const TQXFindRequest&)> onFind) {
    FFindInitial = initial;
    FFindShowsWholeWord = showWholeWord;
    FOnFind = std::move(onFind);
}

bool TQXScriptedUIServices::Print(QWidget*, const QString& documentTitle,
                                  const std::function<void(TQXPrintCanvas&)>& draw) {
    if (FPrintAnswers.isEmpty()) {
        FUnanswered << documentTitle;
        return false;
    }
    if (!FPrintAnswers.dequeue())
        return false;
    FLastPrint.emplace(FPageHeight);
    draw(*FLastPrint);
    return true;
}

std::unique_ptr<TQXProgress> TQXScriptedUIServices::StartProgress(QWidget*, const QString&) {
    // Counts the reports and cancels after as many as set.
    class Progress final : public TQXProgress {
    public:
        explicit Progress(TQXScriptedUIServices& ui) : FUi(ui) {
            FUi.FProgressSteps = 0;
            FUi.FProgressText.clear();
        }
        bool Step(int, const QString& text) override {
            FUi.FProgressText = text;
            ++FUi.FProgressSteps;
            return FUi.FCancelProgressAfter == 0 || FUi.FProgressSteps < FUi.FCancelProgressAfter;
        }

    private:
        TQXScriptedUIServices& FUi;
    };
    return std::make_unique<Progress>(*this);
}

void TQXScriptedUIServices::SetScreenCursor(Qt::CursorShape shape) {
    FCursor = shape;
    FCursorLog << shape;
}
