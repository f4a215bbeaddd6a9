#include "SourceFile.h"

#include "EstateCodes.h"

#include "repository/Errors.h"

#include <QList>

using namespace estate;

namespace {

bool IsDelimiter(QChar c) {
    switch (c.unicode()) {
    case '(':
    case ')':
    case ',':
    case '=':
    case ';':
    case ':':
    case '{':
    case '}':
        return true;
    default:
        return false;
    }
}

bool IsQuote(QChar c) {
    return c == QLatin1Char('\'') || c == QLatin1Char('"');
}

int Classify(QStringView chunk) {
    bool digits = true;
    bool alphanumeric = false;
    for (QChar c : chunk) {
        digits = digits && c.isDigit();
        alphanumeric = alphanumeric || c.isLetterOrNumber();
    }
    if (digits)
        return word::Number;
    return alphanumeric ? word::Keyword : word::Symbol;
}

} // namespace

TSourceRow::TSourceRow(QStringView source, Flows flows, int declarationSection, int level)
    : FSection(declarationSection), FLevel(level) {
    FText.reserve(source.size());
    qsizetype plainStart = 0;
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (source[i] != QLatin1Char('['))
            continue;
        const qsizetype close = source.indexOf(QLatin1Char(']'), i);
        if (close < 0 || source.mid(i + 1, close - i - 1).contains(QLatin1Char('[')))
            throw EQXError(QStringLiteral("Sample estate: a [ that does not close in: ") +
                           source.toString());
        Plain(source.mid(plainStart, i - plainStart));
        Marker(source.mid(i + 1, close - i - 1));
        i = close;
        plainStart = close + 1;
    }
    Plain(source.mid(plainStart));
    DeriveFlows(flows);
}

qint32 TSourceRow::Add(const QString& text, int type, int section, int level,
                       const QString& identifier) {
    FWords.push_back(Word{text, type, section, level, identifier});
    return qint32(FWords.size());
}

void TSourceRow::Plain(QStringView text) {
    FText += text;
    const qsizetype n = text.size();
    qsizetype i = 0;
    while (i < n) {
        const QChar c = text[i];
        if (c.isSpace()) {
            ++i;
            continue;
        }
        if (IsQuote(c)) {
            qsizetype close = text.indexOf(c, i + 1);
            if (close < 0)
                close = n;
            const QString quote(c);
            Add(quote, word::Literal);
            for (QStringView part : text.mid(i + 1, close - i - 1).split(QLatin1Char(' ')))
                if (!part.isEmpty())
                    Add(part.toString(), word::Literal);
            if (close < n)
                FClosingQuotes.push_back(Add(quote, word::Literal));
            i = close + 1;
            continue;
        }
        if (IsDelimiter(c)) {
            Add(QString(c), word::Symbol);
            ++i;
            continue;
        }
        const bool picture = !FWords.empty() && (FWords.back().text == QLatin1String("PIC") ||
                                                 FWords.back().text == QLatin1String("PICTURE"));
        const qsizetype start = i;
        while (i < n && !text[i].isSpace() &&
               (picture || (!IsDelimiter(text[i]) && !IsQuote(text[i]))))
            ++i;
        QStringView chunk = text.mid(start, i - start);
        if (chunk.size() > 1 && chunk.startsWith(QLatin1Char('.'))) {
            Add(QStringLiteral("."), word::Symbol);
            chunk = chunk.mid(1);
        }
        const bool period = chunk.size() > 1 && chunk.endsWith(QLatin1Char('.'));
        if (period)
            chunk.chop(1);
        Add(chunk.toString(), Classify(chunk));
        if (period)
            Add(QStringLiteral("."), word::Symbol);
    }
}

