#include "SourceWriters.h"

#include "EstateCodes.h"

#include <QHash>
#include <QRegularExpression>

#include <vector>

using namespace estate;

namespace sample {
namespace {

EQXError Failure(const QString& message) {
    return EQXError(QStringLiteral("Sample estate: ") + message);
}

// Runs write on every line that is not empty; its errors name the line.
template <typename Write> void ForEachLine(const TEstateText& text, Write write) {
    for (qsizetype line = 0; line < text.Size(); ++line) {
        if (text[line].isEmpty())
            continue;
        try {
            write(text[line]);
        } catch (const EQXError& e) {
            throw text.Error(line, e.Message());
        }
    }
}

// Emits the row; a call word calls what local names, an object of the file,
// or what the estate calls by the name.
qint32 EmitCalling(const TEstate& estate, TSourceFile& file, TSourceRow row,
                   const QHash<QString, TTarget>& local = {}) {
    for (int marker = 0; marker < row.CallCount(); ++marker) {
        const QString& name = row.CallName(marker);
        if (local.contains(name))
            row.Call(marker, local.value(name));
        else if (const qint32 object = file.ObjectNamed(name))
            row.Call(marker, TTarget{file.Id(), object, 0});
        else
            row.Call(marker, estate.FindCallable(name));
    }
    return file.Emit(row);
}

// The row template with the word at [start, end) of the line marked as a
// declaration of the given type.
QString Declaring(const QString& line, qsizetype start, qsizetype end, const QString& type) {
    return line.left(start) + QStringLiteral("[!") + line.mid(start, end - start) +
           QLatin1Char(':') + type + QLatin1Char(']') + line.mid(end);
}

// --- BMS --------------------------------------------------------------------

// One line of an assembler-format macro source: the label (first line of a
// statement only), the macro and its operand field, which holds no blank
// outside quotes. What follows the operand field (remarks, the continuation
// column and the sequence columns) is no words. A statement whose operands
// end with "," goes on in the next line, whose operand field starts after
// blanks.
struct TMacroLine {
    QString label;
    QString macro;
    QString operands;
    QString code; // the line up to the end of its operand field
    QString tail; // what follows, trimmed
    bool continuation = false;
    bool continued = false;
};

// The end of the blank-free field that starts at `from`, quotes respected.
qsizetype FieldEnd(const QString& line, qsizetype from) {
    bool quoted = false;
    qsizetype i = from;
    for (; i < line.size(); ++i) {
        if (line[i] == QLatin1Char('\''))
            quoted = !quoted;
        else if (line[i] == QLatin1Char(' ') && !quoted)
            break;
    }
    return i;
}

qsizetype SkipBlanks(const QString& line, qsizetype from) {
    while (from < line.size() && line[from] == QLatin1Char(' '))
        ++from;
    return from;
}

// Columns 1 to 71 hold the statement, 72 the continuation mark and 73 to 80
// the sequence number.
TMacroLine MacroLine(const QString& source, bool continuation) {
    const QString line = source.left(71);
    TMacroLine m;
    m.continuation = continuation;
    qsizetype at = 0;
    if (!continuation) {
        if (!line.startsWith(QLatin1Char(' '))) {
            at = FieldEnd(line, 0);
            m.label = line.left(at);
        }
        const qsizetype macro = SkipBlanks(line, at);
        at = FieldEnd(line, macro);
        m.macro = line.mid(macro, at - macro);
    }
    const qsizetype operands = SkipBlanks(line, at);
    if (operands < line.size() && (continuation || operands - at < 6)) {
        at = FieldEnd(line, operands);
        m.operands = line.mid(operands, at - operands);
    }
    m.code = line.left(at);
    m.tail = (line.mid(at) + source.mid(71)).trimmed();
    m.continued = m.operands.endsWith(QLatin1Char(','));
    return m;
}

struct TMacro {
    QString label;
    QString statement; // the macro and its operands, continuations joined
    QString macro;
};

// The statements of a text, each with the lines it takes.
struct TStatement {
    TMacro macro;
    std::vector<std::pair<qsizetype, TMacroLine>> lines;
};

std::vector<TStatement> Statements(const TEstateText& text) {
    std::vector<TStatement> statements;
    bool continuation = false;
    for (qsizetype line = 0; line < text.Size(); ++line) {
        if (text[line].isEmpty())
            continue;
        TMacroLine m = MacroLine(text[line], continuation);
        if (!continuation) {
            statements.emplace_back();
            statements.back().macro.label = m.label;
            statements.back().macro.macro = m.macro;
            statements.back().macro.statement = m.macro;
            if (!m.operands.isEmpty())
                statements.back().macro.statement += QLatin1Char(' ');
        }
        statements.back().macro.statement += m.operands;
        continuation = m.continued;
        statements.back().lines.emplace_back(line, std::move(m));
    }
    return statements;
}

bool StartsMapSet(const TMacro& m) {
    return m.macro == QLatin1String("DFHMSD") && m.statement != QLatin1String("DFHMSD TYPE=FINAL");
}

} // namespace

void PlanMapSet(TEstate& estate, qint32 file, const TEstateText& text) {
    qint32 object = 0;
    for (const TStatement& s : Statements(text)) {
        if (StartsMapSet(s.macro))
            ++object;
        else if (s.macro.macro == QLatin1String("DFHMDI"))
            estate.Define(QStringLiteral("MAP:") + s.macro.label, TTarget{file, ++object, 0});
    }
}

// The label takes columns 1 to 9, and more when it is longer; remarks and
// the continuation and sequence columns start at column 72.
void WriteMapSet(TEstate& estate, qint32 fileId, const TEstateText& text) {
    TSourceFile file(estate.Writer(), fileId, lang::Bms);
    qint32 set = 0;
    QString setName;
    for (const TStatement& s : Statements(text)) {
        const TMacro& m = s.macro;
        QString label = m.label;
        try {
            if (StartsMapSet(m) || m.macro == QLatin1String("DFHMDI")) {
                if (m.label.isEmpty())
                    throw Failure(m.macro + QStringLiteral(" without a name"));
                if (StartsMapSet(m)) {
                    set = file.AddObject(
                        TObjectInfo::Named(m.label, "BMS Mapset", icon::OtherObject));
                    setName = m.label;
                    file.At(set);
                } else if (set == 0) {
                    throw Failure(QStringLiteral("a map outside a map set"));
                } else {
                    TObjectInfo map = TObjectInfo::Named(m.label, "BMS Map", icon::ScreenMap);
                    map.parent = setName;
                    file.At(file.AddObject(map));
                }
                label = QStringLiteral("[>") + m.label + QLatin1Char(']');
            } else if (m.macro == QLatin1String("DFHMDF") && !m.label.isEmpty()) {
                static const QRegularExpression length(QStringLiteral("LENGTH=([^,]+)"));
                const QRegularExpressionMatch match = length.match(m.statement);
                if (!match.hasMatch())
                    throw Failure(QStringLiteral("a named field without LENGTH"));
                label = Declaring(m.label, 0, m.label.size(),
                                  QStringLiteral("X(") + match.captured(1) + QLatin1Char(')'));
            } else if (m.macro == QLatin1String("DFHMSD")) {
                file.At(set);
            }
        } catch (const EQXError& e) {
            throw text.Error(s.lines.front().first, e.Message());
        }
        for (const auto& [line, part] : s.lines) {
            QString code = part.code;
            qsizetype shown = code.size();
            if (!part.continuation && !m.label.isEmpty()) {
                const QString padding(qMax(1, 9 - int(m.label.size())), QLatin1Char(' '));
                const QString statement =
                    part.macro +
                    (part.operands.isEmpty() ? QString() : QLatin1Char(' ') + part.operands);
                code = label + padding + statement;
                shown = m.label.size() + padding.size() + statement.size();
            }
            try {
                TSourceRow row(code, TSourceRow::Flows::None, section::MapField);
                row.CloseLiteralsAs(word::Symbol);
                if (!part.tail.isEmpty())
                    row.AppendUntokenized(
                        QString(qMax<qsizetype>(1, 71 - shown), QLatin1Char(' ')) +
                        (part.tail.front().isDigit() ? QStringLiteral(" ") : QString()) +
                        part.tail);
                file.Emit(row);
            } catch (const EQXError& e) {
                throw text.Error(line, e.Message());
            }
        }
    }
}

// --- JCL --------------------------------------------------------------------

void WriteJobStream(TEstate& estate, qint32 fileId, const TEstateText& text, qint32 package,
                    const QString& packageName) {
    TSourceFile file(estate.Writer(), fileId, lang::Jcl);
    qint32 job = 0;
    qint32 current = 0;
    QHash<qint32, QString> names;
    QHash<qint32, qint32> steps;
    ForEachLine(text, [&](const QString& line) {
        if (line.startsWith(QLatin1String("//*"))) {
            file.Comment(line);
            return;
        }
        if (!line.startsWith(QLatin1String("//")))
            throw Failure(QStringLiteral("not a JCL statement"));
        const QString name = line.mid(2).section(QLatin1Char(' '), 0, 0);
        const QString operation =
            line.mid(2 + name.size()).trimmed().section(QLatin1Char(' '), 0, 0);
        if (operation == QLatin1String("JOB") || operation == QLatin1String("PROC")) {
            const bool isJob = operation == QLatin1String("JOB");
            current = file.AddObject(TObjectInfo::Named(name, isJob ? "JCL Job" : "JCL Procedure",
                                                        icon::OtherObject, package));
            estate.Writer().Package(fileId, package, packageName, name, fileId, current);
            names.insert(current, name);
            if (isJob)
                job = current;
            file.At(current);
        } else if (operation == QLatin1String("PEND")) {
            file.At(current);
        } else if (operation == QLatin1String("EXEC")) {
            if (current == 0)
                throw Failure(QStringLiteral("a step outside a job"));
            const qint32 step = ++steps[current];
            file.AddEntry(current, step, name, names.value(current));
            file.At(current, step);
        }
        EmitCalling(estate, file, TSourceRow(line, TSourceRow::Flows::None));
        if (operation == QLatin1String("PEND"))
            current = job;
    });
}

// --- VisualAge Generator ----------------------------------------------------

namespace {

QString GeneratorTag(const QString& line) {
    return line.trimmed().section(QLatin1Char(' '), 0, 0);
}

QString GeneratorName(const QString& line) {
    static const QRegularExpression name(QStringLiteral("name=([A-Z0-9-]+)"));
    const QRegularExpressionMatch match = name.match(line);
    if (!match.hasMatch())
        throw Failure(GeneratorTag(line) + QStringLiteral(" without a name"));
    return match.captured(1);
}

// The functions of each program by name: the entries of the program.
QHash<QString, TTarget> GeneratorFunctions(qint32 file, const TEstateText& text) {
    QHash<QString, TTarget> functions;
    qint32 object = 0;
    qint32 entry = 0;
    ForEachLine(text, [&](const QString& line) {
        const QString tag = GeneratorTag(line);
        if (tag == QLatin1String(":map") || tag == QLatin1String(":program")) {
            ++object;
            entry = 0;
        } else if (tag == QLatin1String(":function")) {
            functions.insert(GeneratorName(line), TTarget{file, object, ++entry});
        }
    });
    return functions;
}

} // namespace

void PlanGeneratorSource(TEstate& estate, qint32 file, const TEstateText& text) {
    qint32 object = 0;
    ForEachLine(text, [&](const QString& line) {
        const QString tag = GeneratorTag(line);
        if (tag == QLatin1String(":map"))
            estate.Define(QStringLiteral("MAP:") + GeneratorName(line), TTarget{file, ++object, 0});
        else if (tag == QLatin1String(":program"))
            estate.Define(QStringLiteral("PGM:") + GeneratorName(line), TTarget{file, ++object, 0});
    });
}

// Map lines declare map fields, program lines working storage.
void WriteGeneratorSource(TEstate& estate, qint32 fileId, const TEstateText& text) {
    TSourceFile file(estate.Writer(), fileId, lang::VisualAgeGenerator);
    const QHash<QString, TTarget> functions = GeneratorFunctions(fileId, text);
    qint32 program = 0;
    QString programName;
    int declarations = 0;
    ForEachLine(text, [&](const QString& line) {
        const QString tag = GeneratorTag(line);
        if (tag == QLatin1String(":map")) {
            file.At(file.AddObject(
                TObjectInfo::Named(GeneratorName(line), "VAGen Map", icon::ScreenMap)));
            declarations = section::MapField;
        } else if (tag == QLatin1String(":program")) {
            programName = GeneratorName(line);
            program =
                file.AddObject(TObjectInfo::Named(programName, "VAGen Program", icon::Program));
            file.At(program);
            declarations = section::WorkingStorage;
        } else if (tag == QLatin1String(":function")) {
            const QString name = GeneratorName(line);
            const qint32 entry = functions.value(name).entry;
            file.AddEntry(program, entry, name, programName);
            file.At(program, entry);
        } else if (tag == QLatin1String(":eprogram.")) {
            file.At(program);
        }
        TSourceRow row(line, TSourceRow::Flows::Cobol, declarations);
        row.CloseLiteralsAs(word::Symbol);
        EmitCalling(estate, file, std::move(row), functions);
    });
}

// --- SQL DDL ----------------------------------------------------------------

namespace {

QString CreatedTable(const QString& line) {
    static const QRegularExpression create(QStringLiteral("^CREATE TABLE ([A-Z0-9_]+) \\($"));
    return create.match(line).captured(1);
}

QString CreatedProcedure(const QString& line) {
    static const QRegularExpression create(QStringLiteral("^CREATE PROCEDURE ([A-Z0-9_]+) \\($"));
    return create.match(line).captured(1);
}

} // namespace

void PlanTables(TEstate& estate, qint32 file, const TEstateText& text) {
    qint32 object = 0;
    for (qsizetype line = 0; line < text.Size(); ++line) {
        if (const QString table = CreatedTable(text[line]); !table.isEmpty())
            estate.Define(QStringLiteral("TAB:") + table, TTarget{file, ++object, 0});
        else if (!CreatedProcedure(text[line]).isEmpty())
            ++object;
    }
}

// A column definition starts with the column's name and type, a parameter
// of a procedure with its mode, name and type. The statements of a
// procedure's body have the data flows of their SET clauses.
void WriteTables(TEstate& estate, qint32 fileId, const TEstateText& text) {
    static const QRegularExpression column(
        QStringLiteral("^\\s+([A-Z_][A-Z0-9_]*)\\s+([A-Z]+(?:\\([0-9,]+\\))?)"));
    static const QRegularExpression parameter(QStringLiteral(
        "^\\s+(?:IN|OUT|INOUT)\\s+([A-Z_][A-Z0-9_]*)\\s+([A-Z]+(?:\\([0-9,]+\\))?)"));
    static const QStringList constraints = {QStringLiteral("PRIMARY"), QStringLiteral("FOREIGN"),
                                            QStringLiteral("UNIQUE"), QStringLiteral("CONSTRAINT"),
                                            QStringLiteral("CHECK")};
    TSourceFile file(estate.Writer(), fileId, lang::SqlDdl);
    qint32 object = 0; // the table or procedure the lines are in
    bool procedure = false;
    ForEachLine(text, [&](const QString& line) {
        const QRegularExpression& declaration = procedure ? parameter : column;
        if (const QString name = CreatedTable(line); !name.isEmpty()) {
            object = file.AddObject(TObjectInfo::Named(name, "DB2 Table", icon::Table));
            procedure = false;
            file.At(object);
        } else if (const QString name = CreatedProcedure(line); !name.isEmpty()) {
            object =
                file.AddObject(TObjectInfo::Named(name, "DB2 Stored Procedure", icon::Function));
            procedure = true;
            file.At(object);
        } else if (const QRegularExpressionMatch match = declaration.match(line);
                   object > 0 && match.hasMatch() && !constraints.contains(match.captured(1))) {
            file.Emit(TSourceRow(
                Declaring(line, match.capturedStart(1), match.capturedEnd(1), match.captured(2)),
                TSourceRow::Flows::None, procedure ? section::Linkage : section::Column));
            return;
        }
        EmitCalling(
            estate, file,
            TSourceRow(line, procedure ? TSourceRow::Flows::Cobol : TSourceRow::Flows::None));
    });
}

// --- Assembler --------------------------------------------------------------

namespace {

QString ControlSection(const QString& line) {
    static const QRegularExpression csect(QStringLiteral("^(\\S+)\\s+CSECT\\b"));
    return csect.match(line).captured(1);
}

} // namespace

void PlanAssembler(TEstate& estate, qint32 file, const TEstateText& text) {
    qint32 object = 0;
    for (qsizetype line = 0; line < text.Size(); ++line)
        if (const QString name = ControlSection(text[line]); !name.isEmpty())
            estate.Define(QStringLiteral("FUN:") + name, TTarget{file, ++object, 0});
}

void WriteAssembler(TEstate& estate, qint32 fileId, const TEstateText& text) {
    TSourceFile file(estate.Writer(), fileId, lang::Assembler);
    ForEachLine(text, [&](const QString& line) {
        if (line.startsWith(QLatin1Char('*'))) {
            file.Comment(line);
            return;
        }
        if (const QString name = ControlSection(line); !name.isEmpty())
            file.At(file.AddObject(TObjectInfo::Named(name, "Assembler Function", icon::Function)));
        EmitCalling(estate, file, TSourceRow(line, TSourceRow::Flows::None));
    });
}

// --- Java -------------------------------------------------------------------

namespace {

// One row of a Java file and where it goes. A note ("//@ ...") after the
// code tells what the writer cannot see: "calls Class.method [via Class |
// uncertain], ..." for the targets of the row's call word, "extends
// Outer.Class" for a super class found through another class's file.
struct TJavaRow {
    qsizetype line = 0;
    QString text;
    QString note;
    QString owner; // the class the row is in
    qint32 object = 0;
    qint32 entry = 0;
    int section = 0;
    QString method; // the first row of a method
    bool header = false;
    TObjectInfo info; // of a class, on its header row
};

struct TJavaFile {
    QString package;
    std::vector<TJavaRow> rows;
};

// Rows inside a method body are local; other rows in a class declare
// fields, or begin a method when they hold a "(".
TJavaFile ParseJava(const TEstateText& text) {
    static const QRegularExpression header(
        QStringLiteral("\\b(class|interface)\\s+(\\w+)(?:\\s+extends\\s+([\\w.]+))?"));
    static const QRegularExpression method(QStringLiteral("(\\w+)\\s*\\("));
    struct TClass {
        QString name;
        qint32 object;
        qint32 methods = 0;
    };
    TJavaFile java;
    std::vector<TClass> classes;
    qint32 objects = 0;
    int depth = 0; // of braces inside the current method
    for (qsizetype number = 0; number < text.Size(); ++number) {
        const QString& line = text[number];
        if (line.isEmpty())
            continue;
        try {
            TJavaRow row;
            row.line = number;
            const qsizetype note = line.indexOf(QLatin1String("//@"));
            row.text = note < 0 ? line : line.left(note);
            while (row.text.endsWith(QLatin1Char(' ')))
                row.text.chop(1);
            row.note = note < 0 ? QString() : line.mid(note + 3).trimmed();
            const QString content = row.text.trimmed();
            const QRegularExpressionMatch declared = header.match(content);
            if (depth > 0) {
                row.section = section::Local;
                row.entry = classes.back().methods;
                depth += (content.endsWith(QLatin1Char('{')) ? 1 : 0) -
                         (content.startsWith(QLatin1Char('}')) ? 1 : 0);
            } else if (classes.empty() && content.startsWith(QLatin1String("package "))) {
                java.package = content.mid(8).chopped(1);
                row.object = 1; // the first row of the first class
            } else if (declared.hasMatch() && content.endsWith(QLatin1Char('{'))) {
                const QString extends = row.note.startsWith(QLatin1String("extends "))
                                            ? row.note.mid(8).trimmed()
                                            : declared.captured(3);
                row.header = true;
                row.info.id = ++objects;
                row.info.name = declared.captured(2);
                row.info.identifier = row.info.name;
                row.info.type = declared.captured(1) == QLatin1String("interface")
                                    ? QStringLiteral("Java Interface")
                                    : QStringLiteral("Java Class");
                row.info.icon = icon::Class;
                row.info.parent = classes.empty() ? QString() : classes.back().name;
                row.info.inherits = extends.section(QLatin1Char('.'), -1);
                row.info.inheritsParent = extends.section(QLatin1Char('.'), 0, -2);
                classes.push_back(TClass{row.info.name, row.info.id});
            } else if (classes.empty()) {
                throw Failure(QStringLiteral("code outside a class"));
            } else if (content == QLatin1String("}")) {
                row.owner = classes.back().name;
                row.object = classes.back().object;
                classes.pop_back();
            } else if (content.contains(QLatin1Char('('))) {
                row.section = section::Local;
                row.entry = ++classes.back().methods;
                row.method = method.match(content).captured(1);
                depth = content.endsWith(QLatin1Char('{')) ? 1 : 0;
            } else {
                row.section = section::Field;
            }
            if (row.object == 0) {
                row.owner = classes.back().name;
                row.object = classes.back().object;
            }
            if (!row.note.isEmpty() && !row.note.startsWith(row.header ? QLatin1String("extends ")
                                                                       : QLatin1String("calls ")))
                throw Failure(QStringLiteral("unknown note //@ ") + row.note);
            java.rows.push_back(row);
        } catch (const EQXError& e) {
            throw text.Error(number, e.Message());
        }
    }
    if (!classes.empty() || depth > 0)
        throw text.Error(text.Size() - 1, QStringLiteral("a brace that does not close"));
    return java;
}

void CallAsNoted(const TEstate& estate, TSourceRow& row, const QString& note) {
    if (row.CallCount() != 1)
        throw Failure(QStringLiteral("a note //@ calls needs one call word in the row"));
    for (const QString& call : note.mid(6).split(QLatin1Char(','))) {
        const QStringList words = call.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const TTarget target = estate.Find(QStringLiteral("MTH:") + words.value(0));
        if (words.size() == 1) {
            row.Call(0, target);
        } else if (words.size() == 2 && words[1] == QLatin1String("uncertain")) {
            row.Call(0, target, -1, 0);
        } else if (words.size() == 3 && words[1] == QLatin1String("via")) {
            const TTarget through = estate.Find(QStringLiteral("CLS:") + words[2]);
            row.Call(0, target, through.file, through.object);
        } else {
            throw Failure(QStringLiteral("a call reads Class.method [via Class | uncertain]: ") +
                          call);
        }
    }
}

} // namespace

void PlanJava(TEstate& estate, qint32 file, const TEstateText& text) {
    for (const TJavaRow& row : ParseJava(text).rows) {
        if (row.header)
            estate.Define(QStringLiteral("CLS:") + row.info.name, TTarget{file, row.info.id, 0});
        if (!row.method.isEmpty())
            estate.Define(QStringLiteral("MTH:") + row.owner + QLatin1Char('.') + row.method,
                          TTarget{file, row.object, row.entry});
    }
}

void WriteJava(TEstate& estate, qint32 fileId, const TEstateText& text, qint32 package,
               qint32 packageFile) {
    const TJavaFile java = ParseJava(text);
    TSourceFile file(estate.Writer(), fileId, lang::Java);
    for (const TJavaRow& row : java.rows) {
        try {
            if (row.header) {
                TObjectInfo info = row.info;
                info.inPackage = package;
                file.AddObject(info);
                estate.Writer().Package(packageFile, package, java.package, info.name, fileId,
                                        info.id);
            }
            if (!row.method.isEmpty())
                file.AddEntry(row.object, row.entry, row.method, row.owner);
            file.At(row.object, row.entry);
            TSourceRow source(row.text, TSourceRow::Flows::Assignment, row.section);
            if (row.note.startsWith(QLatin1String("calls ")))
                CallAsNoted(estate, source, row.note);
            else if (source.CallCount() > 0)
                throw Failure(QStringLiteral("a call word without a note //@ calls"));
            file.Emit(source);
        } catch (const EQXError& e) {
            throw text.Error(row.line, e.Message());
        }
    }
}

} // namespace sample
