#include "formshow/FormBuilder.h"

#include "repository/DataAccessInterface.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"

#include <optional>

namespace {

constexpr int LiteralWord = 1001;
constexpr int LabelWord = 1011;
// The counter after PICOUT: no literal is shown until the next reset.
constexpr int PictureCounter = 10000;

// Positions of the word query's fields.
enum { WordField = 0, TypeField = 1, RowField = 2, LanguageField = 3 };

// The current word of the word query.
struct TWord {
    QString Text;
    int Type = 0;
    qint32 Row = 0;
};

TWord Current(const TQXDataSet& words) {
    TWord word;
    word.Text = VariantToText(words.FieldValue(WordField));
    word.Type = RecordInt(words.FieldValue(TypeField), QStringLiteral("QXWORD"),
                          QStringLiteral("QXWordType"), &words);
    word.Row = RecordInt(words.FieldValue(RowField), QStringLiteral("QXWORD"),
                         QStringLiteral("QXRowID"), &words);
    return word;
}

std::optional<int> Integer(const QString& text) {
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok ? std::optional<int>(value) : std::nullopt;
}

// What both builders share: the boxes, the position counter with the
// keyword that last reset it, and the operand each word belongs to (the
// word before the last "="), for the words that are skipped.
class TBuildState {
public:
    // `keywords`: the operands the builder understands; a word skipped in
    // one of them is punctuation between operands, not an operand of its own.
    TBuildState(TQXDataSet& words, QStringList keywords)
        : FWords(words), FKeywords(std::move(keywords)) {}

    TQXDataSet& Words() { return FWords; }
    TQXFormLayout& Layout() { return FLayout; }
    TQXFormBox* Box() { return FLayout.Boxes.empty() ? nullptr : &FLayout.Boxes.back(); }
    int Counter() const { return FCounter; }
    const QString& ResetBy() const { return FResetBy; }

    void Reset(const QString& keyword, int counter = 0) {
        FCounter = counter;
        FResetBy = keyword;
    }
    // A box whose text is still empty when the next begins is hidden.
    void NewBox(const QString& keyword) {
        HideIfEmpty();
        FLayout.Boxes.emplace_back();
        FOperandName = keyword;
        ++FOperand;
    }
    void HideIfEmpty() {
        if (TQXFormBox* box = Box(); box && box->Text.isEmpty())
            box->Visible = false;
    }
    // Notes the operand that a word belongs to, before the rules see it.
    void See(const TWord& word) {
        if (word.Text == QLatin1String("=") && !FPrevious.isEmpty()) {
            ++FOperand;
            FOperandName = FPrevious;
        }
        FPrevious = word.Text;
    }

    // The value of a counted position: the number times `scale`, or nothing
    // for a word that is not a number. That raises the conversion error when
    // `strict`; otherwise the word's operand is counted as not understood,
    // unless a later rule takes the word after all (Taken).
    std::optional<int> Number(const TWord& word, int scale, bool strict) {
        if (const std::optional<int> value = Integer(word.Text))
            return *value * scale;
        if (strict)
            throw EQXError(QLatin1Char('\'') + word.Text +
                           QStringLiteral("' is not a valid integer value for ") + FResetBy +
                           QStringLiteral(" (QXRowID ") + QString::number(word.Row) +
                           QLatin1Char(')'));
        FSkipped = true;
        return std::nullopt;
    }
    void Taken() { FSkipped = false; }
    // After the rules: a word skipped and taken by no later rule, in an
    // operand the builder does not know.
    void Settle() {
        if (FSkipped && !FKeywords.contains(FOperandName))
            NotUnderstood();
        FSkipped = false;
    }
    // The current operand was not understood (counted once).
    void NotUnderstood() {
        if (FOperand == FRecordedOperand)
            return;
        FLayout.NotUnderstood << FOperandName;
        FRecordedOperand = FOperand;
    }

