// The host's file and edit commands as the view answers them. The file
// commands belong to view documents and the edit commands to the tree
// selection commands; until those are in place the view keeps the base
// form's behaviour.
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

void TQXView::Print1Click(QObject* sender) {
    TQXFormInterface::Print1Click(sender);
}

void TQXView::Edit1Click(QObject* sender) {
    TQXFormInterface::Edit1Click(sender);
}

void TQXView::Copy1Click(QObject* sender) {
    TQXFormInterface::Copy1Click(sender);
}

void TQXView::SelectAll1Click(QObject* sender) {
    TQXFormInterface::SelectAll1Click(sender);
}

void TQXView::ClearSelection1Click(QObject* sender) {
    TQXFormInterface::ClearSelection1Click(sender);
}

void TQXView::Find1Click(QObject* sender) {
    TQXFormInterface::Find1Click(sender);
}

void TQXView::FindDialog1Find(QObject* sender) {
    TQXFormInterface::FindDialog1Find(sender);
}
