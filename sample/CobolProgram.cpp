#include "CobolProgram.h"

#include "EstateCodes.h"

#include <QRegularExpression>

#include <functional>

using namespace estate;

namespace {

const QString AreaA = QStringLiteral("       ");
const QString Sequence = QStringLiteral("      ");

const char* const RuleVerbs[] = {"CHECK",  "CALC",    "VALIDATE",  "APPLY",  "UPDATE",  "FORMAT",
                                 "DERIVE", "ROLL-UP", "RECONCILE", "ADJUST", "PREPARE", "CLEAR"};
const char* const RuleNouns[] = {"LIMIT",   "BALANCE", "INTEREST", "FEE",     "STATUS",
                                 "DATES",   "TOTALS",  "ADDRESS",  "PREMIUM", "RESERVE",
                                 "CHARGES", "REBATE",  "TAX",      "ARREARS", "CURRENCY"};
const char* const StatusLiterals[] = {"'A'", "'C'", "'P'", "'R'", "'S'"};
const char* const DisplayTexts[] = {"'RULE APPLIED'",   "'LIMIT EXCEEDED'", "'CHECK FAILED'",
                                    "'TOTAL SO FAR: '", "'VALUE CHANGED'",  "'NO ACTION'"};

EQXError Failure(const QString& message) {
    return EQXError(QStringLiteral("Sample estate: ") + message);
}

QString AreaB(const QString& text) {
    return QStringLiteral("           ") + text;
}

bool IsNumeric(const QString& picture) {
    return picture.startsWith(QLatin1Char('9')) || picture.startsWith(QLatin1Char('S'));
}

bool IsDataEntry(const QString& content) {
    return content.size() > 3 && content[0].isDigit() && content[1].isDigit() &&
           content[2] == QLatin1Char(' ');
}

// Area A holds division, section and paragraph headers, level 01 and 77.
bool InAreaA(const QString& line) {
    return line.size() > 7 && line[6] == QLatin1Char(' ') && line[7] != QLatin1Char(' ');
}

bool IsDirective(const QString& line, const QString& directive) {
    return line.size() > 7 && line[6] == QLatin1Char('*') && line[7] == QLatin1Char('@') &&
           line.mid(8).trimmed() == directive;
}

// The operand of a sentence "KEYWORD operand.", or nothing.
QString Operand(const QString& content, const QString& keyword) {
    if (!content.startsWith(keyword) || !content.endsWith(QLatin1Char('.')))
        return QString();
    return content.mid(keyword.size(), content.size() - keyword.size() - 1);
}

// "NAME." or "NAME SECTION."
QString ParagraphName(const QString& content) {
    static const QRegularExpression pattern(QStringLiteral("^([A-Z0-9][A-Z0-9-]*)( SECTION)?\\.$"));
    const QRegularExpressionMatch match = pattern.match(content);
    if (!match.hasMatch())
        throw Failure(QStringLiteral("not a paragraph or section header: ") + content);
    return match.captured(1);
}

// The name in the PROGRAM-ID paragraph after an IDENTIFICATION DIVISION.
QString ProgramId(const TEstateText& text, qsizetype division) {
    const QString name = division + 1 < text.Size()
                             ? Operand(text[division + 1].trimmed(), QStringLiteral("PROGRAM-ID. "))
                             : QString();
    if (name.isEmpty())
        throw Failure(QStringLiteral("no PROGRAM-ID after the IDENTIFICATION DIVISION in line %1")
                          .arg(division + 1));
    return name;
}

int SectionType(const QString& content) {
    if (content == QLatin1String("FILE SECTION."))
        return section::FileSection;
    if (content == QLatin1String("WORKING-STORAGE SECTION."))
        return section::WorkingStorage;
    if (content == QLatin1String("LINKAGE SECTION."))
        return section::Linkage;
    throw Failure(QStringLiteral("unknown section ") + content);
}

int ObjectIcon(const QString& name) {
    static const std::pair<const char*, int> icons[] = {{"Record", icon::Record},
                                                        {"Dataset", icon::Dataset},
                                                        {"ObjectInFile", icon::ObjectInFile},
                                                        {"ObjectInFileAlt", icon::ObjectInFileAlt},
                                                        {"ScreenMap", icon::ScreenMap},
                                                        {"OtherObject", icon::OtherObject}};
    for (const auto& [iconName, code] : icons)
        if (name == QLatin1String(iconName))
            return code;
    throw Failure(QStringLiteral("unknown icon ") + name);
}

} // namespace