void TSourceRow::Marker(QStringView marker) {
    if (marker.startsWith(QLatin1Char('>'))) {
        const QStringView name = marker.mid(1);
        FText += name;
        if (name.size() > 2 && IsQuote(name.front())) {
            const QString quote(name.front());
            Add(quote, word::Literal);
            FCallWords.push_back(Add(name.mid(1, name.size() - 2).toString(), word::Literal));
            FClosingQuotes.push_back(Add(quote, word::Literal));
        } else {
            FCallWords.push_back(Add(name.toString(), word::Name));
        }
        return;
    }
    if (marker.startsWith(QLatin1Char('!'))) {
        const qsizetype colon = marker.indexOf(QLatin1Char(':'));
        if (colon < 2)
            throw EQXError(QStringLiteral("Sample estate: a declaration without name or type: [") +
                           marker.toString() + QLatin1Char(']'));
        const QStringView name = marker.mid(1, colon - 1);
        FText += name;
        FVariables.push_back(Add(name.toString(), word::Declaration, FSection, FLevel,
                                 marker.mid(colon + 1).toString()));
        FIsDeclaration.push_back(true);
        return;
    }
    int section = 0;
    if (marker.startsWith(QLatin1Char('&'))) {
        section = section::CallArgument;
        marker = marker.mid(1);
    }
    FText += marker;
    qsizetype qualifier = marker.indexOf(QLatin1String(" OF "));
    if (qualifier < 0)
        qualifier = marker.indexOf(QLatin1String(" IN "));
    qint32 id = 0;
    if (qualifier > 0) {
        Add(marker.mid(qualifier + 4).toString(), word::Use);
        Add(marker.mid(qualifier + 1, 2).toString(), word::Qualifier);
        id = Add(marker.left(qualifier).toString(), word::Use, section);
    } else if (const qsizetype dot = marker.indexOf(QLatin1Char('.')); dot > 0) {
        Add(marker.left(dot).toString(), word::Use);
        Add(QStringLiteral("."), word::Qualifier);
        id = Add(marker.mid(dot + 1).toString(), word::Use, section);
    } else {
        id = Add(marker.toString(), word::Use, section);
    }
    FVariables.push_back(id);
    FIsDeclaration.push_back(false);
}

void TSourceRow::DeriveFlows(Flows flows) {
    if (flows == Flows::None || FVariables.empty())
        return;
    qint32 separator = 0;
    bool targetsFirst = false;
    if (flows == Flows::Cobol) {
        QLatin1String separatorText;
        for (std::size_t i = 0; i < FWords.size() && separatorText.size() == 0; ++i) {
            if (FWords[i].type != word::Keyword)
                continue;
            const QString& verb = FWords[i].text;
            if (verb == QLatin1String("MOVE") || verb == QLatin1String("ADD"))
                separatorText = QLatin1String("TO");
            else if (verb == QLatin1String("SUBTRACT"))
                separatorText = QLatin1String("FROM");
            else if (verb == QLatin1String("COMPUTE") || verb == QLatin1String("SET")) {
                separatorText = QLatin1String("=");
                targetsFirst = true;
            } else {
                return;
            }
        }
        for (std::size_t i = 0; i < FWords.size() && separator == 0; ++i)
            if (FWords[i].text == separatorText && FWords[i].type != word::Literal)
                separator = qint32(i + 1);
    } else {
        targetsFirst = true;
        for (std::size_t i = 0; i < FWords.size() && separator == 0; ++i) {
            const bool equals =
                FWords[i].type == word::Symbol && FWords[i].text == QLatin1String("=");
            const bool doubled =
                (i + 1 < FWords.size() && FWords[i + 1].text == QLatin1String("=")) ||
                (i > 0 && (FWords[i - 1].text == QLatin1String("=") ||
                           FWords[i - 1].text == QLatin1String("!") ||
                           FWords[i - 1].text == QLatin1String("<") ||
                           FWords[i - 1].text == QLatin1String(">")));
            if (equals && !doubled)
                separator = qint32(i + 1);
        }
    }
    if (separator == 0)
        return;
    for (qint32 from : FVariables) {
        const bool fromIsSource = targetsFirst ? from > separator : from < separator;
        if (!fromIsSource)
            continue;
        for (qint32 to : FVariables) {
            const bool toIsTarget = targetsFirst ? to < separator : to > separator;
            if (toIsTarget)
                FFlows.emplace_back(from, to);
        }
    }
}

