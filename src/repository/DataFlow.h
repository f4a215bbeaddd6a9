#pragma once

#include <QString>

#include <vector>

// One result of a data flow lookup: a line of code where the flow is
// executed (IsRow), or the variable at the other end of the flow with its
// declaration. A variable record follows the line record that first reached
// it; Group is that line record's index, -1 on a line whose variable was not
// found.
struct TDataFlow {
    bool IsRow = false;
    QString VariableName;
    QString ParentName;
    qint32 Icon = 0;
    qint32 OwnerFileID = 0;
    qint32 OwnerObjectID = 0;
    qint32 OwnerEntryID = 0;
    qint32 FileID = 0;
    qint32 ObjectID = 0;
    qint32 RowID = 0;
    qint32 EntryID = 0;
    qint32 WordID = 0;
    qint32 LanguageID = 0;
    QString Text;
    qint32 SectionType = 0;
    qint32 Group = 0;

    bool operator==(const TDataFlow&) const = default;
};

using TDataFlows = std::vector<TDataFlow>;
