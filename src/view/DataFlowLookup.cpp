#include "view/DataFlowLookup.h"

#include "host/BaseFunctionsInterface.h"
#include "platform/UIServices.h"
#include "repository/WhereText.h"

namespace {
const QString MissingSource = QStringLiteral("Source missing for called object");

void Show(const char* message) {
    TQXUIServices::Current().ShowMessage(QString::fromLatin1(message));
}
} // namespace

TQXDataFlowLookup::TQXDataFlowLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables,
                                     TQXBaseFunctionsInterface& host,
                                     QPointer<TQXLanguageDefinition>& languageDefinition)
    : FRecords(dataAccess, tables), FHost(host), FLanguageDefinition(languageDefinition) {}

bool TQXDataFlowLookup::UseLanguageDefinition(TQXBaseFunctionsInterface& host,
                                              QPointer<TQXLanguageDefinition>& definition,
                                              qint32 languageID) {
    if (definition && definition->LanguageID() == languageID)
        return true;
    TQXLanguageDefinition* found = nullptr;
    try {
        found = qobject_cast<TQXLanguageDefinition*>(host.GetNamedObject(
            TQXLanguageDefinition::ObjectName(host.GetLanguageName(languageID))));
    } catch (const std::exception&) {
        // The host has no object of that name: reported below.
    }
    if (!found) {
        Show("Error: LanguageDefinition not found");
        return false;
    }
    definition = found;
    return true;
}

bool TQXDataFlowLookup::GetDataFlow(const TQXDataItem& item, int direction, bool checkOnly,
                                    TDataFlows& list) {
    using namespace qx::QXWORD;
    list.clear();
    if (!UseLanguageDefinition(FHost, FLanguageDefinition, item.LanguageID))
        return false;

    // The item's scope: its entry, else its object or file as the language
    // knows variables.
    QString scope;
    if (item.EntryID > 0)
        scope = where::Keys({{"QXFileID", item.OwnerFileID},
                             {"QXObjectID", item.OwnerObjectID},
                             {"QXEntryID", item.EntryID}});
    else if (FLanguageDefinition->Scope() == TQXLanguageDefinition::ScopeObject)
        scope = where::FileObjectKeys(item.OwnerFileID, item.OwnerObjectID);
    else if (FLanguageDefinition->Scope() == TQXLanguageDefinition::ScopeFile)
        scope = where::Keys({{"QXFileID", item.OwnerFileID}});
    else {
        Show("Error: Scope in LanguageDefinition not supported");
        return false;
    }

    // Every use of the variable, by its name or its declaring identifier.
    std::vector<Occurrence> occurrences;
    if (!FRecords.Select(qx::Table::QXWORD,
                         scope + where::AndKey("QXWordType", qx::code::WordVariableUse) +
                             QStringLiteral(" AND (") +
                             where::TextEquals("QXWord", item.DataText1) + QStringLiteral(" OR ") +
                             where::TextEquals("QXWord", item.DataText2) + QLatin1Char(')')))
        return false;
    do {
        Occurrence o;
        o.Flow.VariableName = FRecords.Text(qx::Table::QXWORD, QXWord);
        o.Flow.FileID = FRecords.Int(qx::Table::QXWORD, QXFileID);
        o.Flow.ObjectID = FRecords.Int(qx::Table::QXWORD, QXObjectID);
        o.Flow.EntryID = FRecords.Int(qx::Table::QXWORD, QXEntryID);
        o.Flow.RowID = FRecords.Int(qx::Table::QXWORD, QXRowID);
        o.Flow.WordID = FRecords.Int(qx::Table::QXWORD, QXWordID);
        o.Flow.SectionType = FRecords.Int(qx::Table::QXWORD, QXSectionType);
        occurrences.push_back(o);
    } while (FRecords.Next(qx::Table::QXWORD));

    bool found = false;
    for (Occurrence& o : occurrences) {
        o.Dropped = IsQualifiedOtherwise(o, scope, item.DataText2);
        if (o.Dropped || !Follow(o, item, direction))
            continue;
        found = true;
        if (checkOnly)
            return true;
        AddFlow(o, item, scope, list);
    }
    return found;
}

