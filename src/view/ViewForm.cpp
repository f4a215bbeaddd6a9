// The form QXView: its controls with their captions and defaults, the main
// menu mnuView and the popup menu pmnuView, and the wiring of their notices.
#include "view/View.h"

#include "platform/ErrorDisplay.h"
#include "platform/TreeControl.h"

#include <QAction>
#include <QActionGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int MenuGroup = 40;
constexpr int TypeGroup = 41;
constexpr int DirectionGroup = 42;
constexpr int LevelGroup = 43;

QRadioButton* AddRadio(QGroupBox* group, QBoxLayout* layout, const QString& name,
                       const QString& caption) {
    auto* button = new QRadioButton(caption, group);
    button->setObjectName(name);
    layout->addWidget(button);
    return button;
}

} // namespace

void TQXView::CreateControls() {
    setObjectName(QStringLiteral("QXView"));

    gbViewType = new QGroupBox(QStringLiteral(" View Type: "), this);
    gbViewType->setObjectName(QStringLiteral("gbViewType"));
    auto* typeLayout = new QVBoxLayout(gbViewType);
    rbDistribution = AddRadio(gbViewType, typeLayout, QStringLiteral("rbDistribution"),
                              QStringLiteral("Distribution"));
    rbDependencies = AddRadio(gbViewType, typeLayout, QStringLiteral("rbDependencies"),
                              QStringLiteral("Dependencies"));
    rbDistribution->setChecked(true);

    gbTrackDirection = new QGroupBox(QStringLiteral(" View Track Direction: "), this);
    gbTrackDirection->setObjectName(QStringLiteral("gbTrackDirection"));
    auto* directionLayout = new QVBoxLayout(gbTrackDirection);
    rbTopDown = AddRadio(gbTrackDirection, directionLayout, QStringLiteral("rbTopDown"),
                         QStringLiteral("TopDown"));
    rbBottomUp = AddRadio(gbTrackDirection, directionLayout, QStringLiteral("rbBottomUp"),
                          QStringLiteral("BottomUp"));
    rbTopDown->setChecked(true);

    gbViewBy = new QGroupBox(QStringLiteral(" View By: "), this);
    gbViewBy->setObjectName(QStringLiteral("gbViewBy"));
    auto* viewByLayout = new QVBoxLayout(gbViewBy);
    cbViewBy = new QComboBox(gbViewBy);
    cbViewBy->setObjectName(QStringLiteral("cbViewBy"));
    cbViewBy->addItems(level::Names());
    cbViewBy->setCurrentIndex(0);
    cbViewBy->setMinimumContentsLength(11);
    viewByLayout->addWidget(cbViewBy);
    auto* optionLayout = new QHBoxLayout;
    cbOption = new QCheckBox(gbViewBy);
    cbOption->setObjectName(QStringLiteral("cbOption"));
    lblOption = new QLabel(gbViewBy);
    lblOption->setObjectName(QStringLiteral("lblOption"));
    lblOption->setBuddy(cbOption);
    // The option box comes and goes without moving the other controls.
    for (QWidget* w : {static_cast<QWidget*>(cbOption), static_cast<QWidget*>(lblOption)}) {
        QSizePolicy policy = w->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        w->setSizePolicy(policy);
    }
    optionLayout->addWidget(cbOption);
    optionLayout->addWidget(lblOption, 1);
    viewByLayout->addLayout(optionLayout);

    gbRootItemFilter = new QGroupBox(QStringLiteral(" RootItem Filter: "), this);
    gbRootItemFilter->setObjectName(QStringLiteral("gbRootItemFilter"));
    auto* filterLayout = new QHBoxLayout(gbRootItemFilter);
    rbFilterOff = AddRadio(gbRootItemFilter, filterLayout, QStringLiteral("rbFilterOff"),
                           QStringLiteral("Off"));
    rbFilterOn = AddRadio(gbRootItemFilter, filterLayout, QStringLiteral("rbFilterOn"),
                          QStringLiteral("On"));
    rbFilterOff->setChecked(true);
    cbSetFilter = new QPushButton(QStringLiteral("Set"), gbRootItemFilter);
    cbSetFilter->setObjectName(QStringLiteral("cbSetFilter"));
    filterLayout->addWidget(cbSetFilter);

    gbRootItemLimit = new QGroupBox(QStringLiteral(" RootItem Limit: "), this);
    gbRootItemLimit->setObjectName(QStringLiteral("gbRootItemLimit"));
    auto* limitLayout = new QVBoxLayout(gbRootItemLimit);
    tbRootItemLimit = new QLineEdit(QStringLiteral("100"), gbRootItemLimit);
    tbRootItemLimit->setObjectName(QStringLiteral("tbRootItemLimit"));
    tbRootItemLimit->setMaximumWidth(
        tbRootItemLimit->fontMetrics().horizontalAdvance(QStringLiteral("0000000000")) + 16);
    limitLayout->addWidget(tbRootItemLimit);
    limitLayout->addStretch();

    cbRefreshView = new QPushButton(QStringLiteral("Refresh"), this);
    cbRefreshView->setObjectName(QStringLiteral("cbRefreshView"));
    cbRefreshView->setDefault(true);

    lblUserHint = new QLabel(this);
    lblUserHint->setObjectName(QStringLiteral("lblUserHint"));
    QFont hintFont = lblUserHint->font();
    hintFont.setBold(true);
    lblUserHint->setFont(hintFont);
    QPalette hintPalette = lblUserHint->palette();
    hintPalette.setColor(QPalette::WindowText, Qt::blue);
    lblUserHint->setPalette(hintPalette);

    tvMain = new TQXTreeControl(this);
    tvMain->setObjectName(QStringLiteral("tvMain"));

    auto* settings = new QHBoxLayout;
    settings->addWidget(gbViewType);
    settings->addWidget(gbTrackDirection);
    settings->addWidget(gbViewBy);
    settings->addWidget(gbRootItemFilter);
    settings->addWidget(gbRootItemLimit);
    settings->addStretch(1);
    auto* refresh = new QVBoxLayout;
    refresh->addStretch(1);
    refresh->addWidget(cbRefreshView);
    settings->addLayout(refresh);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(settings);
    layout->addWidget(lblUserHint);
    layout->addWidget(tvMain, 1);
    resize(900, 600);
}

