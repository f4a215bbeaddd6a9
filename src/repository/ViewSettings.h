#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// The level a view's tree starts from ("View By"), in rank order: a level
// ranks below every level before it.
enum class TQXLevel { System, Computer, Application, Package, Object, Entry, Code, Data };

enum class TQXViewType { Distribution, Dependencies };

// TopDown follows what an item calls or contains, BottomUp what calls or
// contains it. The repository's numbers are 0 and 1.
enum class TQXDirection { TopDown = 0, BottomUp = 1 };

namespace level {

// The level names, as the view-by box and the menus show them, in rank order.
const QStringList& Names();
QString Name(TQXLevel level);
// The level of an exact name; none for any other text.
std::optional<TQXLevel> FromName(const QString& name);

// Systems, computers and applications: attributes that group files.
bool IsAttribute(TQXLevel level);

// "View: " + this is the hint line for the settings.
struct HintTexts {
    const char* Contains;   // Distribution TopDown; null: L + " contains"
    const char* PartOf;     // Distribution BottomUp; null: L + " is part of"
    const char* Uses;       // Dependencies TopDown; null: L + " uses " + L + "(s)"
    const char* Sequential; // Dependencies TopDown with the option box checked; null: as Uses
    const char* UsedBy;     // Dependencies BottomUp; null: L + " is used by " + L + "(s)"
};
const HintTexts& Hints(TQXLevel level);

} // namespace level

// A view's settings, read from its controls once per refresh or expansion
// and handed to the classes that do the work.
struct TQXViewSettings {
    TQXViewType Type = TQXViewType::Distribution;
    TQXDirection Direction = TQXDirection::TopDown;
    TQXLevel Level = TQXLevel::System;
    bool FilterOn = false;
    QString LimitText = QStringLiteral("100"); // the root-item limit box as it reads
    bool Option = false;                       // the option box, where it is shown

    bool IsDependencies() const { return Type == TQXViewType::Dependencies; }
    bool IsTopDown() const { return Direction == TQXDirection::TopDown; }
    // 0 for TopDown, 1 for BottomUp: the repository's direction numbers, and
    // the offset of a BottomUp picture from its TopDown twin.
    int DirectionNumber() const { return static_cast<int>(Direction); }
    // The limit box read as an integer; none when it is not one.
    std::optional<int> Limit() const;
    // The hint line's text after "View: ".
    QString UserHint() const;
    // The option box's caption when these settings show it: Dependencies
    // TopDown by Entry or by Object. `fromMenu` picks the menu's wording.
    std::optional<QString> OptionCaption(bool fromMenu) const;
};

// Text to integer as the limit box reads it: optional blanks and sign
// before decimal digits. None for anything else.
std::optional<int> ParseLimit(const QString& text);
// The message for a limit text that is not an integer.
QString LimitError(const QString& text);
