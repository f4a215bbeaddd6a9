#include "tools/ItemPropertiesDialog.h"

#include "platform/ErrorDisplay.h"
#include "platform/ImageList.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"
#include "tools/AttributeWriter.h"

#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

template <typename Control> Control* Named(Control* control, const char* name) {
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace

TQXItemProperties::TQXItemProperties(QWidget* owner, const TQXImageList* icons, const TQXItem& item,
                                     TQXDataAccessInterface* dataAccess,
                                     std::function<void()> afterSave)
    : QDialog(owner, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      imgIcons(icons ? icons : &TQXImageList::Standard()), FItem(item), FDataAccess(dataAccess),
      FAfterSave(std::move(afterSave)) {
    CreateControls();
    Fill();
}

void TQXItemProperties::CreateControls() {
    setObjectName(QStringLiteral("QXItemProperties"));
    setWindowTitle(QStringLiteral("Item Properties"));
    setFixedSize(304, 244);

    gbItem = Named(new QGroupBox(QStringLiteral(" Item: "), this), "gbItem");
    Label1 = Named(new QLabel(QStringLiteral("Type:"), gbItem), "Label1");
    tbItemType = Named(new QLineEdit(gbItem), "tbItemType");
    Label3 = Named(new QLabel(QStringLiteral("Name:"), gbItem), "Label3");
    tbItemName = Named(new QLineEdit(gbItem), "tbItemName");
    Label4 = Named(new QLabel(QStringLiteral("In File:"), gbItem), "Label4");
    mmInFile = Named(new QPlainTextEdit(gbItem), "mmInFile");
    mmInFile->setFixedHeight(40);
    Label7 = Named(new QLabel(QStringLiteral("Icon:"), gbItem), "Label7");
    cbeIcon = Named(new QComboBox(gbItem), "cbeIcon");
    cbeIcon->setMaxVisibleItems(8);
    cbeIcon->setIconSize(QSize(16, 16));
    cbeIcon->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    Label2 = Named(new QLabel(QStringLiteral("KVID in DB:"), gbItem), "Label2");
    tbKVID = Named(new QLineEdit(gbItem), "tbKVID");
    tbKVID->setReadOnly(true);
    cbSave = Named(new QPushButton(QStringLiteral("Save"), this), "cbSave");
    cbSave->setDefault(true);
    cbClose = Named(new QPushButton(QStringLiteral("Close"), this), "cbClose");

    auto* form = new QFormLayout(gbItem);
    form->setContentsMargins(8, 4, 8, 6);
    form->setVerticalSpacing(4);
    form->addRow(Label1, tbItemType);
    form->addRow(Label3, tbItemName);
    form->addRow(Label4, mmInFile);
    auto* iconRow = new QHBoxLayout;
    iconRow->addWidget(cbeIcon);
    iconRow->addStretch(1);
    form->addRow(Label7, iconRow);
    form->addRow(Label2, tbKVID);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cbSave);
    buttons->addWidget(cbClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 8);
    layout->addWidget(gbItem);
    layout->addLayout(buttons);

    connect(tbItemName, &QLineEdit::textChanged, this, &TQXItemProperties::OnChange);
    connect(mmInFile, &QPlainTextEdit::textChanged, this, &TQXItemProperties::OnChange);
    connect(cbeIcon, &QComboBox::currentIndexChanged, this, &TQXItemProperties::OnChange);
    connect(tbKVID, &QLineEdit::textChanged, this, &TQXItemProperties::OnChange);
    connect(cbSave, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { cbSaveClick(); }); });
    connect(cbClose, &QPushButton::clicked, this,
            [this] { RunReportingErrors([this] { cbCloseClick(); }); });
}

void TQXItemProperties::Fill() {
    FFacts = ReadItemFacts(*FDataAccess, FItem);
    tbItemType->setText(FFacts.Kind);
    tbKVID->setText(FFacts.KVID);
    tbItemName->setText(FFacts.Name);
    for (int icon : FFacts.IconChoices)
        cbeIcon->addItem(imgIcons->Icon(icon), QString(), icon);
    cbeIcon->setCurrentIndex(FFacts.IconChoices.indexOf(FFacts.Icon));
    tbItemName->setEnabled(FFacts.NameEditable);
    cbeIcon->setEnabled(FFacts.IconEditable);
    if (FFacts.Unsupported)
        TQXUIServices::Current().ShowMessage(QStringLiteral("Unsupported Itemtype"));
    tbItemType->setEnabled(false);
    if (FFacts.InFileKnown) {
        mmInFile->setPlainText(FFacts.InFile);
        mmInFile->setEnabled(false);
    }
    // Filling the controls has fired OnChange.
    cbSave->setEnabled(false);
}

int TQXItemProperties::ChosenIcon() const {
    return cbeIcon->currentIndex() < 0 ? -1 : cbeIcon->currentData().toInt();
}

void TQXItemProperties::OnChange() {
    cbSave->setEnabled(true);
}

void TQXItemProperties::cbSaveClick() {
    TQXUIServices& ui = TQXUIServices::Current();
    if (tbItemName->text().isEmpty()) {
        ui.ShowMessage(QStringLiteral("Name is required"));
        tbItemName->setFocus();
        return;
    }
    const int icon = ChosenIcon();
    try {
        FLoadRecordsChanged = SaveAttribute(*FDataAccess, FFacts.AttributeID, tbItemName->text(),
                                            icon < 0 ? std::nullopt : std::optional<int>(icon));
    } catch (const std::exception& e) {
        // Nothing was written: the values stay for another try.
        ui.ShowMessage(ExceptionMessage(e));
        return;
    }
    if (FAfterSave)
        FAfterSave();
    cbSave->setEnabled(false);
}

void TQXItemProperties::cbCloseClick() {
    if (cbSave->isEnabled() &&
        !TQXUIServices::Current().Ask(QStringLiteral("Unsaved changes will be lost. Close anyway?"),
                                      TQXQuestionKind::Warning))
        return;
    QDialog::reject();
}

void TQXItemProperties::reject() {
    cbCloseClick();
}
