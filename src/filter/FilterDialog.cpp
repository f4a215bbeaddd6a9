#include "filter/FilterDialog.h"

#include "filter/FilterChoices.h"
#include "platform/ErrorDisplay.h"
#include "platform/UIServices.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>

namespace {

const QString Cleared = QStringLiteral("Cleared");
const QString Changed = QStringLiteral("Changed");

// Gives the value box a new list without changing the text in it.
void SetValueList(QComboBox& box, const QStringList& values) {
    const QString text = box.currentText();
    box.clear();
    box.addItems(values);
    box.setCurrentIndex(-1);
    box.setEditText(text);
}

QStringList ValueList(const QComboBox& box) {
    QStringList values;
    for (int i = 0; i < box.count(); ++i)
        values << box.itemText(i);
    return values;
}

} // namespace

TQXFilter::TQXFilter(QWidget* owner, TQXDataAccessInterface& dataAccess) : QDialog(owner) {
    for (const filterchoice::Attribute& attribute : filterchoice::Attributes()) {
        const TQXTableRef table =
            dataAccess.GetTableRef(QLatin1String(qx::TableName(attribute.Table)));
        FAttributes.emplace_back(table,
                                 dataAccess.GetFieldRef(table, QLatin1String(attribute.Column)),
                                 attribute.TypeKey, opNone);
    }
    for (const filterchoice::Operator& op : filterchoice::Operators())
        FOperators.emplace_back(nullptr, nullptr, 0, op.Value);

    setObjectName(QStringLiteral("QXFilter"));
    setWindowTitle(QStringLiteral("RootItem Filter"));
    // A dialog border without border icons.
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint);
    setFixedSize(672, 200);

    gbWhere = new QGroupBox(QStringLiteral(" Show only: "), this);
    gbWhere->setObjectName(QStringLiteral("gbWhere"));
    gbWhere->setGeometry(4, 4, 665, 157);
    QFont bold = font();
    bold.setBold(true);
    gbWhere->setFont(bold);
    QFont normal = font();
    normal.setBold(false); // set explicitly, so that it is not inherited from the caption

    cbCaseSensitive = new QCheckBox(QStringLiteral("Case sensitive"), gbWhere);
    cbCaseSensitive->setObjectName(QStringLiteral("cbCaseSensitive"));
    cbCaseSensitive->setFont(normal);
    cbCaseSensitive->setGeometry(12, 134, 117, 17);

    frWhere = new QScrollArea(gbWhere);
    frWhere->setObjectName(QStringLiteral("frWhere"));
    frWhere->setFont(normal);
    frWhere->setGeometry(2, 22, 660, 110);
    frWhere->setFrameShape(QFrame::NoFrame);
    frWhere->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    FRowArea = new QWidget;
    FRowArea->resize(650, 0);
    frWhere->setWidget(FRowArea); // owns it

    auto button = [this](const char* name, const QString& caption, QStyle::StandardPixmap icon,
                         int left) {
        auto* pushButton = new QPushButton(style()->standardIcon(icon), caption, this);
        pushButton->setObjectName(QLatin1String(name));
        pushButton->setGeometry(left, 166, 73, 25);
        pushButton->setAutoDefault(false);
        return pushButton;
    };
    cbClear = button("cbClear", QStringLiteral("Clear"), QStyle::SP_DialogResetButton, 412);
    cbApply = button("cbApply", QStringLiteral("Apply"), QStyle::SP_DialogApplyButton, 496);
    cbApply->setDefault(true);
    cbCancel = button("cbCancel", QStringLiteral("Cancel"), QStyle::SP_DialogCancelButton, 580);

    connect(cbClear, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { cbClearClick(); }); });
    connect(cbApply, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { cbApplyClick(); }); });
    connect(cbCancel, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { cbCancelClick(); }); });
    // Checked by the user or by code alike, the box sets the flag.
    connect(cbCaseSensitive, &QCheckBox::toggled, this, [this] { cbCaseSensitiveClick(); });

    FCaseSensitive = cbCaseSensitive->isChecked();
}

