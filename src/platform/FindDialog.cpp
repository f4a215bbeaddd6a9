#include "platform/FindDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

TQXFindDialog::TQXFindDialog(QWidget* owner, const TQXFindRequest& initial, bool showWholeWord)
    : QDialog(owner) {
    setWindowTitle(tr("Find"));
    edtFindText = new QLineEdit(initial.Text, this);
    cbMatchCase = new QCheckBox(tr("Match &case"), this);
    cbMatchCase->setChecked(initial.MatchCase);
    cbWholeWord = new QCheckBox(tr("Match &whole word only"), this);
    cbWholeWord->setChecked(initial.WholeWord);
    cbWholeWord->setVisible(showWholeWord);

    auto* direction = new QGroupBox(tr("Direction"), this);
    rbUp = new QRadioButton(tr("&Up"), direction);
    rbDown = new QRadioButton(tr("&Down"), direction);
    (initial.Down ? rbDown : rbUp)->setChecked(true);
    auto* directionLayout = new QHBoxLayout(direction);
    directionLayout->addWidget(rbUp);
    directionLayout->addWidget(rbDown);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* findNext = buttons->addButton(tr("&Find Next"), QDialogButtonBox::AcceptRole);
    findNext->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(findNext, &QPushButton::clicked, this, [this] { emit Find(Request()); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);

    auto* layout = new QGridLayout(this);
    auto* label = new QLabel(tr("Fi&nd what:"), this);
    label->setBuddy(edtFindText);
    layout->addWidget(label, 0, 0);
    layout->addWidget(edtFindText, 0, 1, 1, 2);
    layout->addWidget(cbMatchCase, 1, 0, 1, 2);
    layout->addWidget(direction, 1, 2, 2, 1);
    layout->addWidget(cbWholeWord, 2, 0, 1, 2);
    layout->addWidget(buttons, 3, 0, 1, 3);
}

TQXFindRequest TQXFindDialog::Request() const {
    TQXFindRequest request;
    request.Text = edtFindText->text();
    request.MatchCase = cbMatchCase->isChecked();
    request.WholeWord = cbWholeWord->isChecked();
    request.Down = rbDown->isChecked();
    return request;
}
