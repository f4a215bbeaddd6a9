// The host's diagram window: tracks laid out top-down in layers, side by
// side, edges from parent to child only where the parent came along, zoom,
// and the SVG and PNG exports.
#include "host/DiagramWindow.h"
#include "host/Items.h"
#include "repository/Errors.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Entries as a view hands a track over: text, level, parent text.
TQXItems Track(const QList<std::tuple<QString, int, QString>>& entries) {
    TQXItems items;
    for (const auto& [text, level, parentText] : entries) {
        items.AddItem(1, 0, 0, 0, 0, 1, 0, 0, 0);
        items.AddText(text);
        items.AddLevel(level);
        const bool none = parentText.isEmpty();
        items.AddParentText(none ? QStringLiteral("        No Parent        ") : parentText);
        items.AddParentFileID(none ? -1 : 1);
        items.AddIcon(52);
    }
    return items;
}

} // namespace

class TestDiagram : public QObject {
    Q_OBJECT

private slots:
    void layoutAndExports() {
        TQXDiagramWindow window;
        QString error;
        window.AddItems("estate", TQXItems(), "DependenciesTopDown", error);
        QCOMPARE(error, "The Diagram got no items to draw");

        window.AddItems("estate",
                        Track({{"MAIN [Program]", 2, ""},
                               {"ZETA [Program]", 3, "MAIN [Program]"},
                               {"IO [Program]", 4, "ZETA [Program]"},
                               {"SUM [Program]", 3, "MAIN [Program]"},
                               {"LOOSE [Program]", 5, ""}}),
                        "DependenciesTopDown", error);
        window.AddItems("estate",
                        Track({{"BETA [Class]", 0, ""}, {"MAIN [Program]", 1, "BETA [Class]"}}),
                        "DistributionBottomUp", error);
        QCOMPARE(error, QString());
        const TQXDiagramLayout& layout = window.Layout();
        const auto& n = layout.Nodes();
        QCOMPARE(n.size(), 7);
        QCOMPARE(layout.Edges().size(), 4); // LOOSE has no parent
        // Layers by level from the track's top; the parent over its children.
        QCOMPARE(n[1].Box.top(), n[3].Box.top());
        QVERIFY(n[2].Box.top() > n[1].Box.top() && n[1].Box.top() > n[0].Box.top());
        QCOMPARE(n[4].Box.top() - n[0].Box.top(), 3 * (n[1].Box.top() - n[0].Box.top()));
        QCOMPARE(n[0].Box.center().x(), (n[1].Box.center().x() + n[3].Box.center().x()) / 2);
        QVERIFY(n[1].Box.right() < n[3].Box.left());
        // The second track to the right of the first.
        QCOMPARE(layout.Tracks().size(), 2);
        QVERIFY(layout.Tracks()[1].Frame.left() > layout.Tracks()[0].Frame.right());
        QCOMPARE(n[5].Box.top(), n[0].Box.top());

        window.SetZoom(100);
        QCOMPARE(window.Zoom(), 8.0);
        window.SetZoom(2);
        QTemporaryDir dir;
        window.ExportSvg(dir.filePath("d.svg"));
        window.ExportPng(dir.filePath("d.png"));
        QFile svg(dir.filePath("d.svg"));
        QVERIFY(svg.open(QIODevice::ReadOnly));
        const QByteArray drawing = svg.readAll();
        QVERIFY(drawing.contains("<svg") && drawing.contains("ZETA [Program]") &&
                drawing.contains("Track 2: DistributionBottomUp"));
        const QImage png(dir.filePath("d.png"));
        QCOMPARE(png.size(), (layout.Bounds().size() * 2).toSize());
        QVERIFY_THROWS_EXCEPTION(EQXError, window.ExportSvg(dir.filePath("no/such/d.svg")));
    }
};

QTEST_MAIN(TestDiagram)
#include "tst_Diagram.moc"
