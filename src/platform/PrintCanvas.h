#pragma once

#include <QString>

// A printer page as the print commands see it: text written at positions in
// printer units, the page height, and page breaks.
class TQXPrintCanvas {
public:
    virtual ~TQXPrintCanvas() = default;

    virtual void TextOut(int x, int y, const QString& text) = 0;
    virtual int PageHeight() const = 0;
    virtual void NewPage() = 0;
};
