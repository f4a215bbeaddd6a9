#pragma once

#include "Estate.h"
#include "SourceFile.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

// One field of a record copy member; an empty picture makes a group item.
struct TCopyField {
    int level;
    QString name;
    QString picture;
};

// A copy member: either record fields or paragraphs (name and statement
// templates, see TSourceRow). Stored once as a visible copy member in its
// own file, and once more inside every program that copies it, as a hidden
// part named after that program.
struct TCopybook {
    QString name;
    std::vector<TCopyField> fields;
    std::vector<std::pair<QString, QStringList>> paragraphs;
    TTarget member; // the visible copy member
};

// A program another program may call, with the record it passes.
struct TCallable {
    QString name;
    TTarget target;
    QString argument;
};

// Writes one COBOL program into its file: divisions, declarations, COPY
// statements with their hidden parts, sub-objects, paragraphs and generated
// business rules. Statements are TSourceRow templates written in area B.
class TCobolProgram {
public:
    TCobolProgram(TEstate& estate, TSourceFile& file, TRandom& random, const TObjectInfo& info);

    qint32 Object() const { return FObject; }
    const QString& Name() const { return FName; }
    TTarget Target(qint32 entry = 0) const { return TTarget{FFile.Id(), FObject, entry}; }

    // Identification division with a comment line.
    void Header(const QString& comment, const QString& author = QStringLiteral("KORVANE IT"));
    qint32 Line(const QString& areaA); // a row starting in area A
    qint32 Comment(const QString& text);

    void Section(const QString& header, int sectionType); // e.g. "WORKING-STORAGE SECTION"
    void DeclarationSection(int sectionType) { FSection = sectionType; } // without a header row
    // A data description entry; value is written as it stands after VALUE.
    void Decl(int level, const QString& name, const QString& picture = QString(),
              const QString& value = QString());
    // COPY statement: the hidden part follows it in this file.
    void Copy(const TCopybook& book);
    // A record or dataset declared inside this program (its rows follow);
    // EndSubObject returns to the program itself.
    qint32 BeginSubObject(TObjectInfo info);
    void EndSubObject();

    // Declares the paragraphs (and sections) in order, so that PERFORM can
    // name one written later. The first is the program's entry point.
    void Paragraphs(const QStringList& names);
    void Procedure(const QString& usingClause = QString());
    void Paragraph(const QString& name, bool section = false);

    qint32 Stmt(const QString& text);
    qint32 Stmt(const QString& text, const TTarget& call, qint32 inheritsFile = 0,
                qint32 inheritsObject = 0);
    qint32 Emit(const TSourceRow& row) { return FFile.Emit(row); }
    void Perform(const QString& paragraph, const QString& tail = QString());
    // Statements between BeginBlock and EndBlock are indented one level.
    void BeginBlock() { FIndent += QStringLiteral("    "); }
    void EndBlock() { FIndent.chop(4); }
    void Call(const QString& program, const TTarget& target, const QStringList& arguments,
              const QString& tail = QString());
    TTarget ParagraphTarget(const QString& name) const;

    // Generated business-rule paragraph names (numbered from 5000) and their
    // contents: moves, computations, conditions, performs of each other and
    // calls of the given programs, over the variables declared so far.
    QStringList RuleNames(int count);
    void Rules(const QStringList& names, const std::vector<TCallable>& callables);

    void End(); // END PROGRAM

    static QString AreaB(const QString& text) { return QStringLiteral("           ") + text; }

private:
    void Remember(const QString& name, const QString& picture);
    void RuleStatement(const QStringList& names, const QString& self,
                       const std::vector<TCallable>& callables, bool last, bool nested);

    TEstate& FEstate;
    TSourceFile& FFile;
    TRandom& FRandom;
    QString FName;
    qint32 FObject;
    int FSection = 0;
    QString FIndent;
    qint32 FCurrentObject;
    QHash<QString, qint32> FParagraphs; // entries of this program by name
    QHash<QString, TTarget> FCopiedParagraphs;
    QStringList FWritten; // paragraphs whose entry record is written
    QStringList FNumbers, FAlphas;
    std::vector<std::pair<QString, QString>> FQualified; // field, record
};

namespace sample {
// The payment record copy member of the demo's suite, which programs outside
// the suite copy too.
TCopybook DemoPaymentRecord(const TEstate& estate);
} // namespace sample
