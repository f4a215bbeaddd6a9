#include "formshow/FormLayout.h"

QString TQXFormLayout::StatusText() const {
    if (Unsupported)
        return QString();
    int shown = 0;
    for (const TQXFormBox& box : Boxes)
        shown += box.Visible ? 1 : 0;
    QString text = QString::number(shown) +
                   (shown == 1 ? QStringLiteral(" field shown") : QStringLiteral(" fields shown"));
    if (NotUnderstood.isEmpty())
        return text + QStringLiteral("; every operand understood");
    QStringList names;
    for (const QString& name : NotUnderstood)
        if (!names.contains(name))
            names << name;
    const qsizetype count = NotUnderstood.size();
    return text + QStringLiteral("; ") + QString::number(count) +
           (count == 1 ? QStringLiteral(" operand") : QStringLiteral(" operands")) +
           QStringLiteral(" not understood and skipped: ") + names.join(QStringLiteral(", "));
}
