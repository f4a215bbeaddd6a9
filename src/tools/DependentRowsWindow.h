#pragma once

#include <QDialog>

class QPlainTextEdit;

// The form "Show Dependent Rows": one read-only text box filling the
// window, one line per call.
class TQXDependentRows final : public QDialog {
    Q_OBJECT

public:
    explicit TQXDependentRows(QWidget* owner);

    // Appends the text as a new line.
    void AddRow(const QString& text);
    QStringList Rows() const;

    QPlainTextEdit* mmoRows;
};