QAction* TQXView::AddMenuItem(QMenu* menu, const QString& name, const QString& caption,
                              int groupIndex) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    TQXMainMenu::SetGroupIndex(action, groupIndex);
    return action;
}

void TQXView::CreateMenus() {
    QMenu* view = mnuView.AddMenu(QStringLiteral("View1"), QStringLiteral("View"), MenuGroup);

    // Radio items: Qt's toggle is undone before MenuChoice, which keeps the
    // check marks itself.
    auto radioGroup = [this](QMenu* menu, const QStringList& captions, int group) {
        auto* actions = new QActionGroup(menu);
        actions->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
        for (const QString& caption : captions) {
            QAction* action = AddMenuItem(menu, caption + QLatin1Char('1'), caption, group);
            action->setCheckable(true);
            actions->addAction(action);
            connect(action, &QAction::triggered, this, [this, action](bool checked) {
                action->setChecked(!checked);
                RunReportingErrors([&] { MenuChoice(action); });
            });
        }
    };

    QMenu* type = view->addMenu(QStringLiteral("Type"));
    type->menuAction()->setObjectName(QStringLiteral("Type1"));
    TQXMainMenu::SetGroupIndex(type->menuAction(), MenuGroup);
    radioGroup(type, {QStringLiteral("Distribution"), QStringLiteral("Dependencies")}, TypeGroup);

    QMenu* direction = view->addMenu(QStringLiteral("Track Direction"));
    direction->menuAction()->setObjectName(QStringLiteral("TrackDirection1"));
    TQXMainMenu::SetGroupIndex(direction->menuAction(), MenuGroup);
    radioGroup(direction, {QStringLiteral("TopDown"), QStringLiteral("BottomUp")}, DirectionGroup);

    QMenu* by = view->addMenu(QStringLiteral("By"));
    by->menuAction()->setObjectName(QStringLiteral("By1"));
    TQXMainMenu::SetGroupIndex(by->menuAction(), MenuGroup);
    radioGroup(by, level::Names(), LevelGroup);

    mnuView.FindItem(QStringLiteral("Distribution1"))->setChecked(true);
    mnuView.FindItem(QStringLiteral("TopDown1"))->setChecked(true);
    mnuView.FindItem(QStringLiteral("System1"))->setChecked(true);

    QAction* refresh =
        AddMenuItem(view, QStringLiteral("Refresh1"), QStringLiteral("Refresh"), MenuGroup);
    refresh->setShortcut(QKeySequence::Refresh);
    connect(refresh, &QAction::triggered, this,
            [this] { RunReportingErrors([this] { cbRefreshViewClick(); }); });

    QMenu* filter = mnuView.AddMenu(QStringLiteral("Filter1"), QStringLiteral("Filter"), MenuGroup);
    AddMenuItem(filter, QStringLiteral("SetFilter1"), QStringLiteral("Set RootItem Filter..."),
                MenuGroup);
    AddMenuItem(filter, QStringLiteral("ClearFilter1"), QStringLiteral("Clear RootItem Filter"),
                MenuGroup);

    QMenu* tracks = mnuView.AddMenu(QStringLiteral("Tracks1"), QStringLiteral("Tracks"), MenuGroup);
    AddMenuItem(tracks, QStringLiteral("AutoCompleteTrack1"), QStringLiteral("AutoComplete Track"),
                MenuGroup)
        ->setEnabled(false);
    AddMenuItem(tracks, QStringLiteral("AddTrack1"), QStringLiteral("Add Track"), MenuGroup)
        ->setEnabled(false);
    QAction* separator = tracks->addSeparator();
    separator->setObjectName(QStringLiteral("N7"));
    TQXMainMenu::SetGroupIndex(separator, MenuGroup);
}

