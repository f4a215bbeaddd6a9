#include "host/DiagramWindow.h"

#include "host/Items.h"
#include "platform/ErrorDisplay.h"
#include "platform/ImageList.h"
#include "platform/UIServices.h"
#include "repository/Errors.h"

#include <QAction>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QSaveFile>
#include <QScrollArea>
#include <QStatusBar>
#include <QSvgGenerator>
#include <QToolBar>
#include <QWheelEvent>

#include <algorithm>

// The drawing at the window's zoom; Ctrl and the wheel zoom as well.
class TQXDiagramWindow::Canvas : public QWidget {
public:
    explicit Canvas(TQXDiagramWindow& window) : FWindow(window) {
        setAutoFillBackground(true);
        QPalette p = palette();
        p.setColor(QPalette::Window, Qt::white);
        setPalette(p);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(FWindow.Zoom(), FWindow.Zoom());
        FWindow.Paint(painter);
    }
    void wheelEvent(QWheelEvent* event) override {
        if (!(event->modifiers() & Qt::ControlModifier)) {
            event->ignore();
            return;
        }
        FWindow.SetZoom(FWindow.Zoom() * (event->angleDelta().y() > 0 ? 1.25 : 0.8));
        event->accept();
    }

private:
    TQXDiagramWindow& FWindow;
};

TQXDiagramWindow::TQXDiagramWindow(QWidget* parent)
    : QMainWindow(parent), FCanvas(new Canvas(*this)), FScroll(new QScrollArea(this)) {
    setObjectName(QStringLiteral("Diagram"));
    setWindowTitle(QStringLiteral("Korvane - Diagram"));
    FScroll->setWidget(FCanvas);
    FScroll->setBackgroundRole(QPalette::Base);
    setCentralWidget(FScroll);

    QToolBar* tools = addToolBar(QStringLiteral("Diagram"));
    tools->setObjectName(QStringLiteral("DiagramTools"));
    auto action = [this, tools](const char* name, const QString& caption, const QKeySequence& keys,
                                auto&& run) {
        QAction* item = tools->addAction(caption);
        item->setObjectName(QLatin1String(name));
        item->setShortcut(keys);
        connect(item, &QAction::triggered, this, [run] { RunReportingErrors(run); });
        return item;
    };
    action("ZoomIn1", tr("Zoom In"), QKeySequence::ZoomIn, [this] { SetZoom(FZoom * 1.25); });
    action("ZoomOut1", tr("Zoom Out"), QKeySequence::ZoomOut, [this] { SetZoom(FZoom * 0.8); });
    action("ActualSize1", tr("Actual Size"), QKeySequence(Qt::CTRL | Qt::Key_0),
           [this] { SetZoom(1.0); });
    tools->addSeparator();
    action("ExportSvg1", tr("Export SVG..."), QKeySequence(),
           [this] { ExportAs(QStringLiteral("svg")); });
    action("ExportPng1", tr("Export PNG..."), QKeySequence(),
           [this] { ExportAs(QStringLiteral("png")); });
    tools->addSeparator();
    action("Clear1", tr("Clear"), QKeySequence(), [this] { Clear(); });
    resize(900, 600);
    Changed();
}

TQXDiagramWindow::~TQXDiagramWindow() = default;

void TQXDiagramWindow::AddItems(const QString&, const TQXItems& items, const QString& command,
                                QString& errorText) {
    errorText.clear();
    if (items.Count() == 0) {
        errorText = tr("The Diagram got no items to draw");
        return;
    }
    FLayout.AddTrack(items, command);
    Changed();
}

void TQXDiagramWindow::Clear() {
    FLayout.Clear();
    Changed();
}

void TQXDiagramWindow::SetZoom(double zoom) {
    FZoom = std::clamp(zoom, 0.1, 8.0);
    Changed();
}

void TQXDiagramWindow::Changed() {
    const QRectF bounds = FLayout.Bounds();
    FCanvas->resize((bounds.size() * FZoom).toSize());
    FCanvas->update();
    statusBar()->showMessage(
        tr("%n track(s), zoom %1%", nullptr, FLayout.Tracks().size()).arg(qRound(FZoom * 100)));
}