TCobolProgram::TCobolProgram(TEstate& estate, TSourceFile& file, TRandom& random,
                             const TObjectInfo& info, const TCopyLibrary& library)
    : FEstate(estate), FFile(file), FRandom(random), FLibrary(library), FName(info.name),
      FInPackage(info.inPackage) {
    TObjectInfo program = info;
    if (program.identifier.isEmpty())
        program.identifier = info.name;
    FObject = FFile.AddObject(program);
    FCurrentObject = FObject;
    FFile.At(FObject, 0);
}

// --- Program text -----------------------------------------------------------

void TCobolProgram::WriteProgram(const TEstateText& text, const TRules& rules) {
    for (qsizetype line = Write(text, 0, rules); line < text.Size(); ++line)
        if (!text[line].isEmpty())
            throw text.Error(line, QStringLiteral("text after END PROGRAM ") + FName);
}

void TCobolProgram::WriteMember(const TEstateText& text) {
    FDivision = Division::Data;
    FSection = section::WorkingStorage;
    for (const QString& name : MemberParagraphs(text))
        FParagraphs.insert(name, qint32(FParagraphs.size() + 1));
    WriteMemberLines(text, true, [&](const QString& name) { EnterParagraph(name); });
}

QStringList TCobolProgram::MemberParagraphs(const TEstateText& text) {
    QStringList names;
    for (qsizetype line = 0; line < text.Size(); ++line)
        if (InAreaA(text[line]) && !IsDataEntry(text[line].trimmed()))
            names << ParagraphName(text[line].trimmed());
    return names;
}

// Entries and paragraphs of a member at the current object; its comments
// only in its own file.
void TCobolProgram::WriteMemberLines(const TEstateText& text, bool comments,
                                     const std::function<void(const QString&)>& paragraph) {
    QString record;
    for (qsizetype line = 0; line < text.Size(); ++line) {
        const QString& source = text[line];
        const QString content = source.trimmed();
        try {
            if (content.isEmpty())
                continue;
            if (source.size() < 8 || !source.startsWith(Sequence))
                throw Failure(QStringLiteral("not a fixed-format COBOL line"));
            if (source[6] == QLatin1Char('*')) {
                if (source[7] == QLatin1Char('@'))
                    throw Failure(QStringLiteral("a directive in a copy member"));
                if (comments)
                    Comment(source);
                continue;
            }
            if (IsDataEntry(content)) {
                const TDataEntry field = Declaration(source);
                if (record.isEmpty())
                    record = field.name;
                else if (!field.picture.isEmpty() && field.level > 1)
                    FQualified.emplace_back(field.name, record);
                continue;
            }
            if (InAreaA(source))
                paragraph(ParagraphName(content));
            Statement(source);
        } catch (const EQXError& e) {
            throw text.Error(line, e.Message());
        }
    }
}

// Writes this program's lines from the first; returns the line after its
// END PROGRAM.
qsizetype TCobolProgram::Write(const TEstateText& text, qsizetype first, const TRules& rules) {
    for (qsizetype line = first; line < text.Size(); ++line) {
        if (line > first && FDivision == Division::Procedure &&
            text[line].trimmed() == QLatin1String("IDENTIFICATION DIVISION.")) {
            line = Nested(text, line) - 1;
            continue;
        }
        try {
            if (WriteLine(text, line, rules))
                return line + 1;
        } catch (const EQXError& e) {
            throw text.Error(line, e.Message());
        }
    }
    throw text.Error(text.Size() - 1, QStringLiteral("no END PROGRAM ") + FName);
}

