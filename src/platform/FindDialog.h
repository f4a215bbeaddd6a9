#pragma once

#include "platform/UIServices.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QRadioButton;

// The modeless find dialog: the text, match case, whole word (may be
// hidden) and the direction. "Find Next" hands the request to Find.
class TQXFindDialog final : public QDialog {
    Q_OBJECT

public:
    TQXFindDialog(QWidget* owner, const TQXFindRequest& initial, bool showWholeWord);

    TQXFindRequest Request() const;

signals:
    void Find(const TQXFindRequest& request);

private:
    QLineEdit* edtFindText;
    QCheckBox* cbMatchCase;
    QCheckBox* cbWholeWord;
    QRadioButton* rbUp;
    QRadioButton* rbDown;
};
