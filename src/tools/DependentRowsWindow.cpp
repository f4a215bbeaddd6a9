#include "tools/DependentRowsWindow.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

TQXDependentRows::TQXDependentRows(QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowCloseButtonHint) {
    setObjectName(QStringLiteral("QXDependentRows"));
    setWindowTitle(QStringLiteral("Show Dependent Rows"));
    mmoRows = new QPlainTextEdit(this);
    mmoRows->setObjectName(QStringLiteral("mmoRows"));
    mmoRows->setReadOnly(true);
    mmoRows->setLineWrapMode(QPlainTextEdit::NoWrap);
    mmoRows->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    mmoRows->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mmoRows);
    resize(874, 187);
}

void TQXDependentRows::AddRow(const QString& text) {
    mmoRows->appendPlainText(text);
}

QStringList TQXDependentRows::Rows() const {
    const QString text = mmoRows->toPlainText();
    return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
}
