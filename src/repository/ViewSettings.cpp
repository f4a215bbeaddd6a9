#include "repository/ViewSettings.h"

#include <array>

namespace {

struct LevelRow {
    TQXLevel Level;
    const char* Name;
    level::HintTexts Hints;
};

// The one table of levels: names in rank order and the hints that replace
// the composed ones.
const std::array<LevelRow, 8> Levels{{
    {TQXLevel::System, "System", {nullptr, "System", nullptr, nullptr, nullptr}},
    {TQXLevel::Computer, "Computer", {}},
    {TQXLevel::Application, "Application", {}},
    {TQXLevel::Package, "Package", {}},
    {TQXLevel::Object,
     "Object",
     {nullptr, nullptr, nullptr, "Object uses Object(s), in order of use", nullptr}},
    {TQXLevel::Entry,
     "Entry",
     {nullptr, nullptr, nullptr, "Entrys in order of execution, call TO other Entry(s)", nullptr}},
    {TQXLevel::Code,
     "Code",
     {"Lines of Code (execution order can not be trusted)", "Line of Code is part of",
      "Lines of Code in order of execution, call TO other Entry(s)", nullptr,
      "Lines of Code in order of execution, called FROM other Entry(s)"}},
    {TQXLevel::Data,
     "Data",
     {"Variable Declarations (persistent storage has green icons)",
      "Variable Declaration is part of (persistent storage has green icons)",
      "Dataflow TO other Variable(s) and Line of Code where flow is executed (persistent storage "
      "has green icons)",
      nullptr,
      "Dataflow FROM other Variable(s) and Line of Code where flow is executed (persistent storage "
      "has green icons)"}},
}};

const LevelRow& Row(TQXLevel level) {
    return Levels[static_cast<std::size_t>(level)];
}

} // namespace

const QStringList& level::Names() {
    static const QStringList names = [] {
        QStringList list;
        for (const LevelRow& row : Levels)
            list << QLatin1String(row.Name);
        return list;
    }();
    return names;
}

QString level::Name(TQXLevel level) {
    return QLatin1String(Row(level).Name);
}

std::optional<TQXLevel> level::FromName(const QString& name) {
    for (const LevelRow& row : Levels)
        if (name == QLatin1String(row.Name))
            return row.Level;
    return std::nullopt;
}

bool level::IsAttribute(TQXLevel level) {
    return level == TQXLevel::System || level == TQXLevel::Computer ||
           level == TQXLevel::Application;
}

const level::HintTexts& level::Hints(TQXLevel level) {
    return Row(level).Hints;
}

std::optional<int> ParseLimit(const QString& text) {
    const QString trimmed = text.trimmed();
    bool ok = false;
    const int value = trimmed.toInt(&ok, 10);
    if (!ok || trimmed.isEmpty())
        return std::nullopt;
    return value;
}

QString LimitError(const QString& text) {
    return QLatin1Char('\'') + text + QStringLiteral("' is not a valid integer value");
}

std::optional<int> TQXViewSettings::Limit() const {
    return ParseLimit(LimitText);
}

QString TQXViewSettings::UserHint() const {
    const level::HintTexts& hints = level::Hints(Level);
    const QString name = level::Name(Level);
    auto pick = [](const char* text, const QString& composed) {
        return text != nullptr ? QString::fromLatin1(text) : composed;
    };
    if (!IsDependencies())
        return IsTopDown() ? pick(hints.Contains, name + QStringLiteral(" contains"))
                           : pick(hints.PartOf, name + QStringLiteral(" is part of"));
    if (!IsTopDown())
        return pick(hints.UsedBy,
                    name + QStringLiteral(" is used by ") + name + QStringLiteral("(s)"));
    const QString uses =
        pick(hints.Uses, name + QStringLiteral(" uses ") + name + QStringLiteral("(s)"));
    return Option ? pick(hints.Sequential, uses) : uses;
}

std::optional<QString> TQXViewSettings::OptionCaption(bool fromMenu) const {
    if (!IsDependencies() || !IsTopDown())
        return std::nullopt;
    if (Level == TQXLevel::Entry)
        return QStringLiteral("Show Entrys sequentially");
    if (Level == TQXLevel::Object)
        return fromMenu ? QStringLiteral("Show Object sequentially")
                        : QStringLiteral("Show Objects sequentially");
    return std::nullopt;
}
