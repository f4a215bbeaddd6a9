#pragma once

#include "repository/TreeItems.h"
#include "tools/ItemFacts.h"

#include <QDialog>

#include <functional>

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class TQXDataAccessInterface;
class TQXImageList;

// The form "Item Properties": what the repository knows about one tree item
// (kind, name, file, icon, identifiers). Systems, computers and applications
// can be renamed and given another icon here; a rename is carried into
// every load record that names the attribute. Every other kind is shown
// read-only. "Save" is enabled exactly when something changed since the
// dialog was filled or last saved.
class TQXItemProperties final : public QDialog {
    Q_OBJECT

public:
    // `icons` is the owner's image list; `afterSave` refreshes the owning
    // view once a save is written.
    TQXItemProperties(QWidget* owner, const TQXImageList* icons, const TQXItem& item,
                      TQXDataAccessInterface* dataAccess, std::function<void()> afterSave);

    void cbSaveClick();
    void cbCloseClick();
    void OnChange();

    // Load records the last save changed.
    int LastLoadRecordsChanged() const { return FLoadRecordsChanged; }
    const TQXItemFacts& Facts() const { return FFacts; }
    // The icon number of the chosen icon; -1 for none.
    int ChosenIcon() const;

    // The form's controls, by their names on the form.
    QGroupBox* gbItem;
    QLabel* Label1;
    QLineEdit* tbItemType;
    QLabel* Label3;
    QLineEdit* tbItemName;
    QLabel* Label4;
    QPlainTextEdit* mmInFile;
    QLabel* Label7;
    QComboBox* cbeIcon;
    QLabel* Label2;
    QLineEdit* tbKVID;
    QPushButton* cbSave;
    QPushButton* cbClose;
    const TQXImageList* imgIcons;

protected:
    // Escape and the window's close go through "Close" and its question.
    void reject() override;

private:
    void CreateControls();
    void Fill();

    TQXItem FItem;
    TQXDataAccessInterface* FDataAccess;
    std::function<void()> FAfterSave;
    TQXItemFacts FFacts;
    int FLoadRecordsChanged = 0;
};
