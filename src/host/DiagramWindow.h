#pragma once

#include "host/DiagramLayout.h"

#include <QMainWindow>

class QScrollArea;
class TQXItems;

// The host's "Diagram" window: draws the tracks the views hand to it (see
// TQXDiagramLayout), zooms, and exports the drawing as SVG or PNG.
class TQXDiagramWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit TQXDiagramWindow(QWidget* parent = nullptr);
    ~TQXDiagramWindow() override;

    // The receiver of SendItemsToWindow("Diagram", ...): adds the items as
    // one more track; fills errorText when there is nothing to draw.
    void AddItems(const QString& connectionName, const TQXItems& items, const QString& command,
                  QString& errorText);
    void Clear();

    const TQXDiagramLayout& Layout() const { return FLayout; }
    double Zoom() const { return FZoom; }
    // Between 0.1 and 8; 1 draws one unit as one pixel.
    void SetZoom(double zoom);

    // Both write through a temporary file beside `path`; throw EQXError.
    void ExportSvg(const QString& path) const;
    void ExportPng(const QString& path) const;
    // Draws the diagram with its top left corner at the bounds' origin.
    void Paint(QPainter& painter) const;

private:
    class Canvas;

    void ExportAs(const QString& kind);
    void Changed();

    TQXDiagramLayout FLayout;
    double FZoom = 1.0;
    Canvas* FCanvas;      // owned by the scroll area
    QScrollArea* FScroll; // owned as the central widget
};
