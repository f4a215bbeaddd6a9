#include "EstateText.h"

#include <QFile>

#include <mutex>

// The resources of a static library are registered by hand.
static void RegisterEstateResources() {
    Q_INIT_RESOURCE(estate);
}

namespace {

const QString Prefix = QStringLiteral("Sample estate: ");

bool IsNameStart(QChar c) {
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z')) ||
           (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
}

// Replaces every {NAME} by NAME and the suffix; returns false for a "{"
// that starts a name but does not close it.
bool Substitute(QString& line, const QString& suffix) {
    QString result;
    qsizetype done = 0;
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        if (line[i] != QLatin1Char('{') || !IsNameStart(line[i + 1]))
            continue;
        qsizetype end = i + 1;
        while (end < line.size() && (IsNameStart(line[end]) || line[end] == QLatin1Char('-')))
            ++end;
        if (end == line.size() || line[end] != QLatin1Char('}'))
            return false;
        result += QStringView(line).mid(done, i - done);
        result += QStringView(line).mid(i + 1, end - i - 1);
        result += suffix;
        done = end + 1;
        i = end;
    }
    if (done > 0)
        line = result + line.mid(done);
    return true;
}

} // namespace

TEstateText TEstateText::Load(const QString& path, const QString& suffix) {
    static std::once_flag registered;
    std::call_once(registered, RegisterEstateResources);
    QFile file(QStringLiteral(":/estate/") + path);
    if (!file.open(QIODevice::ReadOnly))
        throw EQXError(Prefix + QStringLiteral("the resource estate/") + path +
                       QStringLiteral(" is missing"));
    return TEstateText(QStringLiteral("estate/") + path, QString::fromUtf8(file.readAll()), suffix);
}

TEstateText::TEstateText(const QString& name, const QString& text, const QString& suffix)
    : FName(name), FLines(text.split(QLatin1Char('\n'))) {
    if (!FLines.isEmpty() && FLines.back().isEmpty())
        FLines.removeLast();
    for (qsizetype i = 0; i < FLines.size(); ++i) {
        QString& line = FLines[i];
        qsizetype end = line.size();
        while (end > 0 && line[end - 1].isSpace())
            --end;
        line.truncate(end);
        if (!Substitute(line, suffix))
            throw Error(i, QStringLiteral("unclosed placeholder"));
    }
}

EQXError TEstateText::Error(qsizetype line, const QString& message) const {
    const QString reason = message.startsWith(Prefix) ? message.mid(Prefix.size()) : message;
    return EQXError(Prefix + FName + QStringLiteral(" line %1: ").arg(line + 1) + reason);
}
