#pragma once

#include "host/WhereClause.h"

#include <QComboBox>
#include <QFrame>

#include <vector>

class QRadioButton;

// What one entry of a query row's attribute or operator box stands for: a
// column of a table (with the attribute type for attributes), or an
// operator. Unused parts are null or 0.
struct TQXQueryRowChoice {
    TQXQueryRowChoice(TQXTableRef table, TQXFieldRef field, int typeKey, TOperator op)
        : Table(table), Field(field), TypeKey(typeKey), Operator(op) {}

    TQXTableRef Table;
    TQXFieldRef Field;
    int TypeKey;
    TOperator Operator;
};

// A drop-down list whose entries carry choices. It announces that its list
// is about to drop down, so that the list can be filled again first.
class TQXChoiceBox final : public QComboBox {
    Q_OBJECT

public:
    explicit TQXChoiceBox(QWidget* parent);

    void AddChoice(const QString& text, const TQXQueryRowChoice& choice);
    void ClearChoices();
    // The selected entry's choice; null when none is selected.
    const TQXQueryRowChoice* Selected() const;

    void showPopup() override;

signals:
    void DroppingDown();

private:
    std::vector<TQXQueryRowChoice> FChoices; // by entry index
};

// One condition row of the filter dialog: attribute, operator and an
// editable value box with the values typed before, then how the next row
// joins this one: AND, OR, or no next row (rbEnd, checked at first).
class TQXQueryRow final : public QFrame {
    Q_OBJECT

public:
    static constexpr int RowHeight = 22;

    explicit TQXQueryRow(QWidget* parent);

    int Index() const { return FIndex; }
    void SetIndex(int index) { FIndex = index; }

    TQXChoiceBox* cbAttribute;
    TQXChoiceBox* cbOperator;
    QComboBox* cbValue;
    QRadioButton* rbAnd;
    QRadioButton* rbOr;
    QRadioButton* rbEnd;

signals:
    // A click on one of the three radio buttons.
    void RadioButtonClicked(QRadioButton* button);
    // The attribute list is about to drop down.
    void AttributeDropDown(TQXQueryRow* row);

private:
    int FIndex = 0;
};