bool TCobolProgram::WriteLine(const TEstateText& text, qsizetype line, const TRules& rules) {
    const QString& source = text[line];
    const QString content = source.trimmed();
    if (content.isEmpty())
        return false;
    if (source.size() < 8 || !source.startsWith(Sequence))
        throw Failure(QStringLiteral("not a fixed-format COBOL line"));
    if (source[6] == QLatin1Char('*')) {
        if (source[7] == QLatin1Char('@'))
            Directive(source.mid(8).trimmed(), rules);
        else
            Comment(source);
        return false;
    }
    if (FDivision == Division::Data && IsDataEntry(content)) {
        Declaration(source);
        return false;
    }
    if (const QString copied = Operand(content, QStringLiteral("COPY ")); !copied.isEmpty()) {
        Copy(source, copied);
        return false;
    }
    if (!InAreaA(source)) {
        Statement(source);
        return false;
    }
    if (const QString name = Operand(content, QStringLiteral("END PROGRAM ")); !name.isEmpty()) {
        if (name != FName)
            throw Failure(QStringLiteral("END PROGRAM of ") + name + QStringLiteral(" in ") +
                          FName);
        FFile.At(FObject, 0);
        Statement(source);
        return true;
    }
    if (content.startsWith(QLatin1String("PROCEDURE DIVISION"))) {
        Procedure(text, line, rules);
        // A nested program's parameters receive what its outer program
        // passes in calls of it.
        const TSourceRow row(source, TSourceRow::Flows::None);
        std::vector<qint32> parameters;
        for (int i = 0; i < row.VariableCount(); ++i)
            parameters.push_back(row.Variable(i));
        FFile.ReceiveArguments(FObject, Emit(row), parameters);
        return false;
    }
    if (FDivision == Division::Procedure) {
        EnterParagraph(ParagraphName(content));
    } else if (content == QLatin1String("DATA DIVISION.")) {
        FDivision = Division::Data;
    } else if (FDivision == Division::Data && content.endsWith(QLatin1String(" SECTION."))) {
        FSection = SectionType(content);
    } else if (const QString id = Operand(content, QStringLiteral("PROGRAM-ID. "));
               !id.isEmpty() && id != FName) {
        throw Failure(QStringLiteral("PROGRAM-ID ") + id + QStringLiteral(" for ") + FName);
    }
    Statement(source);
    return false;
}

// "*@ object NAME | TYPE | ICON [| packaged]" ... "*@ end object", "*@ rules"
void TCobolProgram::Directive(const QString& directive, const TRules& rules) {
    if (directive == QLatin1String("rules")) {
        if (FDivision != Division::Procedure)
            throw Failure(QStringLiteral("rules outside the procedure division"));
        Rules(rules.callables);
    } else if (directive == QLatin1String("end object")) {
        if (FCurrentObject == FObject)
            throw Failure(QStringLiteral("end object without object"));
        FCurrentObject = FObject;
        FFile.At(FObject, 0);
    } else if (directive.startsWith(QLatin1String("object "))) {
        const QStringList parts = directive.mid(7).split(QLatin1Char('|'));
        if (parts.size() < 3 || parts.size() > 4 ||
            (parts.size() == 4 && parts[3].trimmed() != QLatin1String("packaged")))
            throw Failure(QStringLiteral("expected *@ object NAME | TYPE | ICON [| packaged]"));
        TObjectInfo info;
        info.name = parts[0].trimmed();
        info.identifier = info.name;
        info.type = parts[1].trimmed();
        info.icon = ObjectIcon(parts[2].trimmed());
        info.parent = FName;
        info.inPackage = parts.size() == 4 ? FInPackage : 0;
        FCurrentObject = FFile.AddObject(info);
        FFile.At(FCurrentObject, 0);
    } else {
        throw Failure(QStringLiteral("unknown directive *@ ") + directive);
    }
}