    // Step to the next word, adding 1 to the counter.
    void Advance() {
        if (!FWords.Eof())
            FWords.Next();
        ++FCounter;
    }

private:
    TQXDataSet& FWords;
    const QStringList FKeywords;
    TQXFormLayout FLayout;
    int FCounter = 0;
    QString FResetBy;
    QString FPrevious;
    QString FOperandName;
    int FOperand = 0;
    int FRecordedOperand = -1;
    bool FSkipped = false;
};

// A VisualAge constant's text: its row's text without blanks around it and
// without its first character (the "."); empty when the row is not found.
QString ConstantText(TQXDataAccessInterface& dataAccess, const TQXItem& item, qint32 row) {
    TQXTableRef rows = dataAccess.GetTableRef(QStringLiteral("QXRow"));
    if (!dataAccess.SelectRecords(rows, QStringLiteral("QXFileID = ") + where::Number(item.FileID) +
                                            QStringLiteral(" AND QXRowID = ") + where::Number(row)))
        return QString();
    const QString text = VariantToText(
        dataAccess.GetFieldValue(rows, dataAccess.GetFieldRef(rows, QStringLiteral("QXRow"))));
    return text.trimmed().mid(1).trimmed();
}

} // namespace

const QString TQXFormBuilder::VisualAgeLanguage = QStringLiteral("20500");
const QString TQXFormBuilder::BmsLanguage = QStringLiteral("20525");
const QString TQXFormBuilder::UnsupportedText =
    QStringLiteral("FormViewer does not support this objects Language");

QStringList TQXFormBuilder::WordQuery(const TQXItem& item) {
    return {QStringLiteral("SELECT QXWord, QXWordType, QXRowID, QXLanguageID FROM QXWORD WHERE "),
            QStringLiteral(" QXFileID = ") + where::Number(item.FileID) +
                QStringLiteral(" AND QXObjectID = ") + where::Number(item.ObjectID),
            QStringLiteral(" ORDER BY QXRowID, QXWordID")};
}

TQXFormLayout TQXFormBuilder::Build(TQXDataSet& words, TQXDataAccessInterface& dataAccess,
                                    const TQXItem& item, int windowWidth) {
    words.First();
    // An object without words has no language: it is not supported either.
    const QString language =
        words.Eof() ? QString() : words.FieldValue(LanguageField).toString().trimmed();
    if (language == VisualAgeLanguage)
        return VAG45_BuildForm(words, dataAccess, item);
    if (language == BmsLanguage)
        return BMS_BuildForm(words, dataAccess, item);
    TQXFormLayout layout;
    layout.Unsupported = true;
    TQXFormBox box;
    box.Left = 20;
    box.Top = 80;
    box.Width = windowWidth - 50;
    box.Text = UnsupportedText;
    box.Constant = true;
    layout.Boxes.push_back(box);
    return layout;
}

TQXFormLayout TQXFormBuilder::VAG45_BuildForm(TQXDataSet& words, TQXDataAccessInterface& dataAccess,
                                              const TQXItem& item) {
    TBuildState state(words, {QStringLiteral("row"), QStringLiteral("column"),
                              QStringLiteral("bytes"), QStringLiteral("name")});
    while (!words.Eof()) {
        const TWord word = Current(words);
        state.See(word);
        if (word.Text == QLatin1String("row")) {
            state.NewBox(word.Text);
            state.Reset(word.Text);
        } else if (word.Text == QLatin1String("column") || word.Text == QLatin1String("bytes") ||
                   word.Text == QLatin1String("name")) {
            state.Reset(word.Text);
        }
        if (TQXFormBox* box = state.Box()) {
            const int counter = state.Counter();
            // The values of row, column and bytes must be numbers; a value
            // that follows another keyword may go on to be the text.
            const bool strict = state.ResetBy() != QLatin1String("name");
            bool taken = false;
            if (box->Top == 0 && counter == 2) {
                const auto top = state.Number(word, LinePixels, strict);
                taken = top.has_value();
                box->Top = top.value_or(0);
            }
            if (!taken && box->Left == 0 && counter == 2) {
                const auto left = state.Number(word, ColumnPixels, strict);
                taken = left.has_value();
                box->Left = left.value_or(0);
            }
            if (!taken && box->Width == 0 && counter == 2) {
                const auto width = state.Number(word, ColumnPixels, strict);
                taken = width.has_value();
                box->Width = width.value_or(0);
            }
            if (!taken && box->Text.isEmpty() && counter == 2) {
                box->Text = word.Text;
                box->Hint = word.Text;
                state.Taken();
            } else if (!taken && box->Text.isEmpty() && counter == 3 &&
                       word.Text == QLatin1String(".")) {
                // A constant: its text is the rest of its row. The words of
                // the row are passed over, and with them (by the step
                // below) the first word of the next row.
                box->Constant = true;
                box->Text = ConstantText(dataAccess, item, word.Row);
                while (!words.Eof() && Current(words).Row == word.Row)
                    words.Next();
            }
            state.Settle();
        }
        state.Advance();
    }
    state.HideIfEmpty();
    return std::move(state.Layout());
}