// The words of the current QXWORD selection, in order, up to the one with
// `wordID` (through the last when none has it). A qualification operator
// makes the word before it the qualifier of what follows.
TQXDataFlowLookup::Walk TQXDataFlowLookup::WalkWords(qint32 wordID) {
    using namespace qx::QXWORD;
    Walk walk;
    QString previous;
    do {
        if (FRecords.Int(qx::Table::QXWORD, QXWordType) == qx::code::WordQualifier)
            walk.Qualifier = previous;
        walk.Word = FRecords.Text(qx::Table::QXWORD, QXWord);
        previous = walk.Word;
        if (FRecords.Int(qx::Table::QXWORD, QXWordID) == wordID) {
            walk.Matched = true;
            break;
        }
    } while (FRecords.Next(qx::Table::QXWORD));
    return walk;
}

// The use is qualified by something other than the declaring identifier.
bool TQXDataFlowLookup::IsQualifiedOtherwise(const Occurrence& o, const QString& scope,
                                             const QString& qualifier) {
    if (!FRecords.Select(qx::Table::QXWORD, scope + where::AndKey("QXRowID", o.Flow.RowID) +
                                                QStringLiteral(" AND QXWordID > 0")))
        return false;
    const Walk walk = WalkWords(o.Flow.WordID);
    return walk.Matched && !walk.Qualifier.isEmpty() && walk.Qualifier != qualifier;
}

// Sets the owner and, for a flow, the other end's position; false when the
// use takes part in no flow. A call argument always does, its owner being
// the called object (the last call read before the argument's word).
bool TQXDataFlowLookup::Follow(Occurrence& o, const TQXDataItem& item, int direction) {
    TDataFlow& f = o.Flow;
    if (f.SectionType == qx::code::SectionCallArgument) {
        using namespace qx::QXDEPENDENCIES;
        f.OwnerFileID = f.OwnerObjectID = f.OwnerEntryID = 0;
        if (FRecords.Select(qx::Table::QXDEPENDENCIES, where::Keys({{"QXFromFileID", f.FileID},
                                                                    {"QXFromObjectID", f.ObjectID},
                                                                    {"QXFromEntryID", f.EntryID},
                                                                    {"QXFromRowID", f.RowID}}) +
                                                           QStringLiteral(" AND QXFromWordID < ") +
                                                           where::Number(f.WordID))) {
            do {
                f.OwnerFileID = FRecords.Int(qx::Table::QXDEPENDENCIES, QXFileID);
                f.OwnerObjectID = FRecords.Int(qx::Table::QXDEPENDENCIES, QXObjectID);
                f.OwnerEntryID = FRecords.Int(qx::Table::QXDEPENDENCIES, QXEntryID);
            } while (FRecords.Next(qx::Table::QXDEPENDENCIES));
        }
        return true;
    }
    using namespace qx::QXDATAFLOW;
    const bool to = direction == 0;
    const QString condition =
        to ? where::Keys(
                 {{"QXFromFileID", f.FileID}, {"QXFromRowID", f.RowID}, {"QXFromWordID", f.WordID}})
           : where::Keys({{"QXFileID", f.FileID}, {"QXRowID", f.RowID}, {"QXWordID", f.WordID}});
    if (!FRecords.Select(qx::Table::QXDATAFLOW, condition))
        return false;
    f.OwnerFileID = item.OwnerFileID;
    f.OwnerObjectID = item.OwnerObjectID;
    f.OwnerEntryID = item.OwnerEntryID;
    f.FileID = FRecords.Int(qx::Table::QXDATAFLOW, to ? QXFileID : QXFromFileID);
    f.RowID = FRecords.Int(qx::Table::QXDATAFLOW, to ? QXRowID : QXFromRowID);
    f.WordID = FRecords.Int(qx::Table::QXDATAFLOW, to ? QXWordID : QXFromWordID);
    return true;
}

