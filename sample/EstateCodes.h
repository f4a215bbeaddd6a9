#pragma once

#include "repository/SchemaNames.h"

// The codes the sample estate writes, as a loader of a real estate would.
// Language ids, icons and word and section types that the view gives a
// meaning to are the repository's own codes; the others are this sample's
// choice.
namespace estate {

// QXFILE.QXLanguageID and QXWORD.QXLanguageID. Every word carries the
// language of its file.
namespace lang {
inline constexpr int Cobol = 20100;
inline constexpr int Copybook = 20101;
inline constexpr int Jcl = 20200;
inline constexpr int SqlDdl = 20300;
inline constexpr int Java = 20400;
inline constexpr int VisualAgeGenerator = 20500; // screen maps drawn by the form viewer
inline constexpr int Bms = 20525;                // CICS BMS map macros, ditto
inline constexpr int Assembler = 20600;
inline constexpr int LinkEdit = 20700;
} // namespace lang

// QXATTRIBUTE.QXAttributeType
namespace attr {
inline constexpr int System = qx::code::AttributeSystem;
inline constexpr int Computer = qx::code::AttributeComputer;
inline constexpr int Application = qx::code::AttributeApplication;
} // namespace attr

// Image indexes of the host's image list, as stored in QXATTRIBUTE.QXIcon and
// QXOBJECT.QXIcon. A tree shows an object with QXIcon + 1 when it runs
// bottom-up (copy members keep theirs).
namespace icon {
inline constexpr int System = 1;
inline constexpr int Mainframe = 2; // computers use 2..8
inline constexpr int Midrange = 3;
inline constexpr int RackServer = 4;
inline constexpr int Workstation = 6;
inline constexpr int Terminal = 8;
inline constexpr int OnlineApplication = 9;
inline constexpr int BatchApplication = 10;
// A computer listed among applications.
inline constexpr int ComputerAsApplication = qx::code::IconComputerAmongApplications;

// A copy member as expanded inside its includer.
inline constexpr int HiddenPart = qx::code::IconHiddenPart;
inline constexpr int Class = 14;
inline constexpr int ScreenMap = 16; // enables the form viewer
inline constexpr int Record = 18;
inline constexpr int Table = 20;      // persistent storage
inline constexpr int CopyMember = 22; // shows every line of its file
inline constexpr int Function = 39;   // shows its own lines
inline constexpr int OtherObject = 41;
inline constexpr int Dataset = 43;      // persistent storage
inline constexpr int ObjectInFile = 50; // named " in " its file
inline constexpr int ObjectInFileAlt = 51;
inline constexpr int Program = 52;       // called as a whole; shows every line of its file
inline constexpr int NestedProgram = 54; // shows its own lines
} // namespace icon

// QXWORD.QXWordType
namespace word {
inline constexpr int Keyword = 1;
inline constexpr int Symbol = 2;
inline constexpr int Number = 3;
inline constexpr int Name = 4; // names of paragraphs, programs, maps, steps
// OF, IN, "." between a qualifier and the qualified name.
inline constexpr int Qualifier = qx::code::WordQualifier;
inline constexpr int Literal = 1001; // every word of a quoted literal, the quotes included
inline constexpr int Declaration = qx::code::WordVariableDeclaration;
inline constexpr int Use = qx::code::WordVariableUse;
} // namespace word

// QXWORD.QXSectionType: the declaration section of a declared variable, and
// 24 for a use that is an argument of a call.
namespace section {
inline constexpr int FileSection = 21;
inline constexpr int WorkingStorage = 22;
inline constexpr int Linkage = 23;
inline constexpr int CallArgument = qx::code::SectionCallArgument;
inline constexpr int Field = 25;
inline constexpr int Local = 26;
inline constexpr int MapField = 27;
inline constexpr int Column = 28;
} // namespace section

} // namespace estate
