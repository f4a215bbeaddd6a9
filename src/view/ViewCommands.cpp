// The host's file commands as the view answers them; they belong to view
// documents, and until those are in place the view keeps the base form's
// behaviour. Print and the edit commands are in ViewTools.cpp.
#include "view/View.h"

void TQXView::Open1Click(QObject* sender) {
    TQXFormInterface::Open1Click(sender);
}

void TQXView::Save1Click(QObject* sender) {
    TQXFormInterface::Save1Click(sender);
}

void TQXView::SaveAs1Click(QObject* sender) {
    TQXFormInterface::SaveAs1Click(sender);
}

void TQXView::Edit1Click(QObject* sender) {
    TQXFormInterface::Edit1Click(sender);
}
