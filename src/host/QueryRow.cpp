#include "host/QueryRow.h"

#include <QRadioButton>

TQXChoiceBox::TQXChoiceBox(QWidget* parent) : QComboBox(parent) {}

void TQXChoiceBox::AddChoice(const QString& text, const TQXQueryRowChoice& choice) {
    FChoices.push_back(choice);
    addItem(text);
}

void TQXChoiceBox::ClearChoices() {
    clear();
    FChoices.clear();
}

const TQXQueryRowChoice* TQXChoiceBox::Selected() const {
    const int index = currentIndex();
    if (index < 0 || index >= static_cast<int>(FChoices.size()))
        return nullptr;
    return &FChoices[static_cast<size_t>(index)];
}

void TQXChoiceBox::showPopup() {
    emit DroppingDown();
    QComboBox::showPopup();
}

TQXQueryRow::TQXQueryRow(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("QXQueryRow"));
    setFixedSize(640, RowHeight);

    cbAttribute = new TQXChoiceBox(this);
    cbAttribute->setObjectName(QStringLiteral("cbAttribute"));
    cbAttribute->setGeometry(0, 0, 140, 21);
    cbOperator = new TQXChoiceBox(this);
    cbOperator->setObjectName(QStringLiteral("cbOperator"));
    cbOperator->setGeometry(144, 0, 110, 21);
    cbValue = new QComboBox(this);
    cbValue->setObjectName(QStringLiteral("cbValue"));
    cbValue->setEditable(true);
    // The dialog keeps the history; typing adds nothing by itself.
    cbValue->setInsertPolicy(QComboBox::NoInsert);
    cbValue->setGeometry(258, 0, 210, 21);

    auto radio = [this](const char* name, const QString& caption, int left, int width) {
        auto* button = new QRadioButton(caption, this);
        button->setObjectName(QLatin1String(name));
        button->setGeometry(left, 2, width, 17);
        connect(button, &QRadioButton::clicked, this,
                [this, button] { emit RadioButtonClicked(button); });
        return button;
    };
    rbAnd = radio("rbAnd", QStringLiteral("AND"), 476, 52);
    rbOr = radio("rbOr", QStringLiteral("OR"), 530, 46);
    rbEnd = radio("rbEnd", QStringLiteral("End"), 578, 50);
    rbEnd->setChecked(true);

    connect(cbAttribute, &TQXChoiceBox::DroppingDown, this,
            [this] { emit AttributeDropDown(this); });
}