TQXFormLayout TQXFormBuilder::BMS_BuildForm(TQXDataSet& words, TQXDataAccessInterface& dataAccess,
                                            const TQXItem& item) {
    Q_UNUSED(dataAccess);
    Q_UNUSED(item);
    TBuildState state(words,
                      {QStringLiteral("DFHMDF"), QStringLiteral("POS"), QStringLiteral("LENGTH"),
                       QStringLiteral("INITIAL"), QStringLiteral("PICOUT")});
    std::optional<QString> label;
    while (!words.Eof()) {
        const TWord word = Current(words);
        state.See(word);
        if (word.Type == LabelWord) {
            label = word.Text;
        } else if (word.Text == QLatin1String("DFHMDF")) {
            state.NewBox(word.Text);
            if (label) {
                state.Box()->Text = *label;
                state.Box()->Hint = *label;
                label.reset();
            }
            state.Reset(word.Text);
        } else if (word.Text == QLatin1String("POS") || word.Text == QLatin1String("LENGTH") ||
                   word.Text == QLatin1String("INITIAL")) {
            state.Reset(word.Text);
        } else if (word.Text == QLatin1String("PICOUT")) {
            state.Reset(word.Text, PictureCounter);
        }
        if (TQXFormBox* box = state.Box()) {
            const int counter = state.Counter();
            // POS's line and column must be numbers; LENGTH's value is
            // ignored when it is not one.
            const bool afterPos = state.ResetBy() == QLatin1String("POS");
            bool taken = false;
            if (box->Top == 0 && counter == 3) {
                const auto top = state.Number(word, LinePixels, afterPos);
                taken = top.has_value();
                box->Top = top.value_or(0);
            }
            if (!taken && box->Left == 0 && counter == 5) {
                const auto left = state.Number(word, ColumnPixels, afterPos);
                taken = left.has_value();
                box->Left = left.value_or(0);
            }
            if (!taken && box->Width == 0 && counter == 2) {
                if (const std::optional<int> length = Integer(word.Text)) {
                    box->Width = *length * ColumnPixels;
                    taken = true;
                } else if (state.ResetBy() == QLatin1String("LENGTH")) {
                    state.NotUnderstood();
                }
            }
            if (!taken && counter < PictureCounter && word.Type == LiteralWord) {
                // The literal: its words joined by single blanks, one in
                // front; the first word of another type ends it.
                state.Taken();
                if (box->Hint.isEmpty())
                    box->Constant = true;
                if (box->Text == box->Hint)
                    box->Text.clear();
                while (!words.Eof()) {
                    const TWord part = Current(words);
                    if (part.Type != LiteralWord)
                        break;
                    if (part.Text != QLatin1String("'"))
                        box->Text += QLatin1Char(' ') + part.Text;
                    words.Next();
                }
            }
            state.Settle();
        }
        state.Advance();
    }
    state.HideIfEmpty();
    return std::move(state.Layout());
}