// Declares the paragraphs written below, so that PERFORM can name a later
// one, then the generated rules' paragraphs; gives the nested programs their
// object ids.
void TCobolProgram::Procedure(const TEstateText& text, qsizetype line, const TRules& rules) {
    if (FCurrentObject != FObject)
        throw Failure(QStringLiteral("object not ended before the procedure division"));
    FDivision = Division::Procedure;
    FSection = 0;
    FFile.At(FObject, 0);
    QStringList paragraphs;
    bool generated = false;
    int depth = 0;
    for (qsizetype next = line + 1; next < text.Size(); ++next) {
        const QString content = text[next].trimmed();
        if (content == QLatin1String("IDENTIFICATION DIVISION.")) {
            if (++depth == 1)
                FFile.ReserveObjectID(ProgramId(text, next));
        } else if (content.startsWith(QLatin1String("END PROGRAM "))) {
            if (depth-- == 0)
                break;
        } else if (depth == 0 && IsDirective(text[next], QStringLiteral("rules"))) {
            generated = true;
        } else if (depth == 0 && InAreaA(text[next])) {
            paragraphs << ParagraphName(content);
        }
    }
    if (generated)
        FRuleNames = RuleNames(FRandom.Range(rules.min, rules.max));
    for (const QString& name : paragraphs + FRuleNames)
        FParagraphs.insert(name, qint32(FParagraphs.size() + 1));
}

qsizetype TCobolProgram::Nested(const TEstateText& text, qsizetype line) {
    TObjectInfo info;
    info.name = ProgramId(text, line);
    info.id = FFile.ObjectNamed(info.name);
    info.identifier = info.name;
    info.type = QStringLiteral("Nested Program");
    info.icon = icon::NestedProgram;
    info.parent = FName;
    TCobolProgram nested(FEstate, FFile, FRandom, info, FLibrary);
    return nested.Write(text, line, TRules{});
}

void TCobolProgram::Copy(const QString& line, const QString& name) {
    const auto book = FLibrary.constFind(name);
    if (book == FLibrary.constEnd())
        throw Failure(QStringLiteral("no copy member ") + name);
    const TEstateText& member = book->text;
    const qint32 entry = FFile.CurrentEntry();
    FFile.At(FCurrentObject, 0);
    const qint32 hidden = FFile.NextObjectID();
    const qsizetype at = line.indexOf(name);
    TSourceRow copy(line.left(at) + QStringLiteral("[>") + name + QLatin1Char(']') +
                        line.mid(at + name.size()),
                    TSourceRow::Flows::None);
    copy.Call(0, book->member);
    copy.Call(0, TTarget{FFile.Id(), hidden, 0});
    Emit(copy);

    TObjectInfo part;
    part.id = hidden;
    part.name = FName;
    part.identifier = name;
    part.type = QStringLiteral("COPY ") + name;
    part.icon = icon::HiddenPart;
    FFile.AddObject(part);
    FFile.At(hidden, 0);
    qint32 paragraph = 0;
    for (const QString& copied : MemberParagraphs(member))
        FCopiedParagraphs.insert(copied, TTarget{FFile.Id(), hidden, ++paragraph});
    paragraph = 0;
    WriteMemberLines(member, false, [&](const QString& copied) {
        FFile.AddEntry(hidden, ++paragraph, copied, name);
        FFile.At(hidden, paragraph);
    });
    FFile.At(FCurrentObject, entry);
}

// --- Rows -------------------------------------------------------------------

