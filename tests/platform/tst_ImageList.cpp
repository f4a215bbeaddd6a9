#include "platform/ImageList.h"

#include <QColor>
#include <QImage>
#include <QtTest>

namespace {

const TQXImageList& List() {
    return TQXImageList::Standard();
}

QImage Render(int index, int size) {
    return List().Pixmap(index, size).toImage().convertToFormat(QImage::Format_ARGB32);
}

int OpaquePixels(const QImage& image) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 128;
    return count;
}

// Pixels whose colour differs noticeably, so that near-identical pictures
// count as the same.
int DifferentPixels(const QImage& a, const QImage& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            const int d = qAbs(qRed(p) - qRed(q)) + qAbs(qGreen(p) - qGreen(q)) +
                          qAbs(qBlue(p) - qBlue(q)) + qAbs(qAlpha(p) - qAlpha(q));
            count += d > 48;
        }
    return count;
}

} // namespace

class TestImageList : public QObject {
    Q_OBJECT

private slots:
    // Every index renders a picture of its own at every size.
    void everyIndexRendersADistinctPicture() {
        QCOMPARE(List().Count(), 56);
        for (int i = 0; i < List().Count(); ++i) {
            for (int size : {16, 32}) {
                const QImage image = Render(i, size);
                QCOMPARE(image.size(), QSize(size, size));
                // A real picture covers a good part of its square.
                QVERIFY2(OpaquePixels(image) >= size * size / 5,
                         qPrintable(QStringLiteral("index %1 at %2 px").arg(i).arg(size)));
                for (int j = i + 1; j < List().Count(); ++j)
                    QVERIFY2(DifferentPixels(image, Render(j, size)) >= size,
                             qPrintable(QStringLiteral("%1 and %2 at %3 px look alike")
                                            .arg(i)
                                            .arg(j)
                                            .arg(size)));
            }
        }
    }

    // A TopDown picture and its BottomUp twin share everything but the
    // direction badge in the lower right corner.
    void twinsDifferOnlyInTheBadge() {
        const QList<QPair<int, int>> twins = {{12, 13}, {14, 15}, {16, 17}, {18, 19}, {20, 21},
                                              {23, 26}, {24, 27}, {25, 28}, {29, 32}, {30, 33},
                                              {31, 34}, {39, 40}, {41, 42}, {43, 44}, {50, 51},
                                              {52, 53}, {35, 36}, {45, 46}, {54, 55}};
        for (const auto& [down, up] : twins) {
            const QImage a = Render(down, 32), b = Render(up, 32);
            for (const QRect& kept : {QRect(0, 0, 32, 14), QRect(0, 0, 16, 32)})
                QVERIFY2(a.copy(kept) == b.copy(kept),
                         qPrintable(QStringLiteral("%1 / %2").arg(down).arg(up)));
        }
    }

    void persistentStorageIsGreen() {
        for (int i : {20, 21, 43, 44, 45, 46, 47, 48}) {
            const QImage image = Render(i, 32);
            int green = 0, other = 0;
            for (int y = 0; y < 32; ++y)
                for (int x = 0; x < 32; ++x) {
                    const QColor c = QColor::fromRgba(image.pixel(x, y));
                    if (c.alpha() < 128 || c.saturation() < 60)
                        continue;
                    (c.hue() >= 90 && c.hue() <= 150 ? green : other)++;
                }
            QVERIFY2(green > other, qPrintable(QString::number(i)));
        }
    }

    void outOfRangeGivesNothing() {
        for (int i : {-1, 56})
            QVERIFY(List().Icon(i).isNull() && List().Pixmap(i, 16).isNull());
        QVERIFY(List().Pixmap(0, 0).isNull());
    }
};

QTEST_MAIN(TestImageList)
#include "tst_ImageList.moc"