void TQXFilter::InitFilter(const QString& level) {
    FResult.clear();
    FLevel = level;
    if (FRows.empty())
        AddFilterRow(-1, -1, QString(), 0);
    for (TQXQueryRow* row : FRows) {
        const bool editable = filterchoice::EditableAt(row->cbAttribute->currentText(), level);
        for (QWidget* box :
             {static_cast<QWidget*>(row->cbAttribute), static_cast<QWidget*>(row->cbOperator),
              static_cast<QWidget*>(row->cbValue)})
            box->setEnabled(editable);
    }
}

void TQXFilter::AddFilterRow(int attributeIndex, int operatorIndex, const QString& value,
                             int joint) {
    const int n = RowCount();
    auto* row = new TQXQueryRow(FRowArea);
    row->SetIndex(n);
    FRows.push_back(row);
    row->move(10, n * TQXQueryRow::RowHeight);
    row->setObjectName(row->objectName() + QString::number(n));
    FRowArea->resize(FRowArea->width(), RowCount() * TQXQueryRow::RowHeight);

    connect(row, &TQXQueryRow::RadioButtonClicked, this, [this](QRadioButton* sender) {
        RunReportingErrors([&] { RadioButtonClicked(sender); });
    });
    connect(row, &TQXQueryRow::AttributeDropDown, this,
            [this](TQXQueryRow* sender) { RunReportingErrors([&] { AttributeClicked(sender); }); });

    QList<int> every;
    for (int i = 0; i < filterchoice::AttributeCount; ++i)
        every << i;
    FillAttributes(*row, every);
    for (int i = 0; i < filterchoice::OperatorCount; ++i)
        row->cbOperator->AddChoice(QLatin1String(filterchoice::Operators()[i].Text),
                                   FOperators[static_cast<size_t>(i)]);
    row->cbOperator->setCurrentIndex(-1);

    // The value typed in the row before becomes part of every row's history.
    if (n > 0) {
        QComboBox& previous = *FRows[static_cast<size_t>(n - 1)]->cbValue;
        const QString typed = previous.currentText();
        QComboBox& first = *FRows.front()->cbValue;
        if (!typed.isEmpty() && previous.findText(typed) < 0)
            SetValueList(first, ValueList(first) << typed);
        const QStringList history = ValueList(first);
        for (int i = 1; i <= n; ++i)
            SetValueList(*FRows[static_cast<size_t>(i)]->cbValue, history);
    }

    if (attributeIndex >= 0)
        row->cbAttribute->setCurrentIndex(attributeIndex);
    if (operatorIndex >= 0)
        row->cbOperator->setCurrentIndex(operatorIndex);
    if (!value.isEmpty())
        row->cbValue->setEditText(value);

    if (joint > 0 && n > 0) {
        TQXQueryRow* previous = FRows[static_cast<size_t>(n - 1)];
        (joint == 1 ? previous->rbAnd : previous->rbOr)->setChecked(true);
    }
    row->show();
}

void TQXFilter::FillAttributes(TQXQueryRow& row, const QList<int>& indexes) {
    row.cbAttribute->ClearChoices();
    for (int index : indexes)
        row.cbAttribute->AddChoice(QLatin1String(filterchoice::Attributes()[index].Text),
                                   FAttributes[static_cast<size_t>(index)]);
    row.cbAttribute->setCurrentIndex(-1);
}

void TQXFilter::AttributeClicked(TQXQueryRow* row) {
    const QString remembered = row->cbAttribute->currentText();
    FillAttributes(*row, filterchoice::ForLevel(FLevel));
    if (!remembered.isEmpty())
        row->cbAttribute->setCurrentIndex(row->cbAttribute->findText(remembered));
}