TCobolProgram::TDataEntry TCobolProgram::DataEntry(const QString& line) {
    static const QRegularExpression pattern(QStringLiteral(
        "^(\\s*(\\d\\d)\\s+)([A-Z0-9][A-Z0-9-]*)(?:\\s+PIC (.+?)(?: VALUE (.+))?)?\\.$"));
    const QRegularExpressionMatch match = pattern.match(line);
    if (!match.hasMatch())
        throw Failure(QStringLiteral("not a data description entry: ") + line.trimmed());
    TDataEntry entry;
    entry.level = match.captured(2).toInt();
    entry.name = match.captured(3);
    entry.picture = match.captured(4);
    entry.value = match.captured(5);
    const QString type =
        entry.picture.isEmpty() ? QStringLiteral("GROUP") : QStringLiteral("PIC ") + entry.picture;
    entry.row = line.left(match.capturedStart(3)) + QStringLiteral("[!") + entry.name +
                QLatin1Char(':') + type + QLatin1Char(']') + line.mid(match.capturedEnd(3));
    return entry;
}

TCobolProgram::TDataEntry TCobolProgram::Declaration(const QString& line) {
    const TDataEntry entry = DataEntry(line);
    Emit(TSourceRow(entry.row, TSourceRow::Flows::None, FSection, entry.level));
    Remember(entry.name, entry.picture);
    if (!entry.value.isEmpty())
        FValues.insert(entry.name, entry.value);
    return entry;
}

void TCobolProgram::Remember(const QString& name, const QString& picture) {
    if (picture.isEmpty() || name == QLatin1String("FILLER"))
        return;
    (IsNumeric(picture) ? FNumbers : FAlphas).append(name);
}

void TCobolProgram::EnterParagraph(const QString& name) {
    const qint32 entry = FParagraphs.value(name);
    if (entry == 0)
        throw Failure(QStringLiteral("paragraph not declared: ") + name);
    if (!FWritten.contains(name)) {
        FFile.AddEntry(FObject, entry, name, FName);
        FWritten.append(name);
    }
    FFile.At(FObject, entry);
}

qint32 TCobolProgram::Statement(const QString& line) {
    TSourceRow row(line, TSourceRow::Flows::Cobol);
    qint32 local = 0; // a program of this file that the row calls
    for (int marker = 0; marker < row.CallCount(); ++marker) {
        const QString& name = row.CallName(marker);
        if (FParagraphs.contains(name) || FCopiedParagraphs.contains(name)) {
            row.Call(marker, ParagraphTarget(name));
        } else if (const qint32 object = FFile.ObjectNamed(name)) {
            row.Call(marker, TTarget{FFile.Id(), object, 0});
            local = object;
        } else if (const QString value = FValues.value(name); !value.isEmpty()) {
            // A call through a data name: the parser's guess is its VALUE.
            if (value.size() < 3 || !value.startsWith(QLatin1Char('\'')) ||
                !value.endsWith(QLatin1Char('\'')))
                throw Failure(QStringLiteral("a call through ") + name +
                              QStringLiteral(", whose VALUE names no program"));
            row.Call(marker, FEstate.FindCallable(value.mid(1, value.size() - 2)), -1, 0);
        } else {
            row.Call(marker, FEstate.FindCallable(name));
        }
    }
    const qint32 id = Emit(row);
    if (local != 0)
        FFile.PassArguments(local, id, row.Arguments());
    return id;
}

qint32 TCobolProgram::Emit(const TSourceRow& row) {
    const qint32 id = FFile.Emit(row);
    QStringView text = QStringView(row.Text()).trimmed();
    const QStringView lead = text.left(text.indexOf(QLatin1Char(' ')));
    const std::size_t pairs = qMin(std::size_t(row.VariableCount()), FLastVariables.size());
    if (lead == QLatin1String("INTO") && FLastClause == SqlClause::Select) {
        for (std::size_t i = 0; i < pairs; ++i)
            FFile.Flow(FLastRow, FLastVariables[i], id, row.Variable(int(i)));
    } else if (lead == QLatin1String("VALUES") && FLastClause == SqlClause::Columns) {
        for (std::size_t i = 0; i < pairs; ++i)
            FFile.Flow(id, row.Variable(int(i)), FLastRow, FLastVariables[i]);
    }
    FLastRow = id;
    FLastClause = lead == QLatin1String("SELECT")     ? SqlClause::Select
                  : text.startsWith(QLatin1Char('(')) ? SqlClause::Columns
                                                      : SqlClause::Other;
    FLastVariables.clear();
    for (int i = 0; i < row.VariableCount(); ++i)
        FLastVariables.push_back(row.Variable(i));
    return id;
}

