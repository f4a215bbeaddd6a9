#include "tools/ChangeSelectionDialog.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

TQXChangeSelection::TQXChangeSelection(QWidget* owner)
    : QDialog(owner, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint) {
    setObjectName(QStringLiteral("QXChangeSelection"));
    setWindowTitle(QStringLiteral("Change Selection"));
    cbChangeType = new QComboBox(this);
    cbChangeType->setObjectName(QStringLiteral("cbChangeType"));
    cbChangeType->addItems({QStringLiteral("Deselect"), QStringLiteral("Select")});
    cbChangeType->setCurrentIndex(0);
    lblItemText = new QLabel(QStringLiteral("Items Text begins with:"), this);
    lblItemText->setObjectName(QStringLiteral("lblItemText"));
    edtItemText = new QLineEdit(this);
    edtItemText->setObjectName(QStringLiteral("edtItemText"));
    lblItemText->setBuddy(edtItemText);
    cbApply = new QPushButton(QStringLiteral("Apply"), this);
    cbApply->setObjectName(QStringLiteral("cbApply"));
    cbApply->setDefault(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 6);
    layout->addWidget(cbChangeType);
    layout->addWidget(lblItemText);
    layout->addWidget(edtItemText, 1);
    layout->addWidget(cbApply);
    setFixedSize(526, 40);
    connect(cbApply, &QPushButton::clicked, this, &TQXChangeSelection::cbApplyClick);
}

void TQXChangeSelection::cbApplyClick() {
    accept();
}

bool TQXChangeSelection::SelectChosen() const {
    return cbChangeType->currentText() == QLatin1String("Select");
}

QString TQXChangeSelection::ItemText() const {
    return edtItemText->text();
}
