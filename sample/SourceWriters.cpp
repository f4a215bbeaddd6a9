#include "SourceWriters.h"

#include "EstateCodes.h"

#include <QHash>
#include <QRegularExpression>

using namespace estate;

namespace sample {
namespace {

EQXError Failure(const QString& message) {
    return EQXError(QStringLiteral("Sample estate: ") + message);
}

TObjectInfo Info(const QString& name, const char* type, int objectIcon, qint32 inPackage = 0) {
    TObjectInfo info;
    info.name = name;
    info.identifier = name;
    info.type = QLatin1String(type);
    info.icon = objectIcon;
    info.inPackage = inPackage;
    return info;
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

struct TMacro {
    QString label;
    QString statement; // the macro and its operands
    QString macro;
};

TMacro Macro(const QString& line) {
    TMacro m;
    if (!line.startsWith(QLatin1Char(' ')))
        m.label = line.section(QLatin1Char(' '), 0, 0);
    m.statement = line.mid(m.label.size()).trimmed();
    m.macro = m.statement.section(QLatin1Char(' '), 0, 0);
    return m;
}

bool StartsMapSet(const TMacro& m) {
    return m.macro == QLatin1String("DFHMSD") && m.statement != QLatin1String("DFHMSD TYPE=FINAL");
}

} // namespace

void PlanMapSet(TEstate& estate, qint32 file, const TEstateText& text) {
    qint32 object = 0;
    for (qsizetype line = 0; line < text.Size(); ++line) {
        const TMacro m = Macro(text[line]);
        if (StartsMapSet(m))
            ++object;
        else if (m.macro == QLatin1String("DFHMDI"))
            estate.Define(QStringLiteral("MAP:") + m.label, TTarget{file, ++object, 0});
    }
}

// The label takes columns 1 to 9, and more when it is longer.
void WriteMapSet(TEstate& estate, qint32 fileId, const TEstateText& text) {
    TSourceFile file(estate.Writer(), fileId, lang::Bms);
    qint32 set = 0;
    QString setName;
    ForEachLine(text, [&](const QString& line) {
        const TMacro m = Macro(line);
        QString label = m.label;
        if (StartsMapSet(m) || m.macro == QLatin1String("DFHMDI")) {
            if (m.label.isEmpty())
                throw Failure(m.macro + QStringLiteral(" without a name"));
            if (StartsMapSet(m)) {
                set = file.AddObject(Info(m.label, "BMS Mapset", icon::OtherObject));
                setName = m.label;
                file.At(set);
            } else if (set == 0) {
                throw Failure(QStringLiteral("a map outside a map set"));
            } else {
                TObjectInfo map = Info(m.label, "BMS Map", icon::ScreenMap);
                map.parent = setName;
                file.At(file.AddObject(map));
            }
            label = QStringLiteral("[>") + m.label + QLatin1Char(']');
        } else if (m.macro == QLatin1String("DFHMDF") && !m.label.isEmpty()) {
            static const QRegularExpression length(QStringLiteral("LENGTH=(\\d+)"));
            const QRegularExpressionMatch match = length.match(m.statement);
            if (!match.hasMatch())
                throw Failure(QStringLiteral("a named field without LENGTH"));
            label = Declaring(m.label, 0, m.label.size(),
                              QStringLiteral("X(") + match.captured(1) + QLatin1Char(')'));
        } else if (m.macro == QLatin1String("DFHMSD")) {
            file.At(set);
        }
        const QString row =
            m.label.isEmpty()
                ? line
                : label + QString(qMax(1, 9 - int(m.label.size())), QLatin1Char(' ')) + m.statement;
        file.Emit(TSourceRow(row, TSourceRow::Flows::None, section::MapField));
    });
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
            current = file.AddObject(
                Info(name, isJob ? "JCL Job" : "JCL Procedure", icon::OtherObject, package));
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

} // namespace sample
