#include "CobolProgram.h"

#include "EstateCodes.h"

#include "repository/Errors.h"

using namespace estate;

namespace {

const QString AreaA = QStringLiteral("       ");

const char* const RuleVerbs[] = {"CHECK",  "CALC",    "VALIDATE",  "APPLY",  "UPDATE",  "FORMAT",
                                 "DERIVE", "ROLL-UP", "RECONCILE", "ADJUST", "PREPARE", "CLEAR"};
const char* const RuleNouns[] = {"LIMIT",   "BALANCE", "INTEREST", "FEE",     "STATUS",
                                 "DATES",   "TOTALS",  "ADDRESS",  "PREMIUM", "RESERVE",
                                 "CHARGES", "REBATE",  "TAX",      "ARREARS", "CURRENCY"};
const char* const StatusLiterals[] = {"'A'", "'C'", "'P'", "'R'", "'S'"};
const char* const DisplayTexts[] = {"'RULE APPLIED'",   "'LIMIT EXCEEDED'", "'CHECK FAILED'",
                                    "'TOTAL SO FAR: '", "'VALUE CHANGED'",  "'NO ACTION'"};

bool IsNumeric(const QString& picture) {
    return picture.startsWith(QLatin1Char('9')) || picture.startsWith(QLatin1Char('S'));
}

} // namespace

TCobolProgram::TCobolProgram(TEstate& estate, TSourceFile& file, TRandom& random,
                             const TObjectInfo& info)
    : FEstate(estate), FFile(file), FRandom(random), FName(info.name) {
    TObjectInfo program = info;
    if (program.identifier.isEmpty())
        program.identifier = info.name;
    FObject = FFile.AddObject(program);
    FCurrentObject = FObject;
    FFile.At(FObject, 0);
}

void TCobolProgram::Header(const QString& comment, const QString& author) {
    Line(QStringLiteral("IDENTIFICATION DIVISION."));
    Line(QStringLiteral("PROGRAM-ID. ") + FName + QLatin1Char('.'));
    Line(QStringLiteral("AUTHOR. ") + author + QLatin1Char('.'));
    Comment(comment);
}

qint32 TCobolProgram::Line(const QString& areaA) {
    return FFile.Emit(AreaA + areaA, TSourceRow::Flows::None);
}

qint32 TCobolProgram::Comment(const QString& text) {
    return FFile.Comment(QStringLiteral("      * ") + text);
}

void TCobolProgram::Section(const QString& header, int sectionType) {
    FSection = sectionType;
    Line(header + QLatin1Char('.'));
}

void TCobolProgram::Remember(const QString& name, const QString& picture) {
    if (picture.isEmpty() || name == QLatin1String("FILLER"))
        return;
    (IsNumeric(picture) ? FNumbers : FAlphas).append(name);
}

void TCobolProgram::Decl(int level, const QString& name, const QString& picture,
                         const QString& value) {
    // 01 and 77 in area A, deeper levels four columns further in per step.
    const int depth = level <= 1 || level == 77 ? 0 : (level <= 5 ? 1 : (level <= 10 ? 2 : 3));
    const QString levelText = QStringLiteral("%1").arg(level, 2, 10, QLatin1Char('0'));
    const QString head =
        AreaA + QString(depth * 4, QLatin1Char(' ')) + levelText + QStringLiteral("  ");
    QString text =
        head + QStringLiteral("[!") + name + QLatin1Char(':') +
        (picture.isEmpty() ? QStringLiteral("GROUP") : QStringLiteral("PIC ") + picture) +
        QLatin1Char(']');
    if (!picture.isEmpty()) {
        text += QString(qMax(1, 40 - int(head.size() + name.size())), QLatin1Char(' ')) +
                QStringLiteral("PIC ") + picture;
        if (!value.isEmpty())
            text += QStringLiteral(" VALUE ") + value;
    }
    text += QLatin1Char('.');
    FFile.Emit(TSourceRow(text, TSourceRow::Flows::None, FSection, level));
    Remember(name, picture);
}