void TSourceRow::CloseLiteralsAs(int type) {
    for (qint32 id : FClosingQuotes)
        FWords.at(std::size_t(id - 1)).type = type;
}

void TSourceRow::Call(int marker, const TTarget& target, qint32 inheritsFile,
                      qint32 inheritsObject) {
    FCalls.push_back(
        PendingCall{FCallWords.at(std::size_t(marker)), target, inheritsFile, inheritsObject});
}

std::vector<qint32> TSourceRow::Arguments() const {
    std::vector<qint32> arguments;
    for (qint32 id : FVariables)
        if (FWords.at(std::size_t(id - 1)).section == section::CallArgument)
            arguments.push_back(id);
    return arguments;
}

const QString& TSourceRow::CallName(int marker) const {
    return FWords.at(std::size_t(FCallWords.at(std::size_t(marker)) - 1)).text;
}

TSourceFile::TSourceFile(TEstateWriter& writer, qint32 id, int language)
    : FWriter(writer), FId(id), FLanguage(language) {}

qint32 TSourceFile::ReserveObjectID(const QString& name) {
    if (!FObjectNames.contains(name))
        FObjectNames.insert(name, FNextObject);
    return FNextObject++;
}

qint32 TSourceFile::AddObject(TObjectInfo info) {
    if (info.id == 0)
        info.id = FNextObject;
    FNextObject = qMax(FNextObject, info.id + 1);
    if (!FObjectNames.contains(info.name))
        FObjectNames.insert(info.name, info.id);
    FWriter.Object(FId, info.id, FLanguage, info.inPackage, info.name, info.inherits,
                   info.identifier, info.type, info.icon, info.parent, info.inheritsParent);
    return info.id;
}

void TSourceFile::AddEntry(qint32 object, qint32 entry, const QString& name,
                           const QString& identifier) {
    FWriter.Entry(FId, object, entry, name, identifier);
}

qint32 TSourceFile::Emit(const TSourceRow& row) {
    const qint32 rowId = FNextRow++;
    FWriter.Row(FId, FObject, FEntry, rowId, row.FText, !row.FCalls.empty());
    qint32 wordId = 0;
    for (const TSourceRow::Word& w : row.FWords)
        FWriter.Word(FId, FObject, FEntry, rowId, ++wordId, w.section, w.level, w.text, w.type,
                     w.identifier, FLanguage);
    for (const TSourceRow::PendingCall& call : row.FCalls)
        FWriter.Dependency(call.target.file, call.target.object, call.target.entry,
                           call.inheritsFile, call.inheritsObject, FId, FObject, FEntry, rowId,
                           call.word);
    for (const auto& [from, to] : row.FFlows)
        FWriter.DataFlow(FId, rowId, to, FId, rowId, from);
    return rowId;
}

qint32 TSourceFile::Comment(const QString& text) {
    const qint32 rowId = FNextRow++;
    FWriter.Row(FId, FObject, FEntry, rowId, text, false);
    return rowId;
}

void TSourceFile::Flow(qint32 fromRow, qint32 fromWord, qint32 toRow, qint32 toWord) {
    FWriter.DataFlow(FId, toRow, toWord, FId, fromRow, fromWord);
}

void TSourceFile::PassArguments(qint32 object, qint32 row, std::vector<qint32> words) {
    if (!words.empty())
        FPassed.push_back(PassedArguments{object, row, std::move(words)});
}

void TSourceFile::ReceiveArguments(qint32 object, qint32 row, const std::vector<qint32>& words) {
    for (const PassedArguments& call : FPassed) {
        if (call.object != object)
            continue;
        for (std::size_t i = 0; i < qMin(call.words.size(), words.size()); ++i)
            Flow(call.row, call.words[i], row, words[i]);
    }
}