void TCobolProgram::Comment(const QString& line) {
    FFile.Comment(line);
    FLastClause = SqlClause::Other;
}

TTarget TCobolProgram::ParagraphTarget(const QString& name) const {
    if (const qint32 entry = FParagraphs.value(name))
        return Target(entry);
    if (FCopiedParagraphs.contains(name))
        return FCopiedParagraphs.value(name);
    throw Failure(QStringLiteral("no paragraph ") + name + QStringLiteral(" in ") + FName);
}

// --- Generated rules --------------------------------------------------------

qint32 TCobolProgram::Stmt(const QString& text) {
    return Emit(TSourceRow(AreaB(FIndent + text), TSourceRow::Flows::Cobol));
}

qint32 TCobolProgram::Stmt(const QString& text, const TTarget& call) {
    TSourceRow row(AreaB(FIndent + text), TSourceRow::Flows::Cobol);
    row.Call(0, call);
    return Emit(row);
}

void TCobolProgram::Perform(const QString& paragraph, const QString& tail) {
    Stmt(QStringLiteral("PERFORM [>") + paragraph + QLatin1Char(']') + tail,
         ParagraphTarget(paragraph));
}

void TCobolProgram::Call(const QString& program, const TTarget& target, const QString& argument) {
    Stmt(QStringLiteral("CALL [>'") + program + QStringLiteral("'] USING [&") + argument +
             QLatin1Char(']'),
         target);
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

void TCobolProgram::Rules(const std::vector<TCallable>& callables) {
    if (FNumbers.isEmpty() || FAlphas.isEmpty())
        throw Failure(QStringLiteral("generated rules need numeric and alphanumeric data items"));
    for (const QString& name : FRuleNames) {
        EnterParagraph(name);
        Emit(TSourceRow(AreaA + name + QLatin1Char('.'), TSourceRow::Flows::None));
        // The first rule calls the last program offered (in a regional copy,
        // the utility of the copy before), so that such calls exist whatever
        // the seed.
        if (name == FRuleNames.front() && !callables.empty()) {
            const TCallable& callee = callables.back();
            Stmt(QStringLiteral("MOVE [%1] TO [DP-DATE-IN]").arg(FRandom.Pick(FNumbers)));
            Call(callee.name, callee.target, callee.argument);
        }
        const int statements = FRandom.Range(5, 14);
        for (int i = 0; i < statements; ++i)
            RuleStatement(name, callables, i + 1 == statements, false);
    }
}

// Every random draw is a statement of its own: the order in which function
// arguments are evaluated differs between compilers, and the estate must not.
void TCobolProgram::RuleStatement(const QString& self, const std::vector<TCallable>& callables,
                                  bool last, bool nested) {
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
        FIndent += QStringLiteral("    ");
        for (int i = 0; i < inner; ++i)
            RuleStatement(self, callables, false, true);
        FIndent.chop(4);
        Stmt(QStringLiteral("END-IF") + end);
    } else if (kind < 72 && FRuleNames.size() > 1) {
        QString target = FRandom.Pick(FRuleNames);
        if (target == self)
            target = FRuleNames.front() == self ? FRuleNames.back() : FRuleNames.front();
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
        Call(callee.name, callee.target, callee.argument);
        Stmt(QStringLiteral("MOVE [DP-DAYS] TO [%1]").arg(number()) + end);
    } else {
        const QLatin1String text(FRandom.Pick(DisplayTexts));
        Stmt(QStringLiteral("DISPLAY %1 [%2]").arg(text, alpha()) + end);
    }
}
