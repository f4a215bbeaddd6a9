// Tracks: the Tracks menu with one item per track, and the track commands
// of the main and popup menus. The rules live in TQXTrackSelection.
#include "view/View.h"

#include "host/BaseFunctionsInterface.h"
#include "host/Items.h"
#include "platform/BusyCursor.h"
#include "platform/ErrorDisplay.h"
#include "platform/TreeControl.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"
#include "tracks/TrackSelection.h"

#include <QAction>
#include <QCheckBox>
#include <QEventLoop>
#include <QMenu>
#include <QRadioButton>
#include <QTimer>

namespace {

// Waits while the window keeps painting; the user's input waits too, so
// that nothing changes the tree during a blink.
void Pause(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
}

} // namespace

void TQXView::ConnectTrackCommands() {
    auto connectItem = [this](QAction* action, void (TQXView::*handler)(QObject*)) {
        connect(action, &QAction::triggered, this,
                [this, action, handler] { RunReportingErrors([&] { (this->*handler)(action); }); });
    };
    auto popupItem = [this](const char* name) {
        return pmnuView->findChild<QAction*>(QLatin1String(name));
    };
    connectItem(mnuView.FindItem(QStringLiteral("AddTrack1")), &TQXView::AddTrack1Click);
    connectItem(mnuView.FindItem(QStringLiteral("AutoCompleteTrack1")),
                &TQXView::AutoCompleteTrack1Click);
    connectItem(popupItem("AddTracktoTracks1"), &TQXView::AddTracktoTracks1Click);
    connectItem(popupItem("AutoCompleteTrackfromSelection1"),
                &TQXView::AutoCompleteTrackfromSelection1Click);
    connectItem(popupItem("AddTracktoDiagram1"), &TQXView::AddTracktoDiagram1Click);
    connect(mnuView.FindMenu(QStringLiteral("Tracks1")), &QMenu::aboutToShow, this,
            [this] { RunReportingErrors([this] { Tracks1Click(); }); });
    connect(pmnuView, &QMenu::aboutToShow, this,
            [this] { RunReportingErrors([this] { EnableTrackCommands(); }); });
}

void TQXView::Tracks1Click() {
    EnableTrackCommands();
}

void TQXView::EnableTrackCommands() {
    QAction* addTrack = mnuView.FindItem(QStringLiteral("AddTrack1"));
    QAction* autoComplete = mnuView.FindItem(QStringLiteral("AutoCompleteTrack1"));
    addTrack->setEnabled(CheckValidTrackInSelection(false, false));
    autoComplete->setEnabled(!addTrack->isEnabled() && CheckValidTrackInSelection(true, false));
    auto popupItem = [this](const char* name) {
        return pmnuView->findChild<QAction*>(QLatin1String(name));
    };
    popupItem("AutoCompleteTrackfromSelection1")->setEnabled(autoComplete->isEnabled());
    popupItem("AddTracktoTracks1")->setEnabled(addTrack->isEnabled());
    const QAction* diagram = FindMenuItem(QStringLiteral("Diagram2"));
    if (diagram && diagram->isEnabled())
        popupItem("AddTracktoDiagram1")->setEnabled(addTrack->isEnabled());
}

bool TQXView::CheckValidTrackInSelection(bool levelsOnly, bool complete) {
    return TQXTrackSelection(*tvMain).Check(levelsOnly, complete).Valid;
}

bool TQXView::DataItemExistsInTrack(const TQXTreeNode* node) {
    return TQXTrackSelection::DataItemExistsInTrack(node);
}

void TQXView::AddTrack1Click(QObject*) {
    TQXTrackSelection selection(*tvMain);
    // The menus offer the command only for a track; a refusal says why.
    if (const QString refusal = selection.NodeWithoutItem(); !refusal.isEmpty()) {
        TQXUIServices::Current().ShowMessage(refusal);
        return;
    }
    if (const TQXTrackCheck check = selection.Check(false, false); !check) {
        TQXUIServices::Current().ShowMessage(check.Reason);
        return;
    }
    FTracks.push_back(selection.MakeTrack());
    AddTrackMenuItem(static_cast<int>(FTracks.size()) - 1);
}

void TQXView::AddTracktoTracks1Click(QObject* sender) {
    AddTrack1Click(sender);
}

void TQXView::AddTrackMenuItem(int index) {
    QMenu* tracks = mnuView.FindMenu(QStringLiteral("Tracks1"));
    QString caption = FTracks.at(index).Name;
    QAction* item = tracks->addAction(caption.replace(QLatin1Char('&'), QStringLiteral("&&")));
    // ShowTrack finds the track by this name.
    item->setObjectName(QStringLiteral("Track") + QString::number(index));
    TQXMainMenu::SetGroupIndex(item, TQXMainMenu::GroupIndex(tracks));
    connect(item, &QAction::triggered, this,
            [this, item] { RunReportingErrors([&] { ShowTrack(item); }); });
}

void TQXView::AutoCompleteTrack1Click(QObject*) {
    const TQXTrackCheck check = TQXTrackSelection(*tvMain).Check(false, true);
    const QList<TQXTreeNode*> completed = tvMain->Selection();
    for (int blink = 0; blink < 3; ++blink) {
        tvMain->Select(nullptr);
        tvMain->Viewport()->repaint();
        Pause(FBlinkPause);
        tvMain->SetSelection(completed);
        tvMain->Viewport()->repaint();
        Pause(FBlinkPause);
    }
    if (!check)
        TQXUIServices::Current().ShowMessage(QStringLiteral("The selection is not a Track: ") +
                                             check.Reason);
}

void TQXView::AutoCompleteTrackfromSelection1Click(QObject* sender) {
    AutoCompleteTrack1Click(sender);
}

void TQXView::ShowTrack(QObject* sender) {
    bool ok = false;
    const int index = sender ? sender->objectName().mid(5).toInt(&ok) : -1;
    if (!ok || index < 0 || index >= static_cast<int>(FTracks.size()))
        return;
    const bool restored =
        TQXTrackSelection(*tvMain).Show(FTracks.at(index), [](TQXTreeNode* parent) {
            if (parent)
                parent->SetExpanded(true); // the view reads the children, if not yet read
        });
    if (!restored)
        TQXUIServices::Current().ShowMessage(QStringLiteral("Could not restore this Track"));
}

void TQXView::AddTracktoDiagram1Click(QObject*) {
    TQXTrackSelection selection(*tvMain);
    if (const QString refusal = selection.NodeWithoutItem(); !refusal.isEmpty()) {
        TQXUIServices::Current().ShowMessage(refusal);
        return;
    }
    TQXBusyCursor busy;
    TQXItems items;
    selection.DiagramItems(items);
    QString command = rbDependencies->isChecked() ? QStringLiteral("Dependencies")
                                                  : QStringLiteral("Distribution");
    command += rbTopDown->isChecked() ? QStringLiteral("TopDown") : QStringLiteral("BottomUp");
    if (!cbOption->isHidden() && cbOption->isChecked())
        command += QStringLiteral("EntryInSequence");
    QString errorText;
    FBaseFunctions->SendItemsToWindow(QStringLiteral("Diagram"), 0, FConnectionName, items, command,
                                      errorText);
    if (!errorText.isEmpty())
        throw EQXError(errorText);
}
