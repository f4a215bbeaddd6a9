#include "FilterOptions.h"

#include "UsageError.h"

#include "filter/FilterChoices.h"
#include "filter/FilterDialog.h"
#include "view/View.h"

#include <QCheckBox>
#include <QRadioButton>

namespace {

// The canonical text among `texts` that `given` begins with, followed by a
// blank; the rest after that blank goes to `rest`. Longer texts are tried
// first, so that no text is taken for a shorter one it begins with.
std::optional<int> Leading(const QString& given, const QStringList& texts, QString& rest) {
    std::optional<int> found;
    for (int i = 0; i < texts.size(); ++i) {
        const QString& text = texts.at(i);
        if (given.size() > text.size() && given.at(text.size()) == QLatin1Char(' ') &&
            given.startsWith(text, Qt::CaseInsensitive) &&
            (!found || text.size() > texts.at(*found).size()))
            found = i;
    }
    if (found)
        rest = given.mid(texts.at(*found).size() + 1);
    return found;
}

QString Listed(const QStringList& texts) {
    return QLatin1Char('\'') + texts.join(QStringLiteral("', '")) + QLatin1Char('\'');
}

} // namespace

TQXFilterOptions::Condition TQXFilterOptions::ParseCondition(const QString& text) {
    const QString given = QStringLiteral("--filter '") + text + QStringLiteral("': ");
    QString afterAttribute;
    const std::optional<int> attribute =
        Leading(text, filterchoice::AttributeTexts(), afterAttribute);
    if (!attribute)
        throw EQXUsageError(given + QStringLiteral("no attribute, which is one of: ") +
                            Listed(filterchoice::AttributeTexts()));
    QString value;
    const std::optional<int> op = Leading(afterAttribute, filterchoice::OperatorTexts(), value);
    if (!op)
        throw EQXUsageError(given +
                            QStringLiteral("no operator after the attribute, which is "
                                           "one of: ") +
                            Listed(filterchoice::OperatorTexts()));
    if (value.isEmpty())
        throw EQXUsageError(given + QStringLiteral("at least one character is required for the "
                                                   "value"));
    Condition condition;
    condition.Attribute = *attribute;
    condition.Operator = *op;
    condition.Value = value;
    return condition;
}

QList<bool> TQXFilterOptions::OrBeforeEachFilter(const QStringList& arguments,
                                                 const QStringList& valueOptions) {
    QList<bool> orBefore;
    bool pendingOr = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument == QLatin1String("--"))
            break;
        if (!argument.startsWith(QLatin1Char('-')))
            continue;
        QString name = argument.mid(argument.startsWith(QLatin1String("--")) ? 2 : 1);
        const bool inlineValue = name.contains(QLatin1Char('='));
        name = name.section(QLatin1Char('='), 0, 0);
        if (name == QLatin1String("or")) {
            if (orBefore.isEmpty() || pendingOr)
                throw EQXUsageError(QStringLiteral("--or must stand between two --filter options"));
            pendingOr = true;
            continue;
        }
        if (name == QLatin1String("filter")) {
            orBefore << pendingOr;
            pendingOr = false;
        }
        if (valueOptions.contains(name) && !inlineValue)
            ++i; // the value, whatever it looks like
    }
    if (pendingOr)
        throw EQXUsageError(QStringLiteral("--or must stand between two --filter options"));
    return orBefore;
}

void TQXFilterOptions::ApplyTo(TQXView& view) const {
    TQXFilter* filter = view.Filter();
    if (!filter)
        throw EQXError(QStringLiteral("The view has no filter: it is not connected"));
    for (qsizetype i = 0; i < Conditions.size(); ++i) {
        const Condition& condition = Conditions.at(i);
        const int joint = i == 0 ? 0 : (condition.OrPrevious ? 2 : 1);
        filter->AddFilterRow(condition.Attribute, condition.Operator, condition.Value, joint);
    }
    filter->cbCaseSensitive->setChecked(CaseSensitive);
    filter->cbApplyClick();
    const bool on = On.value_or(!Conditions.isEmpty());
    (on ? view.rbFilterOn : view.rbFilterOff)->setChecked(true);
}

TQXFilterInForce TQXFilterInForce::Of(const TQXView& view) {
    TQXFilterInForce inForce;
    inForce.On = view.rbFilterOn->isChecked();
    const TQXFilter* filter = view.Filter();
    if (!filter)
        return inForce;
    inForce.CaseSensitive = filter->CaseSensitive();
    const TQXWhereClause& clause = filter->WhereClause();
    for (int i = 0; i < clause.Count(); ++i) {
        Condition condition;
        if (i > 0)
            condition.Joint =
                clause.GetAnd_Previous(i) ? QStringLiteral("AND") : QStringLiteral("OR");
        for (const filterchoice::Attribute& attribute : filterchoice::Attributes()) {
            const TQXTableRef table = clause.GetTable(i);
            const TQXFieldRef field = clause.GetField(i);
            if (table && field &&
                table->TableName().compare(QLatin1String(qx::TableName(attribute.Table)),
                                           Qt::CaseInsensitive) == 0 &&
                field->Name.compare(QLatin1String(attribute.Column), Qt::CaseInsensitive) == 0 &&
                clause.GetTypeKey(i) == attribute.TypeKey)
                condition.Attribute = QLatin1String(attribute.Text);
        }
        condition.Operator = filterchoice::OperatorText(clause.GetOperator(i));
        condition.Value = clause.GetValueString(i);
        inForce.Conditions << condition;
    }
    return inForce;
}
