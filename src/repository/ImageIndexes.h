#pragma once

// Picture indexes the views give tree nodes, and object icons they test. An
// object's BottomUp picture is the index after its TopDown one.
namespace image {

constexpr int IconInFile = 50;              // an object shown with its file's name, TopDown
constexpr int IconInFileBottomUp = 51;      // an object shown with its file's name, BottomUp
constexpr int IconObjectCalledAsWhole = 52; // an object whose calls name no entry
constexpr int IconSameBothWays = 22;        // an icon with no separate BottomUp picture
constexpr int IconProgram = 52;             // a program
constexpr int IconCopyMember = 22;          // a copy member
constexpr int IconNestedProgram = 54;       // a program nested in another
constexpr int IconFunction = 39;            // a function
constexpr int ImagePackageTopDown = 12;     // a package, TopDown
constexpr int ImagePackageBottomUp = 13;    // a package, BottomUp
constexpr int ImageEntryTopDown = 29;       // an entry, TopDown
constexpr int ImageEntryBottomUp = 32;      // an entry, BottomUp
constexpr int ImageRow = 0;                 // a line of code
constexpr int ImageLineWithCall = 23;       // + 0..2: a line that calls, Code view TopDown
constexpr int ImageLineCallingParent = 27;  // + 0..1: the line calling its parent, BottomUp
constexpr int ImageVariable = 35;           // a variable
constexpr int ImagePersistentVariable = 45; // a variable of persistent storage
// The Data view: the declaring scope of a root variable (+1 BottomUp), a
// variable its value flows to, or comes from, and the variable after a
// BottomUp expansion that found its sources.
constexpr int ImageDeclarationScope = 35;
constexpr int ImageFlowTarget = 37;
constexpr int ImagePersistentFlowTarget = 47;
constexpr int ImageFlowSource = 35;
constexpr int ImagePersistentFlowSource = 46;
constexpr int ImageVariableWithSources = 38;
constexpr int ImagePersistentVariableWithSources = 48;

// Whether an object icon stands for persistent storage (a database table or a
// data set).
inline bool IsPersistentStorage(int icon) {
    return icon == 20 || icon == 43;
}

} // namespace image
