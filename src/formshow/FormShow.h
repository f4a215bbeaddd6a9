#pragma once

#include "formshow/FormLayout.h"

#include <QWidget>

#include <memory>
#include <vector>

class QLabel;
class QLineEdit;
class QScrollArea;
class TQXDataAccessInterface;
class TQXDataSet;
class TQXItem;

// The form QXFormShow: a modeless window that draws one stored screen map
// as read-only edit boxes placed by line and column, in a fixed-pitch font
// so that text lines up with the columns. Constants have the button-face
// colour, fields show their names on hover, the 24 x 80 screen area is
// faintly outlined and the window scrolls when the map is larger. The status
// line says how many fields are shown and which operands were skipped.
//
// The constructor reads the words of the item's object through the
// data-access object (the query result stays open while the window lives)
// and builds the boxes; a conversion error leaves it with EQXError, so no
// window is made. The caller places, captions and shows the window.
class TQXFormShow : public QWidget {
    Q_OBJECT

public:
    TQXFormShow(QWidget* owner, TQXDataAccessInterface* dataAccess, const TQXItem& item);
    ~TQXFormShow() override;

    QString ClassName() const { return QStringLiteral("TQXFormShow"); }

    // What the builders made of the words, and the boxes made from it, in
    // the order they were created.
    const TQXFormLayout& Layout() const { return FLayout; }
    const std::vector<QLineEdit*>& Boxes() const { return FBoxes; }
    QString StatusText() const;

    // The font of the boxes: fixed pitch, 10 pixels per character.
    static QFont ScreenFont();

private:
    void CreateBoxes();

    std::unique_ptr<TQXDataSet> FWords;
    TQXFormLayout FLayout;
    QScrollArea* FScroll = nullptr;
    QWidget* FScreen = nullptr;
    QLabel* FStatus = nullptr;
    std::vector<QLineEdit*> FBoxes;
};
