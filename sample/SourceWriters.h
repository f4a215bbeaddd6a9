#pragma once

#include "Estate.h"
#include "EstateText.h"

#include <QString>

// Writers of the estate's texts in languages other than COBOL (see
// sample/estate/README.md). A Plan function defines the keys by which other
// files call the text's objects; its Write function writes the file's
// objects, entries, rows and words. Call words [>NAME] call an object of the
// same file, or else what the estate calls by that name.
namespace sample {

// CICS BMS: the map set (DFHMSD) and its maps (DFHMDI, called as MAP:name)
// are objects; a labelled field (DFHMDF) declares its name with its LENGTH.
void PlanMapSet(TEstate& estate, qint32 file, const TEstateText& text);
void WriteMapSet(TEstate& estate, qint32 file, const TEstateText& text);

// JCL: the job and its in-stream procedures are objects of the package;
// their steps (EXEC) are their entries.
void WriteJobStream(TEstate& estate, qint32 file, const TEstateText& text, qint32 package,
                    const QString& packageName);

// VisualAge Generator external source: the map (MAP:name) and the program
// (PGM:name) are objects, the program's functions its entries.
void PlanGeneratorSource(TEstate& estate, qint32 file, const TEstateText& text);
void WriteGeneratorSource(TEstate& estate, qint32 file, const TEstateText& text);

// SQL DDL: every table (TAB:name) is an object declaring its columns, every
// procedure an object declaring its parameters.
void PlanTables(TEstate& estate, qint32 file, const TEstateText& text);
void WriteTables(TEstate& estate, qint32 file, const TEstateText& text);

// Assembler: every control section (FUN:name) is a function object; a "*"
// in column 1 makes a comment.
void PlanAssembler(TEstate& estate, qint32 file, const TEstateText& text);
void WriteAssembler(TEstate& estate, qint32 file, const TEstateText& text);

// Java: every class and interface (CLS:name), nested ones too, is an object
// of the package named by the file's package statement, recorded in the
// package file; its methods (MTH:Class.method) are its entries.
void PlanJava(TEstate& estate, qint32 file, const TEstateText& text);
void WriteJava(TEstate& estate, qint32 file, const TEstateText& text, qint32 package,
               qint32 packageFile);

} // namespace sample
