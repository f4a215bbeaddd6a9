// The screen map viewer's command: "Show in" / "FormViewer" on a node of a
// screen map.
#include "view/View.h"

#include "formshow/FormShow.h"
#include "platform/BusyCursor.h"
#include "platform/ErrorDisplay.h"
#include "platform/TreeControl.h"

#include <QAction>
#include <QMenu>

namespace {

constexpr int ScreenMapImage = 16;
constexpr int ScreenMapBottomUpImage = 17;
// Where the window opens, from the view's top-left corner.
constexpr int FormOffset = 100;

} // namespace

void TQXView::AddFormViewerCommand() {
    QMenu* showIn = pmnuView->findChild<QAction*>(QStringLiteral("Showin1"))->menu();
    QAction* formViewer = showIn->addAction(QStringLiteral("FormViewer"));
    formViewer->setObjectName(QStringLiteral("FormViewer1"));
    connect(formViewer, &QAction::triggered, this,
            [this] { RunReportingErrors([this] { FormViewer1Click(); }); });
    connect(pmnuView, &QMenu::aboutToShow, this, [this] { EnableFormViewer(); });
}

void TQXView::EnableFormViewer() {
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    const int image = selection.size() == 1 ? selection.constFirst()->ImageIndex() : -1;
    pmnuView->findChild<QAction*>(QStringLiteral("FormViewer1"))
        ->setEnabled(image == ScreenMapImage || image == ScreenMapBottomUpImage);
}

QWidget* TQXView::FormViewer1Click() {
    TQXBusyCursor busy;
    const QList<TQXTreeNode*> selection = tvMain->Selection();
    if (selection.isEmpty())
        return nullptr;
    const TQXTreeNode* node = selection.constFirst();
    const auto* item = node->ItemAs<TQXItem>();
    if (!item)
        return nullptr;
    // Owned by the view, as a window of its own that leaves the view usable.
    auto form = std::make_unique<TQXFormShow>(this, FDataAccess, *item);
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->move(mapToGlobal(QPoint(FormOffset, FormOffset)));
    form->setWindowTitle(node->Text());
    form->show();
    return form.release();
}
