#include "formshow/FormShow.h"

#include "formshow/FormBuilder.h"
#include "repository/DataAccessInterface.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"

#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int ScreenLines = 24;
constexpr int ScreenColumns = 80;
// Room around the boxes inside the scrolled area.
constexpr int Margin = 20;

// The scrolled area behind the boxes: it outlines the terminal's 24 x 80
// screen (lines and columns count from 1) in a faint dashed line.
class TScreenArea final : public QWidget {
public:
    using QWidget::QWidget;

    static QRect ScreenRect() {
        return QRect(TQXFormBuilder::ColumnPixels, TQXFormBuilder::LinePixels,
                     ScreenColumns * TQXFormBuilder::ColumnPixels,
                     ScreenLines * TQXFormBuilder::LinePixels);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        QColor line = palette().color(QPalette::Mid);
        line.setAlpha(110);
        painter.setPen(QPen(line, 1, Qt::DashLine));
        painter.drawRect(ScreenRect().adjusted(-2, -2, 1, 1));
    }
};

} // namespace

TQXFormShow::TQXFormShow(QWidget* owner, TQXDataAccessInterface* dataAccess, const TQXItem& item)
    : QWidget(owner, Qt::Window) {
    setObjectName(QStringLiteral("QXFormShow"));
    resize(TQXFormBuilder::WindowWidth, TQXFormBuilder::WindowHeight);
    if (!dataAccess)
        throw EQXError(QStringLiteral("TQXFormShow: no data access"));
    FWords = dataAccess->OpenQuery(this, TQXFormBuilder::WordQuery(item), 0);
    if (!FWords)
        throw EQXError(QStringLiteral("TQXFormShow: the words of the map could not be read"));
    FLayout = TQXFormBuilder::Build(*FWords, *dataAccess, item, width());
    CreateBoxes();
}

TQXFormShow::~TQXFormShow() {
    if (FWords)
        FWords->Close();
}

QFont TQXFormShow::ScreenFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setStyleHint(QFont::Monospace);
    font.setPixelSize(15);
    // Each character takes one column's 10 pixels.
    const qreal advance = QFontMetricsF(font).horizontalAdvance(QLatin1Char('M'));
    if (advance > 0 && advance != TQXFormBuilder::ColumnPixels)
        font.setLetterSpacing(QFont::AbsoluteSpacing, TQXFormBuilder::ColumnPixels - advance);
    return font;
}

QString TQXFormShow::StatusText() const {
    return FStatus ? FStatus->text() : QString();
}

void TQXFormShow::CreateBoxes() {
    FScroll = new QScrollArea(this);
    FScroll->setObjectName(QStringLiteral("scrScreen"));
    FScroll->setWidgetResizable(false);
    FScreen = new TScreenArea;
    FScreen->setObjectName(QStringLiteral("plScreen"));

    const QFont font = ScreenFont();
    QRect extent = TScreenArea::ScreenRect();
    FBoxes.reserve(FLayout.Boxes.size());
    for (const TQXFormBox& shown : FLayout.Boxes) {
        auto* box = new QLineEdit(FScreen);
        box->setReadOnly(true);
        box->setFont(font);
        // Text starts right after the frame (Qt keeps 2 pixels beside it);
        // a literal's leading blank (where the terminal keeps the field's
        // attribute) goes under the frame, so that a constant as long as its
        // field shows whole.
        constexpr int LineEditMargin = 2;
        const int left = shown.Text.startsWith(QLatin1Char(' ')) ? TQXFormBuilder::ColumnPixels : 0;
        box->setTextMargins(-LineEditMargin - left, 0, -LineEditMargin, 0);
        box->setGeometry(shown.Left, shown.Top, shown.Width, shown.Height);
        box->setText(shown.Text);
        box->setCursorPosition(0);
        if (!shown.Hint.isEmpty())
            box->setToolTip(shown.Hint);
        if (shown.Constant) {
            QPalette palette = box->palette();
            palette.setColor(QPalette::Base, palette.color(QPalette::Button));
            box->setPalette(palette);
        }
        box->setFocusPolicy(Qt::ClickFocus);
        box->setHidden(!shown.Visible);
        if (shown.Visible)
            extent = extent.united(box->geometry());
        FBoxes.push_back(box);
    }
    FScreen->resize(extent.right() + Margin, extent.bottom() + Margin);
    FScroll->setWidget(FScreen);

    FStatus = new QLabel(FLayout.StatusText(), this);
    FStatus->setObjectName(QStringLiteral("lblStatus"));
    FStatus->setContentsMargins(6, 2, 6, 2);
    FStatus->setHidden(FStatus->text().isEmpty());

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(FScroll, 1);
    layout->addWidget(FStatus);
}
