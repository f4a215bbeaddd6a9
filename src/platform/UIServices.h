#pragma once

#include "platform/PrintCanvas.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QDialog;
class QWidget;

// What a find dialog hands to its find handler.
struct TQXFindRequest {
    QString Text;
    bool MatchCase = false;
    bool WholeWord = false;
    bool Down = true;
};

// How far a long operation got, shown while it runs; the user may cancel it.
class TQXProgress {
public:
    virtual ~TQXProgress() = default;
    // Reports the work done so far; false once the user cancelled.
    virtual bool Step(int done, const QString& text) = 0;
};

// How a Yes/No question is presented.
enum class TQXQuestionKind { Confirmation, Warning };

// Every modal interaction and screen service the library uses, behind one
// interface: the Qt implementation shows real dialogs, the scripted one
// answers from a queue and records what was shown. The current instance is
// process-wide; tests swap it.
//
// File dialog filters are written "description|pattern|description|pattern".
class TQXUIServices {
public:
    virtual ~TQXUIServices() = default;

    virtual void ShowMessage(const QString& text) = 0;
    // The display of an error that reached the user interface unhandled.
    virtual void ShowError(const QString& text) = 0;
    // A Yes/No question; true for Yes.
    virtual bool Ask(const QString& text, TQXQuestionKind kind = TQXQuestionKind::Confirmation) = 0;
    // Shows one of the library's dialogs modally; its result code
    // (QDialog::Accepted or QDialog::Rejected).
    virtual int ShowModal(QDialog& dialog) = 0;

    // The chosen path, or an empty text when the user cancelled.
    virtual QString OpenFileName(QWidget* owner, const QString& caption, const QString& filter,
                                 const QString& initialPath) = 0;
    virtual QString SaveFileName(QWidget* owner, const QString& caption, const QString& filter,
                                 const QString& initialPath, const QString& defaultExtension) = 0;
    // One of `items`, or nothing when the user cancelled.
    virtual std::optional<QString> ChooseItem(QWidget* owner, const QString& caption,
                                              const QString& prompt, const QStringList& items,
                                              const QString& current) = 0;

    // A modeless find dialog owned by `owner`; `onFind` runs for every
    // search the user starts from it.
    virtual void ShowFind(QWidget* owner, const TQXFindRequest& initial, bool showWholeWord,
                          std::function<void(const TQXFindRequest&)> onFind) = 0;

    // Shows the print dialog and, unless it is cancelled, prints one
    // document drawn by `draw`; false when cancelled.
    virtual bool Print(QWidget* owner, const QString& documentTitle,
                       const std::function<void(TQXPrintCanvas&)>& draw) = 0;

    // A progress indication for a long operation, shown while the returned
    // object lives (a short operation may end before it appears).
    virtual std::unique_ptr<TQXProgress> StartProgress(QWidget* owner, const QString& caption) = 0;

    virtual void SetClipboardText(const QString& text) = 0;
    virtual QString ClipboardText() = 0;

    // The screen cursor: Qt::ArrowCursor stands for the default cursor.
    virtual Qt::CursorShape ScreenCursor() = 0;
    virtual void SetScreenCursor(Qt::CursorShape shape) = 0;

    // The instance in use: the Qt services unless another was installed.
    static TQXUIServices& Current();
    // Installs `services` (null: the Qt services) and returns the previous one.
    static TQXUIServices* SetCurrent(TQXUIServices* services);
};
