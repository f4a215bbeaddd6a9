#pragma once

#include "Estate.h"
#include "EstateText.h"
#include "SourceFile.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

// A copy member: its text and the visible copy member object in its own file.
struct TCopybook {
    TEstateText text;
    TTarget member;
};

// The copy members a program can copy, by name.
using TCopyLibrary = QHash<QString, TCopybook>;

// A program the generated rules may call, with the record it passes.
struct TCallable {
    QString name;
    TTarget target;
    QString argument;
};

// The generated business rules of a program: how many paragraphs (drawn
// from the range) and the programs they may call.
struct TRules {
    int min = 1;
    int max = 2;
    std::vector<TCallable> callables;
};

// Writes the text of a COBOL program or copy member into its file, as a
// loader stores it (sample/estate/README.md describes the text):
//  - the program is an object; its paragraphs and sections are its entries,
//    numbered in the order they are written, then the generated rules;
//  - data description entries are declarations of their section;
//  - COPY calls the visible copy member and a hidden part of this file named
//    after the program, which holds the member's entries and paragraphs;
//  - a program nested in the procedure division is an object of its own;
//  - a call word [>NAME] calls a paragraph of the program, an object of the
//    file, or what the estate calls by the name; a call through a data name
//    that has a VALUE is an uncertain call of what the value names;
//  - in embedded SQL the host variables of an INTO receive the columns of
//    the SELECT row before, and the columns of an INSERT the VALUES after.
//  - the arguments of a call of a nested program flow into the names of its
//    PROCEDURE DIVISION USING row.
class TCobolProgram {
public:
    TCobolProgram(TEstate& estate, TSourceFile& file, TRandom& random, const TObjectInfo& info,
                  const TCopyLibrary& library);

    // A program from its IDENTIFICATION DIVISION to its END PROGRAM.
    void WriteProgram(const TEstateText& text, const TRules& rules);
    // A copy member: data description entries and paragraphs, no divisions.
    void WriteMember(const TEstateText& text);

private:
    enum class Division { Other, Data, Procedure };
    enum class SqlClause { Other, Select, Columns };

    struct TDataEntry {
        int level = 0;
        QString name, picture, value;
        QString row; // the line as a row template
    };

    qsizetype Write(const TEstateText& text, qsizetype first, const TRules& rules);
    bool WriteLine(const TEstateText& text, qsizetype line, const TRules& rules);
    void Directive(const QString& directive, const TRules& rules);
    void Procedure(const TEstateText& text, qsizetype line, const TRules& rules);
    qsizetype Nested(const TEstateText& text, qsizetype line);
    void Copy(const QString& line, const QString& name);
    static QStringList MemberParagraphs(const TEstateText& text);
    void WriteMemberLines(const TEstateText& text, bool comments,
                          const std::function<void(const QString&)>& paragraph);

    static TDataEntry DataEntry(const QString& line);
    TDataEntry Declaration(const QString& line);
    void Remember(const QString& name, const QString& picture);
    void EnterParagraph(const QString& name);
    qint32 Statement(const QString& line);
    qint32 Emit(const TSourceRow& row);
    void Comment(const QString& line);
    TTarget Target(qint32 entry = 0) const { return TTarget{FFile.Id(), FObject, entry}; }
    TTarget ParagraphTarget(const QString& name) const;

    // The generated business rules: paragraphs numbered from 5000 with moves,
    // computations, conditions, performs of each other and calls of the
    // callables, over the data items declared so far.
    QStringList RuleNames(int count);
    void Rules(const std::vector<TCallable>& callables);
    void RuleStatement(const QString& self, const std::vector<TCallable>& callables, bool last,
                       bool nested);
    qint32 Stmt(const QString& text);
    qint32 Stmt(const QString& text, const TTarget& call);
    void Perform(const QString& paragraph, const QString& tail = QString());
    void Call(const QString& program, const TTarget& target, const QString& argument);

    TEstate& FEstate;
    TSourceFile& FFile;
    TRandom& FRandom;
    const TCopyLibrary& FLibrary;
    QString FName;
    qint32 FObject;
    qint32 FInPackage;
    qint32 FCurrentObject;
    Division FDivision = Division::Other;
    int FSection = 0;
    QString FIndent;
    QHash<QString, qint32> FParagraphs; // entries of this program by name
    QHash<QString, TTarget> FCopiedParagraphs;
    QStringList FWritten; // paragraphs whose entry record is written
    QStringList FRuleNames;
    QStringList FNumbers, FAlphas;
    std::vector<std::pair<QString, QString>> FQualified; // field, record
    QHash<QString, QString> FValues;                     // VALUE clauses by data name
    // The row before, for the SQL host variable flows.
    qint32 FLastRow = 0;
    SqlClause FLastClause = SqlClause::Other;
    std::vector<qint32> FLastVariables;
};

namespace sample {
// The copy members of a suite copy; the demo's are copied outside the suite too.
TCopyLibrary SuiteCopyLibrary(const TEstate& estate, const TSuiteCopy& copy);
} // namespace sample