// Appends the line record of a flow and, when the variable at the other end
// is reached for the first time and its declaration is found, the variable
// record.
void TQXDataFlowLookup::AddFlow(const Occurrence& o, const TQXDataItem& item, const QString& scope,
                                TDataFlows& list) {
    const TDataFlow& f = o.Flow;
    const qint32 line = qint32(list.size());
    TDataFlow added;
    added.IsRow = true;
    added.Group = -1;
    list.push_back(added);
    if (!FRecords.Select(qx::Table::QXROW, where::Keys({{"QXFileID", f.FileID},
                                                        {"QXObjectID", f.ObjectID},
                                                        {"QXEntryID", f.EntryID},
                                                        {"QXRowID", f.RowID}}))) {
        list[line].Text = MissingSource;
        return;
    }
    {
        using namespace qx::QXROW;
        TDataFlow& l = list[line];
        l.FileID = FRecords.Int(qx::Table::QXROW, QXFileID);
        l.ObjectID = FRecords.Int(qx::Table::QXROW, QXObjectID);
        l.EntryID = FRecords.Int(qx::Table::QXROW, QXEntryID);
        l.RowID = FRecords.Int(qx::Table::QXROW, QXRowID);
        l.Text = FRecords.Text(qx::Table::QXROW, QXRow).trimmed();
        if (FRecords.Select(qx::Table::QXOBJECT, where::FileObjectKeys(f.FileID, f.ObjectID)))
            l.Text += QStringLiteral(" [") +
                      FRecords.Text(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectName) +
                      QLatin1Char(']');
    }

    // The variable at the other end: the word at the flow's position.
    if (!FRecords.Select(qx::Table::QXWORD, where::Keys({{"QXFileID", f.FileID},
                                                         {"QXObjectID", f.ObjectID},
                                                         {"QXEntryID", f.EntryID},
                                                         {"QXRowID", f.RowID}}) +
                                                QStringLiteral(" AND QXWordID > 0")))
        return;
    const Walk walk = WalkWords(f.WordID);
    QString name = walk.Word;
    QString qualifier = walk.Qualifier;
    if (qualifier.isEmpty() && name == item.DataText2) {
        qualifier = name;
        name = item.DataText1;
    }

    for (qint32 i = 0; i < line; ++i) {
        const TDataFlow& earlier = list[i];
        if (earlier.IsRow && earlier.VariableName == name && earlier.ParentName == qualifier) {
            list[line].VariableName = name;
            list[line].ParentName = qualifier;
            list[line].Group = earlier.Group;
            return;
        }
    }

    if (!FindDeclaration(o, item, scope, name, qualifier))
        return;
    list[line].VariableName = name;
    list[line].ParentName = qualifier;
    list[line].Group = line;
    list.push_back(Declaration(o, line));
}

// Leaves the declaration words of the other variable selected in QXWORD:
// in the qualifier's object or the language's scope, else in an object the
// owner includes.
bool TQXDataFlowLookup::FindDeclaration(const Occurrence& o, const TQXDataItem& item,
                                        const QString& scope, const QString& name,
                                        const QString& qualifier) {
    const TDataFlow& f = o.Flow;
    QString declarations = scope;
    if (!qualifier.isEmpty()) {
        if (FRecords.Select(qx::Table::QXOBJECT,
                            where::TextEquals("QXObjectIdentifier", qualifier)))
            declarations =
                where::FileObjectKeys(FRecords.Int(qx::Table::QXOBJECT, qx::QXOBJECT::QXFileID),
                                      FRecords.Int(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectID));
    } else if (FLanguageDefinition->Scope() == TQXLanguageDefinition::ScopeObject) {
        declarations = where::FileObjectKeys(f.OwnerFileID, f.OwnerObjectID);
    } else if (FLanguageDefinition->Scope() == TQXLanguageDefinition::ScopeFile) {
        declarations = where::Keys({{"QXFileID", f.OwnerFileID}});
    }
    if (FRecords.Select(qx::Table::QXWORD, declarations + where::AndVariableDeclarations() +
                                               where::AndText("QXWord", name)))
        return true;
    return FindIncludedDeclaration(o, item, name);
}