void TQXDiagramWindow::Paint(QPainter& painter) const {
    const QRectF bounds = FLayout.Bounds();
    painter.save();
    painter.translate(-bounds.topLeft());
    painter.fillRect(bounds, Qt::white);
    QFont font = painter.font();
    font.setPixelSize(12);
    painter.setFont(font);

    // Edges from the bottom of a parent to the top of its child.
    painter.setPen(QPen(QColor(0x55, 0x55, 0x55), 1.2));
    const auto& nodes = FLayout.Nodes();
    for (const TQXDiagramLayout::Edge& edge : FLayout.Edges()) {
        const QRectF from = nodes[edge.From].Box;
        const QRectF to = nodes[edge.To].Box;
        const QPointF start(from.center().x(), from.bottom());
        const QPointF end(to.center().x(), to.top());
        QPainterPath path(start);
        const qreal middle = (start.y() + end.y()) / 2;
        path.cubicTo(QPointF(start.x(), middle), QPointF(end.x(), middle), end);
        painter.drawPath(path);
        painter.drawLine(end, end + QPointF(-4, -6));
        painter.drawLine(end, end + QPointF(4, -6));
    }

    const TQXImageList& images = TQXImageList::Standard();
    for (const TQXDiagramLayout::Node& node : nodes) {
        painter.setPen(QPen(QColor(0x2b, 0x57, 0x97), 1));
        painter.setBrush(QColor(0xee, 0xf3, 0xfa));
        painter.drawRoundedRect(node.Box, 4, 4);
        if (node.Icon >= 0 && node.Icon < images.Count())
            images.Icon(node.Icon).paint(&painter,
                                         QRect(node.Box.left() + 6, node.Box.top() + 6, 16, 16));
        painter.setPen(Qt::black);
        const QRectF text = node.Box.adjusted(26, 0, -6, 0);
        painter.drawText(text, Qt::AlignVCenter | Qt::AlignLeft,
                         painter.fontMetrics().elidedText(node.Text.trimmed(), Qt::ElideRight,
                                                          int(text.width())));
    }

    painter.setPen(QColor(0x66, 0x66, 0x66));
    int number = 0;
    for (const TQXDiagramLayout::Track& track : FLayout.Tracks())
        painter.drawText(
            QRectF(track.Frame.left(), track.Frame.top() - TQXDiagramLayout::CaptionHeight,
                   std::max<qreal>(track.Frame.width(), 200), TQXDiagramLayout::CaptionHeight - 4),
            Qt::AlignLeft | Qt::AlignBottom, tr("Track %1: %2").arg(++number).arg(track.Caption));
    painter.restore();
}

void TQXDiagramWindow::ExportSvg(const QString& path) const {
    const QRectF bounds = FLayout.Bounds();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw EQXError(tr("Could not export the Diagram to %1: %2").arg(path, file.errorString()));
    QSvgGenerator svg;
    svg.setOutputDevice(&file);
    svg.setSize(bounds.size().toSize());
    svg.setViewBox(QRectF(QPointF(0, 0), bounds.size()));
    svg.setTitle(windowTitle());
    {
        QPainter painter(&svg);
        painter.setRenderHint(QPainter::Antialiasing);
        Paint(painter);
    }
    if (!file.commit())
        throw EQXError(tr("Could not export the Diagram to %1: %2").arg(path, file.errorString()));
}

void TQXDiagramWindow::ExportPng(const QString& path) const {
    const QRectF bounds = FLayout.Bounds();
    QImage image((bounds.size() * FZoom).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(FZoom, FZoom);
        Paint(painter);
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !image.save(&file, "PNG") || !file.commit())
        throw EQXError(tr("Could not export the Diagram to %1: %2").arg(path, file.errorString()));
}

void TQXDiagramWindow::ExportAs(const QString& kind) {
    const QString filter = kind == QLatin1String("svg") ? tr("SVG drawings (*.svg)|*.svg")
                                                        : tr("PNG pictures (*.png)|*.png");
    const QString path = TQXUIServices::Current().SaveFileName(
        this, tr("Export Diagram"), filter, QStringLiteral("diagram.") + kind, kind);
    if (path.isEmpty())
        return;
    if (kind == QLatin1String("svg"))
        ExportSvg(path);
    else
        ExportPng(path);
}