void TCobolProgram::Copy(const TCopybook& book) {
    const qint32 entry = FFile.CurrentEntry();
    FFile.At(FCurrentObject, 0);
    const qint32 hidden = FFile.NextObjectID();
    TSourceRow copy(AreaB(QStringLiteral("COPY [>") + book.name + QStringLiteral("].")),
                    TSourceRow::Flows::None);
    copy.Call(0, book.member);
    copy.Call(0, TTarget{FFile.Id(), hidden, 0});
    FFile.Emit(copy);

    TObjectInfo part;
    part.id = hidden;
    part.name = FName;
    part.identifier = book.name;
    part.type = QStringLiteral("COPY ") + book.name;
    part.icon = icon::HiddenPart;
    FFile.AddObject(part);
    FFile.At(hidden, 0);
    for (const TCopyField& field : book.fields) {
        Decl(field.level, field.name, field.picture);
        if (!field.picture.isEmpty() && field.level > 1)
            FQualified.emplace_back(field.name, book.fields.front().name);
    }
    qint32 paragraph = 0;
    for (const auto& copied : book.paragraphs)
        FCopiedParagraphs.insert(copied.first, TTarget{FFile.Id(), hidden, ++paragraph});
    paragraph = 0;
    for (const auto& [name, statements] : book.paragraphs) {
        FFile.AddEntry(hidden, ++paragraph, name, book.name);
        FFile.At(hidden, paragraph);
        Line(name + QLatin1Char('.'));
        for (const QString& statement : statements) {
            TSourceRow row(AreaB(statement), TSourceRow::Flows::Cobol);
            if (statement.startsWith(QLatin1String("PERFORM ")))
                row.Call(
                    0, FCopiedParagraphs.value(
                           statement.section(QLatin1Char('>'), 1).section(QLatin1Char(']'), 0, 0)));
            FFile.Emit(row);
        }
    }
    FFile.At(FCurrentObject, entry);
}

qint32 TCobolProgram::BeginSubObject(TObjectInfo info) {
    info.parent = FName;
    FCurrentObject = FFile.AddObject(info);
    FFile.At(FCurrentObject, 0);
    return FCurrentObject;
}

void TCobolProgram::EndSubObject() {
    FCurrentObject = FObject;
    FFile.At(FObject, 0);
}

void TCobolProgram::Paragraphs(const QStringList& names) {
    for (const QString& name : names)
        FParagraphs.insert(name, qint32(FParagraphs.size() + 1));
}

void TCobolProgram::Procedure(const QString& usingClause) {
    FSection = 0;
    FFile.At(FObject, 0);
    if (usingClause.isEmpty()) {
        Line(QStringLiteral("PROCEDURE DIVISION."));
        return;
    }
    FFile.Emit(AreaA + QStringLiteral("PROCEDURE DIVISION USING ") + usingClause + QLatin1Char('.'),
               TSourceRow::Flows::None);
}

void TCobolProgram::Paragraph(const QString& name, bool section) {
    const qint32 entry = FParagraphs.value(name);
    if (entry == 0)
        throw EQXError(QStringLiteral("Sample estate: paragraph not declared: ") + name);
    if (!FWritten.contains(name)) {
        FFile.AddEntry(FObject, entry, name, FName);
        FWritten.append(name);
    }
    FFile.At(FObject, entry);
    Line(name + (section ? QStringLiteral(" SECTION.") : QStringLiteral(".")));
}

qint32 TCobolProgram::Stmt(const QString& text) {
    return FFile.Emit(AreaB(FIndent + text), TSourceRow::Flows::Cobol);
}

qint32 TCobolProgram::Stmt(const QString& text, const TTarget& call, qint32 inheritsFile,
                           qint32 inheritsObject) {
    TSourceRow row(AreaB(FIndent + text), TSourceRow::Flows::Cobol);
    row.Call(0, call, inheritsFile, inheritsObject);
    return FFile.Emit(row);
}

TTarget TCobolProgram::ParagraphTarget(const QString& name) const {
    if (const qint32 entry = FParagraphs.value(name))
        return Target(entry);
    if (FCopiedParagraphs.contains(name))
        return FCopiedParagraphs.value(name);
    throw EQXError(QStringLiteral("Sample estate: no paragraph ") + name + QStringLiteral(" in ") +
                   FName);
}

void TCobolProgram::Perform(const QString& paragraph, const QString& tail) {
    Stmt(QStringLiteral("PERFORM [>") + paragraph + QLatin1Char(']') + tail,
         ParagraphTarget(paragraph));
}

void TCobolProgram::Call(const QString& program, const TTarget& target,
                         const QStringList& arguments, const QString& tail) {
    QString text = QStringLiteral("CALL [>'") + program + QStringLiteral("']");
    if (!arguments.isEmpty()) {
        text += QStringLiteral(" USING");
        for (const QString& argument : arguments)
            text += QStringLiteral(" [&") + argument + QLatin1Char(']');
    }
    Stmt(text + tail, target);
}

QStringList TCobolProgram::RuleNames(int count) {
    QStringList names;
    for (int i = 0; i < count; ++i) {
        const QLatin1String verb(FRandom.Pick(RuleVerbs));
        const QLatin1String noun(FRandom.Pick(RuleNouns));
        names << QStringLiteral("%1-%2-%3").arg(5000 + 10 * i).arg(verb, noun);
    }
    return names;
}

