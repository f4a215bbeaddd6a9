#include "ImageList.h"

#include <QPainter>
#include <QSvgRenderer>

#include <array>

namespace {

// What each picture stands for. Object pictures come in pairs: the TopDown
// index, then the next one for BottomUp.
constexpr std::array<const char*, 56> kMeanings = {
    "Line of code",                                  // 0
    "System",                                        // 1
    "Computer: mainframe",                           // 2
    "Computer: midrange",                            // 3
    "Computer: rack server",                         // 4
    "Computer: tower server",                        // 5
    "Computer: workstation",                         // 6
    "Computer: laptop",                              // 7
    "Computer: terminal",                            // 8
    "Application: online",                           // 9
    "Application: batch",                            // 10
    "Grouping attribute, other",                     // 11
    "Package (TopDown)",                             // 12
    "Package (BottomUp)",                            // 13
    "Class (TopDown)",                               // 14
    "Class (BottomUp)",                              // 15
    "Screen map (TopDown)",                          // 16
    "Screen map (BottomUp)",                         // 17
    "Record layout (TopDown)",                       // 18
    "Record layout (BottomUp)",                      // 19
    "Persistent storage: database table (TopDown)",  // 20
    "Persistent storage: database table (BottomUp)", // 21
    "Copy member",                                   // 22
    "Line with a call (TopDown)",                    // 23
    "Line with a call (TopDown, light shade)",       // 24
    "Line with a call (TopDown, dark shade)",        // 25
    "Line making the call (BottomUp)",               // 26
    "Line making the call (BottomUp, light shade)",  // 27
    "Line making the call (BottomUp, dark shade)",   // 28
    "Entry (TopDown)",                               // 29
    "Entry (TopDown, light shade)",                  // 30
    "Entry (TopDown, dark shade)",                   // 31
    "Entry (BottomUp)",                              // 32
    "Entry (BottomUp, light shade)",                 // 33
    "Entry (BottomUp, dark shade)",                  // 34
    "Variable",                                      // 35
    "Variable (BottomUp)",                           // 36
    "Variable the data flows to",                    // 37
    "Variable fed by data flows",                    // 38
    "Function (TopDown)",                            // 39
    "Function (BottomUp)",                           // 40
    "Object, other kind (TopDown)",                  // 41
    "Object, other kind (BottomUp)",                 // 42
    "Persistent storage: data set (TopDown)",        // 43
    "Persistent storage: data set (BottomUp)",       // 44
    "Persistent-storage variable",                   // 45
    "Persistent-storage variable (BottomUp)",        // 46
    "Persistent-storage variable the data flows to", // 47
    "Persistent-storage variable fed by data flows", // 48
    "Computer listed among applications",            // 49
    "Object shown in its file (TopDown)",            // 50
    "Object shown in its file (BottomUp)",           // 51
    "Program (TopDown)",                             // 52
    "Program (BottomUp)",                            // 53
    "Nested program",                                // 54
    "Nested program (BottomUp)",                     // 55
};

// Sizes rendered into each QIcon, so that views pick a sharp picture at the
// usual tree, toolbar and high-DPI sizes instead of scaling one.
constexpr std::array<int, 5> kIconSizes = {16, 24, 32, 48, 64};

} // namespace

const TQXImageList& TQXImageList::Standard() {
    static const TQXImageList list;
    return list;
}

int TQXImageList::Count() const {
    return int(kMeanings.size());
}

QString TQXImageList::ResourcePath(int index) const {
    if (index < 0 || index >= Count())
        return {};
    return QStringLiteral(":/icons/%1.svg").arg(index, 2, 10, QLatin1Char('0'));
}

QString TQXImageList::Meaning(int index) const {
    if (index < 0 || index >= Count())
        return {};
    return QString::fromLatin1(kMeanings[std::size_t(index)]);
}

QPixmap TQXImageList::Pixmap(int index, int size) const {
    if (index < 0 || index >= Count() || size < 1)
        return {};
    const quint64 key = (quint64(quint32(index)) << 32) | quint32(size);
    auto cached = FPixmaps.constFind(key);
    if (cached != FPixmaps.constEnd())
        return *cached;

    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QSvgRenderer renderer(ResourcePath(index));
    if (renderer.isValid()) {
        QPainter painter(&image);
        renderer.render(&painter, QRectF(0, 0, size, size));
    }
    QPixmap pixmap = QPixmap::fromImage(image);
    FPixmaps.insert(key, pixmap);
    return pixmap;
}

QIcon TQXImageList::Icon(int index) const {
    if (index < 0 || index >= Count())
        return {};
    auto cached = FIcons.constFind(index);
    if (cached != FIcons.constEnd())
        return *cached;

    QIcon icon;
    for (int size : kIconSizes)
        icon.addPixmap(Pixmap(index, size));
    FIcons.insert(index, icon);
    return icon;
}