// The declaration in an object the owner includes (a whole-object
// dependency): the variable itself inside an included object named like the
// other variable, or the other variable declared in the included object.
bool TQXDataFlowLookup::FindIncludedDeclaration(const Occurrence& o, const TQXDataItem& item,
                                                const QString& name) {
    const TDataFlow& f = o.Flow;
    QString includes;
    if (FLanguageDefinition->Scope() == TQXLanguageDefinition::ScopeObject)
        includes = where::Keys({{"QXFromFileID", f.OwnerFileID},
                                {"QXFromObjectID", f.OwnerObjectID},
                                {"QXFromEntryID", 0},
                                {"QXEntryID", 0}});
    else if (FLanguageDefinition->Scope() == TQXLanguageDefinition::ScopeFile)
        includes =
            where::Keys({{"QXFromFileID", f.OwnerFileID}, {"QXFromEntryID", 0}, {"QXEntryID", 0}});
    else
        return false;
    if (!FRecords.Select(qx::Table::QXDEPENDENCIES, includes))
        return false;
    do {
        const qint32 fileID = FRecords.Int(qx::Table::QXDEPENDENCIES, qx::QXDEPENDENCIES::QXFileID);
        const qint32 objectID =
            FRecords.Int(qx::Table::QXDEPENDENCIES, qx::QXDEPENDENCIES::QXObjectID);
        if (FRecords.Select(qx::Table::QXOBJECT, where::FileObjectKeys(fileID, objectID) +
                                                     where::AndText("QXObjectIdentifier", name)) &&
            FRecords.Select(
                qx::Table::QXWORD,
                where::FileObjectKeys(FRecords.Int(qx::Table::QXOBJECT, qx::QXOBJECT::QXFileID),
                                      FRecords.Int(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectID)) +
                    where::AndVariableDeclarations() + where::AndText("QXWord", item.DataText1)))
            return true;
        if (FRecords.Select(qx::Table::QXWORD, where::FileObjectKeys(fileID, objectID) +
                                                   where::AndVariableDeclarations() +
                                                   where::AndText("QXWord", name)))
            return true;
    } while (FRecords.Next(qx::Table::QXDEPENDENCIES));
    return false;
}

// The variable record from the declaration words selected in QXWORD: the
// first that lies inside an entry, else the last read; words whose object is
// missing are passed over.
TDataFlow TQXDataFlowLookup::Declaration(const Occurrence& o, qint32 group) {
    using namespace qx::QXWORD;
    TDataFlow v;
    v.Group = group;
    do {
        const qint32 fileID = FRecords.Int(qx::Table::QXWORD, QXFileID);
        const qint32 objectID = FRecords.Int(qx::Table::QXWORD, QXObjectID);
        if (!FRecords.Select(qx::Table::QXOBJECT, where::FileObjectKeys(fileID, objectID)))
            continue;
        v.VariableName = FRecords.Text(qx::Table::QXWORD, QXWord);
        v.ParentName = FRecords.Text(qx::Table::QXOBJECT, qx::QXOBJECT::QXObjectIdentifier);
        v.Icon = FRecords.Int(qx::Table::QXOBJECT, qx::QXOBJECT::QXIcon);
        v.OwnerFileID = o.Flow.OwnerFileID;
        v.OwnerObjectID = o.Flow.OwnerObjectID;
        v.OwnerEntryID = o.Flow.OwnerEntryID;
        v.FileID = fileID;
        v.ObjectID = objectID;
        v.EntryID = FRecords.Int(qx::Table::QXWORD, QXEntryID);
        v.RowID = FRecords.Int(qx::Table::QXWORD, QXRowID);
        v.WordID = FRecords.Int(qx::Table::QXWORD, QXWordID);
        v.LanguageID = FRecords.Int(qx::Table::QXWORD, QXLanguageID);
        v.Text = FRecords.Text(qx::Table::QXWORD, QXObjectIdentifier);
        v.Group = group;
        if (v.EntryID > 0)
            break;
    } while (FRecords.Next(qx::Table::QXWORD));
    return v;
}
