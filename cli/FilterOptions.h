#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class TQXView;

// The root-item filter as "korvane-cli tree" takes it: conditions written
// "ATTRIBUTE OPERATOR VALUE", joined by AND unless --or stands between two.
struct TQXFilterOptions {
    struct Condition {
        int Attribute = -1; // position in the filter dialog's list of attributes
        int Operator = -1;  // position in its list of operators
        QString Value;
        bool OrPrevious = false;
    };
    QList<Condition> Conditions;
    bool CaseSensitive = false;
    std::optional<bool> On; // --filter-on / --filter-off; unset: on when conditions are given

    bool Given() const { return !Conditions.isEmpty() || CaseSensitive || On.has_value(); }

    // "Objects Name begins with PAY": attribute and operator texts (any case)
    // and the value, as typed, each after one blank. Throws EQXUsageError
    // naming the valid texts.
    static Condition ParseCondition(const QString& text);
    // Whether each --filter in the arguments follows an --or; throws
    // EQXUsageError for an --or that does not stand between two filters.
    // `valueOptions` are the options that take a value.
    static QList<bool> OrBeforeEachFilter(const QStringList& arguments,
                                          const QStringList& valueOptions);

    // Fills the view's filter dialog (the view must be connected) with the
    // conditions, applies it without showing it and sets the filter on or off.
    void ApplyTo(TQXView& view) const;
};

// The filter the view's listing was made with.
struct TQXFilterInForce {
    struct Condition {
        QString Joint; // "AND" or "OR"; empty for the first
        QString Attribute;
        QString Operator;
        QString Value;
    };
    bool On = false;
    bool CaseSensitive = false;
    QList<Condition> Conditions;

    static TQXFilterInForce Of(const TQXView& view);
};
