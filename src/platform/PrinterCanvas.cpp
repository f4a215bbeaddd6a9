#include "platform/PrinterCanvas.h"

#include <QFontMetrics>
#include <QPrinter>

TQXPrinterCanvas::TQXPrinterCanvas(QPrinter& printer) : FPrinter(printer), FPainter(&printer) {}

TQXPrinterCanvas::~TQXPrinterCanvas() {
    FPainter.end();
}

void TQXPrinterCanvas::TextOut(int x, int y, const QString& text) {
    // Positions name the top-left corner of the text.
    FPainter.drawText(x, y + FPainter.fontMetrics().ascent(), text);
}

int TQXPrinterCanvas::PageHeight() const {
    return FPrinter.pageLayout().paintRectPixels(FPrinter.resolution()).height();
}

void TQXPrinterCanvas::NewPage() {
    FPrinter.newPage();
}
