#pragma once

#include <QHash>
#include <QIcon>
#include <QPixmap>
#include <QString>

// The host's image list: icons by index, drawn from the SVG resources under
// ":/icons" (one picture per index, "NN.svg"). Tree nodes, combo boxes and
// view documents refer to these pictures by index only. Use it from the GUI
// thread; rendered pixmaps and icons are cached.
class TQXImageList {
public:
    static const TQXImageList& Standard(); // the host's list (indexes 0..55)

    int Count() const;
    QIcon Icon(int index) const; // null QIcon when out of range
    // Rendered at size x size with device pixel ratio 1; null when out of
    // range or size < 1.
    QPixmap Pixmap(int index, int size) const;
    QString Meaning(int index) const;      // short English meaning; empty when out of range
    QString ResourcePath(int index) const; // ":/icons/NN.svg"; empty when out of range

private:
    TQXImageList() = default;

    mutable QHash<quint64, QPixmap> FPixmaps; // key: index << 32 | size
    mutable QHash<int, QIcon> FIcons;
};