void TQXFilter::RadioButtonClicked(QRadioButton* sender) {
    auto* row = qobject_cast<TQXQueryRow*>(sender->parentWidget());
    if (!row)
        return;
    if (sender == row->rbEnd) {
        RemoveRowsAfter(row->Index());
        return;
    }
    if (row->Index() != RowCount() - 1)
        return; // the joint is read on Apply
    if (CheckFilterRow())
        AddFilterRow(-1, -1, QString(), 0);
    else
        row->rbEnd->setChecked(true);
}

void TQXFilter::RemoveRowsAfter(int index) {
    while (RowCount() > index + 1) {
        delete FRows.back();
        FRows.pop_back();
    }
    FRowArea->resize(FRowArea->width(), RowCount() * TQXQueryRow::RowHeight);
}

bool TQXFilter::CheckFilterRow() {
    if (FRows.empty())
        return false;
    TQXQueryRow* row = FRows.back();
    TQXUIServices& ui = TQXUIServices::Current();
    if (row->cbAttribute->currentIndex() < 0) {
        ui.ShowMessage(QStringLiteral("Attribute is required"));
        row->cbAttribute->setFocus();
        return false;
    }
    if (row->cbOperator->currentIndex() < 0) {
        ui.ShowMessage(QStringLiteral("Operator is required"));
        row->cbOperator->setFocus();
        return false;
    }
    if (row->cbValue->currentText().isEmpty()) {
        ui.ShowMessage(QStringLiteral("At least one character is required for Value"));
        row->cbValue->setFocus();
        return false;
    }
    return true;
}

void TQXFilter::cbApplyClick() {
    FWhereClause.Clear();
    const bool onlyAnEmptyRow = RowCount() == 1 && FRows.front()->cbAttribute->currentIndex() < 0 &&
                                FRows.front()->cbOperator->currentIndex() < 0 &&
                                FRows.front()->cbValue->currentText().isEmpty() &&
                                FRows.front()->rbEnd->isChecked();
    if (RowCount() == 0 || onlyAnEmptyRow) {
        FResult = Cleared;
        accept();
        return;
    }
    if (!CheckFilterRow())
        return;
    for (int i = 0; i < RowCount(); ++i) {
        const TQXQueryRow* row = FRows[static_cast<size_t>(i)];
        const TQXQueryRowChoice* attribute = row->cbAttribute->Selected();
        const TQXQueryRowChoice* op = row->cbOperator->Selected();
        // Only the last row is checked; an earlier one left without
        // attribute or operator says nothing.
        if (!attribute || !op)
            continue;
        const bool andPrevious = i > 0 && FRows[static_cast<size_t>(i - 1)]->rbAnd->isChecked();
        FWhereClause.Add(andPrevious, attribute->Table, attribute->Field, attribute->TypeKey);
        FWhereClause.SetOperator(op->Operator);
        FWhereClause.SetValueString(row->cbValue->currentText());
    }
    FResult = Changed;
    accept();
}

void TQXFilter::cbClearClick() {
    if (!FRows.empty()) {
        TQXQueryRow* first = FRows.front();
        for (QWidget* box :
             {static_cast<QWidget*>(first->cbAttribute), static_cast<QWidget*>(first->cbOperator),
              static_cast<QWidget*>(first->cbValue)})
            box->setEnabled(true);
        first->cbAttribute->setCurrentIndex(-1);
        first->cbOperator->setCurrentIndex(-1);
        first->cbValue->setCurrentIndex(-1);
        first->cbValue->setEditText(QString());
        first->rbEnd->setChecked(true);
        RadioButtonClicked(first->rbEnd);
    }
    FWhereClause.Clear();
    FResult = Cleared;
}

void TQXFilter::cbCancelClick() {
    reject();
}

void TQXFilter::cbCaseSensitiveClick() {
    FCaseSensitive = cbCaseSensitive->isChecked();
}

int TQXFilter::ShowModal() {
    return TQXUIServices::Current().ShowModal(*this);
}
