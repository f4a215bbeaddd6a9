#pragma once

#include "host/LanguageDefinition.h"
#include "repository/DataAccessInterface.h"
#include "repository/DataFlow.h"
#include "repository/TableHandleSet.h"
#include "repository/TreeItems.h"
#include "view/FlowRecords.h"
#include "view/ReadPath.h"

#include <QPointer>

class TQXBaseFunctionsInterface;

// Reads where a variable's value goes (direction 0) or comes from (any other
// direction): every use of the variable in its scope that takes part in a
// flow or is an argument of a call gives a line record, followed by the
// variable at the other end with its declaration when that variable is
// reached for the first time. The view's GetDataFlow delegates here; the
// lookup changes the current selections of QXWORD, QXROW, QXOBJECT,
// QXDEPENDENCIES and QXDATAFLOW. Failures of the data access are not caught.
class TQXDataFlowLookup {
public:
    // `languageDefinition` is the view's: the definition last looked up,
    // owned by the host and kept across lookups.
    // On the set-based path each distinct selection is read once per lookup
    // and the lines of all uses are read together; the reference path makes
    // every selection as it goes. Both give the same list.
    TQXDataFlowLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables,
                      TQXBaseFunctionsInterface& host,
                      QPointer<TQXLanguageDefinition>& languageDefinition,
                      TQXReadPath path = TQXReadPath::SetBased);

    // Empties `list`; true when an occurrence takes part in a flow. With
    // checkOnly the lookup ends there and the list stays empty; without it
    // the list is filled. A missing language definition or an unsupported
    // scope is shown as a message and answers false.
    bool GetDataFlow(const TQXDataItem& item, int direction, bool checkOnly, TDataFlows& list);

    // Keeps the definition of `languageID` in `definition`, looking it up as
    // the host object "LangDef_" + language name when it holds another
    // language's or none. False, with "Error: LanguageDefinition not found"
    // shown, when the host has none.
    static bool UseLanguageDefinition(TQXBaseFunctionsInterface& host,
                                      QPointer<TQXLanguageDefinition>& definition,
                                      qint32 languageID);

private:
    // One use of the variable while the lookup runs; Owner* and the
    // position change as the flow is followed.
    struct Occurrence {
        TDataFlow Flow;
        bool Dropped = false;
        bool Flows = false;
    };
    // Where a walk over a line's words stopped and the qualifier it had.
    struct Walk {
        bool Matched = false;
        QString Qualifier;
        QString Word;
    };

    bool IsQualifiedOtherwise(const Occurrence& o, const QString& scope, const QString& qualifier);
    bool Follow(Occurrence& o, const TQXDataItem& item, int direction);
    void AddFlow(const Occurrence& o, const TQXDataItem& item, const QString& scope,
                 TDataFlows& list);
    bool FindDeclaration(const Occurrence& o, const TQXDataItem& item, const QString& scope,
                         const QString& name, const QString& qualifier);
    bool FindIncludedDeclaration(const Occurrence& o, const TQXDataItem& item, const QString& name);
    TDataFlow Declaration(const Occurrence& o, qint32 group);
    Walk WalkWords(qint32 wordID);
    // The selections the steps make for each use, read together.
    void PrefetchUses(const std::vector<Occurrence>& occurrences, const QString& scope,
                      int direction);
    void PrefetchFlowLines(const std::vector<Occurrence>& occurrences);

    TQXFlowRecords FRecords;
    TQXBaseFunctionsInterface& FHost;
    QPointer<TQXLanguageDefinition>& FLanguageDefinition;
};