void TQXView::CreatePopupMenu() {
    pmnuView = new QMenu(this);
    pmnuView->setObjectName(QStringLiteral("pmnuView"));
    auto item = [](QMenu* menu, const QString& name, const QString& caption) {
        QAction* action = menu->addAction(caption);
        action->setObjectName(name);
        return action;
    };
    item(pmnuView, QStringLiteral("AddtoWorkList1"), QStringLiteral("Add to WorkList"));
    item(pmnuView, QStringLiteral("AddtoWorkListAs1"), QStringLiteral("Add to WorkList as..."));
    QMenu* showIn = pmnuView->addMenu(QStringLiteral("Show in"));
    showIn->menuAction()->setObjectName(QStringLiteral("Showin1"));
    item(showIn, QStringLiteral("Editor1"), QStringLiteral("Editor"));
    AddFormViewerCommand();
    pmnuView->addSeparator();
    item(pmnuView, QStringLiteral("AutoCompleteTrackfromSelection1"),
         QStringLiteral("AutoComplete Track from Selection"))
        ->setEnabled(false);
    item(pmnuView, QStringLiteral("AddTracktoTracks1"), QStringLiteral("Add Track to Tracks"))
        ->setEnabled(false);
    item(pmnuView, QStringLiteral("AddTracktoDiagram1"), QStringLiteral("Add Track to Diagram"));
    CreateToolCommands();
}

void TQXView::ConnectControls() {
    // Any radio button that becomes checked, and a click on the option box,
    // is a change of the view type; so is the user's choice of a level.
    for (QRadioButton* button : {rbDistribution, rbDependencies, rbTopDown, rbBottomUp}) {
        connect(button, &QRadioButton::toggled, this, [this, button](bool checked) {
            if (checked)
                RunReportingErrors([&] { ViewTypeChanged(button); });
        });
    }
    connect(cbOption, &QCheckBox::clicked, this,
            [this] { RunReportingErrors([this] { ViewTypeChanged(cbOption); }); });
    connect(cbViewBy, &QComboBox::activated, this,
            [this] { RunReportingErrors([this] { ViewTypeChanged(cbViewBy); }); });
    connect(cbRefreshView, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { cbRefreshViewClick(); }); });
    connect(tvMain, &TQXTreeControl::NodeExpanded, this,
            [this](TQXTreeNode* node) { RunReportingErrors([&] { NodeExpanded(node); }); });
    // Leaving the limit box checks it.
    tbRootItemLimit->installEventFilter(this);
    ConnectFilterCommands();
}

bool TQXView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == tbRootItemLimit && event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        // Switching windows or opening a popup does not leave the box.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            RunReportingErrors([this] { tbLimitChange(); });
    }
    return TQXFormInterface::eventFilter(watched, event);
}
