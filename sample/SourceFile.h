#pragma once

#include "EstateWriter.h"

#include <QHash>
#include <QString>
#include <QStringView>

#include <utility>
#include <vector>

// Where a call goes: a file, an object in it and optionally an entry.
struct TTarget {
    qint32 file = 0;
    qint32 object = 0;
    qint32 entry = 0;
};

// One line of source and its words, built from a template. The template is
// the line as it reads, with the words the view cares about in brackets:
//
//   [NAME]          a use of a variable (word type 1012)
//   [&NAME]         a use that is an argument of a call (section type 24)
//   [NAME OF QUAL]  a qualified use (also IN), stored qualifier first as
//                   QUAL, OF, NAME: the view takes the word before a
//                   qualification operator as the qualifier of the word after
//   [Qual.name]     a qualified use written with "."
//   [!NAME:TYPE]    a declaration (1011); TYPE is the text shown after " as "
//   [>NAME]         the name a call is made by; [>'NAME'] when quoted
//
// The rest is split into words the way a loader tokenises: a quoted literal
// becomes its quotes and its blank-separated words (all 1001); "(", ")",
// ",", "=", ";", ":", "{" and "}" are words of their own; a period that ends
// a word is one too; a picture string after PIC stays whole.
//
// Data flows between the bracketed words follow from the statement: COBOL
// MOVE and ADD flow from the words before TO to those after it, SUBTRACT
// likewise around FROM, COMPUTE, an SQL SET and assignments from the right of
// "=" to the left. Flows between rows are added to the file.
class TSourceRow {
public:
    enum class Flows { None, Cobol, Assignment };

    // Throws EQXError for a bracket that does not close or a declaration
    // without its type.
    TSourceRow(QStringView source, Flows flows, int declarationSection = 0, int level = 0);

    // Records a call made by the n-th [>NAME] word of the row (0-based).
    void Call(int marker, const TTarget& target, qint32 inheritsFile = 0,
              qint32 inheritsObject = 0);
    // Word id of the n-th bracketed variable (use or declaration, 0-based).
    qint32 Variable(int marker) const { return FVariables.at(std::size_t(marker)); }
    int VariableCount() const { return int(FVariables.size()); }
    // Word ids of the uses that are arguments of a call ([&NAME]), in order.
    std::vector<qint32> Arguments() const;
    // The [>NAME] words: how many, and the name each calls (without quotes).
    int CallCount() const { return int(FCallWords.size()); }
    const QString& CallName(int marker) const;

    const QString& Text() const { return FText; }

    // Gives the quotes that close literals the type `type`, as the loaders of
    // screen maps store them: the literal's words (1001) end at the quote.
    void CloseLiteralsAs(int type);
    // Text the row holds that is no words (remarks, the continuation and
    // sequence columns of fixed-format macro sources).
    void AppendUntokenized(const QString& text) { FText += text; }

private:
    friend class TSourceFile;

    struct Word {
        QString text;
        int type;
        int section;
        int level;
        QString identifier;
    };
    struct PendingCall {
        qint32 word;
        TTarget target;
        qint32 inheritsFile;
        qint32 inheritsObject;
    };

    qint32 Add(const QString& text, int type, int section = 0, int level = 0,
               const QString& identifier = QString());
    void Plain(QStringView text);
    void Marker(QStringView marker);
    void DeriveFlows(Flows flows);

    QString FText;
    std::vector<Word> FWords;
    std::vector<qint32> FVariables; // the word named by each variable marker
    std::vector<bool> FIsDeclaration;
    std::vector<qint32> FCallWords;
    std::vector<qint32> FClosingQuotes; // word ids
    std::vector<PendingCall> FCalls;
    std::vector<std::pair<qint32, qint32>> FFlows;
    int FSection;
    int FLevel;
};

// The description of one object of a file.
struct TObjectInfo {
    qint32 id = 0;
    QString name;
    QString identifier;
    QString type;
    int icon = 0;
    QString parent;         // QXSubObjectParentName: identifier of the enclosing object
    QString inherits;       // QXObjectInherits
    QString inheritsParent; // QXInheritsParentName
    qint32 inPackage = 0;

    // An object whose identifier is its name.
    static TObjectInfo Named(const QString& name, const char* type, int objectIcon,
                             qint32 inPackage = 0) {
        TObjectInfo info;
        info.name = name;
        info.identifier = name;
        info.type = QLatin1String(type);
        info.icon = objectIcon;
        info.inPackage = inPackage;
        return info;
    }
};

// Writes one source file: its objects, entries, rows and words, and the
// dependency and data-flow records of its rows. Row ids run through the file
// (data flows name a row by file and row id alone); word ids through a row.
class TSourceFile {
public:
    TSourceFile(TEstateWriter& writer, qint32 id, int language);

    qint32 Id() const { return FId; }

    // Object ids run from 1 through the file.
    qint32 NextObjectID() const { return FNextObject; }
    qint32 ReserveObjectID(const QString& name); // for an object written later
    qint32 AddObject(TObjectInfo info);          // info.id 0 takes the next id
    // The first object added or reserved under the name, or 0.
    qint32 ObjectNamed(const QString& name) const { return FObjectNames.value(name); }
    void AddEntry(qint32 object, qint32 entry, const QString& name, const QString& identifier);

    // Where the following rows go (entry 0: outside every entry).
    void At(qint32 object, qint32 entry = 0) {
        FObject = object;
        FEntry = entry;
    }
    qint32 CurrentEntry() const { return FEntry; }

    qint32 Emit(const TSourceRow& row);
    qint32 Comment(const QString& text); // a row without words

    // A flow between words of two rows of this file.
    void Flow(qint32 fromRow, qint32 fromWord, qint32 toRow, qint32 toWord);

    // A call from the row to an object of this file with the given argument
    // words; their values flow into the parameters that object receives.
    void PassArguments(qint32 object, qint32 row, std::vector<qint32> words);
    // The object's parameter words in its row: each receives the argument in
    // the same place of every call passed to it before.
    void ReceiveArguments(qint32 object, qint32 row, const std::vector<qint32>& words);

private:
    TEstateWriter& FWriter;
    qint32 FId;
    int FLanguage;
    qint32 FNextObject = 1;
    QHash<QString, qint32> FObjectNames;
    qint32 FNextRow = 1;
    qint32 FObject = 0;
    qint32 FEntry = 0;
    struct PassedArguments {
        qint32 object;
        qint32 row;
        std::vector<qint32> words;
    };
    std::vector<PassedArguments> FPassed;
};
