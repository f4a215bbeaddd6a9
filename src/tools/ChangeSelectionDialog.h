#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

// The small form "Change Selection": whether to select or deselect, and the
// beginning of the node texts it applies to. "Apply" closes it.
class TQXChangeSelection final : public QDialog {
    Q_OBJECT

public:
    explicit TQXChangeSelection(QWidget* owner);

    void cbApplyClick();
    bool SelectChosen() const;
    QString ItemText() const;

    QComboBox* cbChangeType;
    QLabel* lblItemText;
    QLineEdit* edtItemText;
    QPushButton* cbApply;
};
