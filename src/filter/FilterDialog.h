#pragma once

#include "host/QueryRow.h"
#include "host/WhereClause.h"

#include <QDialog>

#include <vector>

class QCheckBox;
class QGroupBox;
class QPushButton;
class QRadioButton;
class QScrollArea;

// The modal dialog "RootItem Filter": one condition per row, each row
// joined to the next with AND or OR. Apply copies the rows into the where
// clause the view turns into where texts. A view keeps one dialog for a
// connection; rows, value history, where clause and the case-sensitive flag
// live as long as the dialog. Rows can be added and applied without showing
// it (AddFilterRow, then cbApplyClick), as for a filter handed in with an
// item or stored in a view document.
class TQXFilter final : public QDialog {
    Q_OBJECT

public:
    // Table and field references come from the data access, once; it throws
    // EQXError when the repository lacks one of them.
    TQXFilter(QWidget* owner, TQXDataAccessInterface& dataAccess);

    // Prepares the dialog for the view-by level given by its text: empties
    // the result, adds an empty row to an empty dialog, and disables the
    // rows whose attribute lies below the level.
    void InitFilter(const QString& level);
    // Appends a row. An index of -1 leaves that box unselected, an empty
    // value leaves the value box empty; joint 1 checks AND on the previous
    // row, any other value above 0 OR, 0 or less nothing.
    void AddFilterRow(int attributeIndex, int operatorIndex, const QString& value, int joint);
    // The row with that index, 0 to RowCount() - 1.
    TQXQueryRow* GetQueryRow(int index) const { return FRows.at(static_cast<size_t>(index)); }
    int RowCount() const { return static_cast<int>(FRows.size()); }
    // Validates the last row; an incomplete one is reported and its box at
    // fault gets the focus.
    bool CheckFilterRow();

    // Event handlers.
    void RadioButtonClicked(QRadioButton* sender);
    void AttributeClicked(TQXQueryRow* row);
    void cbApplyClick();
    void cbClearClick();
    void cbCancelClick();
    void cbCaseSensitiveClick();

    // Shows the dialog modally through the UI services.
    int ShowModal();

    // "" (nothing applied), "Cleared" or "Changed".
    const QString& Result() const { return FResult; }
    bool CaseSensitive() const { return FCaseSensitive; }
    const QString& Level() const { return FLevel; }
    const TQXWhereClause& WhereClause() const { return FWhereClause; }
    TQXWhereClause& WhereClause() { return FWhereClause; }

    QPushButton* cbClear;
    QPushButton* cbApply;
    QPushButton* cbCancel;
    QGroupBox* gbWhere;
    QCheckBox* cbCaseSensitive;
    QScrollArea* frWhere;

private:
    void FillAttributes(TQXQueryRow& row, const QList<int>& indexes);
    void RemoveRowsAfter(int index);

    std::vector<TQXQueryRowChoice> FAttributes; // the full list, by attribute index
    std::vector<TQXQueryRowChoice> FOperators;
    QWidget* FRowArea; // inside frWhere; owns the rows
    std::vector<TQXQueryRow*> FRows;
    TQXWhereClause FWhereClause;
    QString FResult;
    bool FCaseSensitive = false;
    QString FLevel;
};