void TCobolProgram::Rules(const QStringList& names, const std::vector<TCallable>& callables) {
    for (const QString& name : names) {
        Paragraph(name);
        // The first rule calls the last program offered (in a regional copy,
        // the utility of the copy before), so that such calls exist whatever
        // the seed.
        if (name == names.front() && !callables.empty()) {
            const TCallable& callee = callables.back();
            Stmt(QStringLiteral("MOVE [%1] TO [DP-DATE-IN]").arg(FRandom.Pick(FNumbers)));
            Call(callee.name, callee.target, {callee.argument});
        }
        const int statements = FRandom.Range(5, 14);
        for (int i = 0; i < statements; ++i)
            RuleStatement(names, name, callables, i + 1 == statements, false);
    }
}

// Every random draw is a statement of its own: the order in which function
// arguments are evaluated differs between compilers, and the estate must not.
void TCobolProgram::RuleStatement(const QStringList& names, const QString& self,
                                  const std::vector<TCallable>& callables, bool last, bool nested) {
    const QString end = last ? QStringLiteral(".") : QString();
    const int kind = FRandom.Range(0, 99);
    auto number = [&] { return FRandom.Pick(FNumbers); };
    auto alpha = [&] { return FRandom.Pick(FAlphas); };
    if (kind < 22) {
        const bool numeric = FRandom.Chance(60);
        const QString from = numeric ? number() : alpha();
        QString to = numeric ? number() : alpha();
        if (to == from)
            to = numeric ? FNumbers.front() : FAlphas.front();
        Stmt(QStringLiteral("MOVE [%1] TO [%2]").arg(from, to) + end);
    } else if (kind < 38) {
        static const char* const operators[] = {" + ", " - ", " * ", " / "};
        const QString target = number();
        const QString left = number();
        const QLatin1String operation(FRandom.Pick(operators));
        const QString right = number();
        QString text =
            QStringLiteral("COMPUTE [%1] ROUNDED = [%2]%3[%4]").arg(target, left, operation, right);
        // A factor only while the line stays within the 72 columns of a card.
        const QString factor = QStringLiteral(" * %1 / 100").arg(FRandom.Range(2, 99));
        const qsizetype width =
            AreaB(FIndent + text + factor).size() - 2 * text.count(QLatin1Char('['));
        if (FRandom.Chance(40) && width <= 72)
            text += factor;
        Stmt(text + end);
    } else if (kind < 48) {
        const bool add = FRandom.Chance(50);
        const QString from = number();
        const QString to = number();
        Stmt(QString::fromLatin1(add ? "ADD [%1] TO [%2]" : "SUBTRACT [%1] FROM [%2]")
                 .arg(from, to) +
             end);
    } else if (kind < 62 && !nested) {
        if (FRandom.Chance(60)) {
            const QString variable = number();
            Stmt(QStringLiteral("IF [%1] > %2").arg(variable).arg(FRandom.Range(0, 50000)));
        } else {
            const QString variable = alpha();
            const QLatin1String value(FRandom.Pick(StatusLiterals));
            Stmt(QStringLiteral("IF [%1] = %2").arg(variable, value));
        }
        const int inner = FRandom.Range(1, 3);
        BeginBlock();
        for (int i = 0; i < inner; ++i)
            RuleStatement(names, self, callables, false, true);
        EndBlock();
        Stmt(QStringLiteral("END-IF") + end);
    } else if (kind < 72 && names.size() > 1) {
        QString target = FRandom.Pick(names);
        if (target == self)
            target = names.front() == self ? names.back() : names.front();
        Perform(target, end);
    } else if (kind < 80) {
        if (FRandom.Chance(50)) {
            const QLatin1String value(FRandom.Pick(StatusLiterals));
            Stmt(QStringLiteral("MOVE %1 TO [%2]").arg(value, alpha()) + end);
        } else {
            Stmt(QStringLiteral("MOVE ZERO TO [%1]").arg(number()) + end);
        }
    } else if (kind < 87) {
        const QLatin1String text(FRandom.Pick(DisplayTexts));
        Stmt(QStringLiteral("DISPLAY %1 [%2]").arg(text, number()) + end);
    } else if (kind < 94 && !FQualified.empty()) {
        const auto& [field, record] = FRandom.Pick(FQualified);
        const QString to = FNumbers.contains(field) ? number() : alpha();
        Stmt(QStringLiteral("MOVE [%1 OF %2] TO [%3]").arg(field, record, to) + end);
    } else if (!callables.empty() && !nested) {
        const TCallable& callee = FRandom.Pick(callables);
        Stmt(QStringLiteral("MOVE [%1] TO [DP-DATE-IN]").arg(number()));
        Call(callee.name, callee.target, {callee.argument});
        Stmt(QStringLiteral("MOVE [DP-DAYS] TO [%1]").arg(number()) + end);
    } else {
        const QLatin1String text(FRandom.Pick(DisplayTexts));
        Stmt(QStringLiteral("DISPLAY %1 [%2]").arg(text, alpha()) + end);
    }
}

void TCobolProgram::End() {
    FFile.At(FObject, 0);
    Line(QStringLiteral("END PROGRAM ") + FName + QLatin1Char('.'));
}
