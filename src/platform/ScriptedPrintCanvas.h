#pragma once

#include "platform/PrintCanvas.h"

#include <QList>

// A print canvas that records what is written, page by page, for tests and
// for runs without a printer.
class TQXScriptedPrintCanvas final : public TQXPrintCanvas {
public:
    struct Text {
        int Page = 0;
        int X = 0;
        int Y = 0;
        QString Value;
    };

    explicit TQXScriptedPrintCanvas(int pageHeight) : FPageHeight(pageHeight) {}

    void TextOut(int x, int y, const QString& text) override { FTexts.append({FPage, x, y, text}); }
    int PageHeight() const override { return FPageHeight; }
    void NewPage() override { ++FPage; }

    const QList<Text>& Texts() const { return FTexts; }
    int PageCount() const { return FPage + 1; }

private:
    int FPageHeight;
    int FPage = 0;
    QList<Text> FTexts;
};
