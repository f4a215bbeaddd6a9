#pragma once

#include "platform/PrintCanvas.h"

#include <QPainter>

class QPrinter;

// A print canvas on a real printer, in the printer's device units. The
// document starts with the canvas and ends when it is destroyed.
class TQXPrinterCanvas final : public TQXPrintCanvas {
public:
    explicit TQXPrinterCanvas(QPrinter& printer);
    ~TQXPrinterCanvas() override;

    void TextOut(int x, int y, const QString& text) override;
    int PageHeight() const override;
    void NewPage() override;

private:
    QPrinter& FPrinter;
    QPainter FPainter;
};
