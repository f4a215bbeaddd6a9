#include "view/DataFlowLookup.h"

#include "host/BaseFunctionsInterface.h"
#include "platform/UIServices.h"
#include "repository/WhereText.h"

#include <map>
#include <tuple>

namespace {
const QString MissingSource = QStringLiteral("Source missing for called object");

void Show(const char* message) {
    TQXUIServices::Current().ShowMessage(QString::fromLatin1(message));
}

// The where texts of the steps, built the same way when they are read
// together beforehand.
QString LineWordsInScope(const QString& scope, qint32 rowID) {
    return scope + where::AndKey("QXRowID", rowID) + QStringLiteral(" AND QXWordID > 0");
}
QString FlowAt(bool to, qint32 fileID, qint32 rowID, qint32 wordID) {
    return to ? where::Keys(
                    {{"QXFromFileID", fileID}, {"QXFromRowID", rowID}, {"QXFromWordID", wordID}})
              : where::Keys({{"QXFileID", fileID}, {"QXRowID", rowID}, {"QXWordID", wordID}});
}
QString Line(qint32 fileID, qint32 objectID, qint32 entryID, qint32 rowID) {
    return where::Keys({{"QXFileID", fileID},
                        {"QXObjectID", objectID},
                        {"QXEntryID", entryID},
                        {"QXRowID", rowID}});
}
QString LineWords(qint32 fileID, qint32 objectID, qint32 entryID, qint32 rowID) {
    return Line(fileID, objectID, entryID, rowID) + QStringLiteral(" AND QXWordID > 0");
}
int ToInt(const QVariant& value) {
    return value.toInt();
}

constexpr std::size_t IdsPerStatement = 500;
} // namespace

TQXDataFlowLookup::TQXDataFlowLookup(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables,
                                     TQXBaseFunctionsInterface& host,
                                     QPointer<TQXLanguageDefinition>& languageDefinition,
                                     TQXReadPath path)
    : FRecords(dataAccess, tables, path == TQXReadPath::SetBased), FHost(host),
      FLanguageDefinition(languageDefinition) {}

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

    if (!checkOnly) // a test usually answers at the first use: no reading ahead
        PrefetchUses(occurrences, scope, direction);
    bool found = false;
    for (Occurrence& o : occurrences) {
        o.Dropped = IsQualifiedOtherwise(o, scope, item.DataText2);
        if (o.Dropped || !Follow(o, item, direction))
            continue;
        o.Flows = found = true;
        if (checkOnly)
            return true;
        if (!FRecords.Remembers())
            AddFlow(o, item, scope, list);
    }
    if (FRecords.Remembers()) {
        // The same flows in the same order, their lines read together first.
        PrefetchFlowLines(occurrences);
        for (const Occurrence& o : occurrences)
            if (o.Flows)
                AddFlow(o, item, scope, list);
    }
    return found;
}

// The words of each use's line and the flow records at each use, a few
// hundred lines per statement.
void TQXDataFlowLookup::PrefetchUses(const std::vector<Occurrence>& occurrences,
                                     const QString& scope, int direction) {
    if (!FRecords.Remembers() || occurrences.size() < 2)
        return;
    using qx::Table;
    const bool to = direction == 0;
    std::vector<const TDataFlow*> uses;
    std::map<qint32, std::vector<const TDataFlow*>> flowUses; // by file
    for (const Occurrence& o : occurrences) {
        uses.push_back(&o.Flow);
        if (o.Flow.SectionType != qx::code::SectionCallArgument)
            flowUses[o.Flow.FileID].push_back(&o.Flow);
    }
    for (std::size_t i = 0; i < uses.size(); i += IdsPerStatement) {
        QList<qint32> rows;
        QStringList wheres;
        for (std::size_t j = i; j < std::min(uses.size(), i + IdsPerStatement); ++j) {
            rows << uses[j]->RowID;
            wheres << LineWordsInScope(scope, uses[j]->RowID);
        }
        FRecords.Prefetch(
            Table::QXWORD,
            scope + QStringLiteral(" AND ") + where::In("QXRowID", rows, QStringLiteral(", ")) +
                QStringLiteral(" AND QXWordID > 0"),
            [&](const TQXFlowRecords::Record& r) {
                return LineWordsInScope(scope, ToInt(r[qx::QXWORD::QXRowID]));
            },
            wheres);
    }
    using namespace qx::QXDATAFLOW;
    for (const auto& [fileID, fileUses] : flowUses)
        for (std::size_t i = 0; i < fileUses.size(); i += IdsPerStatement) {
            QList<qint32> rows;
            QStringList wheres;
            for (std::size_t j = i; j < std::min(fileUses.size(), i + IdsPerStatement); ++j) {
                rows << fileUses[j]->RowID;
                wheres << FlowAt(to, fileID, fileUses[j]->RowID, fileUses[j]->WordID);
            }
            FRecords.Prefetch(
                Table::QXDATAFLOW,
                where::Keys({{to ? "QXFromFileID" : "QXFileID", fileID}}) +
                    QStringLiteral(" AND ") +
                    where::In(to ? "QXFromRowID" : "QXRowID", rows, QStringLiteral(", ")),
                [&](const TQXFlowRecords::Record& r) {
                    return to ? FlowAt(true, ToInt(r[QXFromFileID]), ToInt(r[QXFromRowID]),
                                       ToInt(r[QXFromWordID]))
                              : FlowAt(false, ToInt(r[QXFileID]), ToInt(r[QXRowID]),
                                       ToInt(r[QXWordID]));
                },
                wheres);
        }
}

// The lines of the flows and their words, by file, object and entry.
void TQXDataFlowLookup::PrefetchFlowLines(const std::vector<Occurrence>& occurrences) {
    using qx::Table;
    std::map<std::tuple<qint32, qint32, qint32>, QList<qint32>> lines;
    int flows = 0;
    for (const Occurrence& o : occurrences)
        if (o.Flows) {
            lines[{o.Flow.FileID, o.Flow.ObjectID, o.Flow.EntryID}] << o.Flow.RowID;
            ++flows;
        }
    if (flows < 2)
        return;
    for (const auto& [key, allRows] : lines) {
        const auto [fileID, objectID, entryID] = key;
        for (qsizetype i = 0; i < allRows.size(); i += IdsPerStatement) {
            const QList<qint32> rows = allRows.mid(i, IdsPerStatement);
            QStringList rowWheres;
            QStringList wordWheres;
            for (qint32 rowID : rows) {
                rowWheres << Line(fileID, objectID, entryID, rowID);
                wordWheres << LineWords(fileID, objectID, entryID, rowID);
            }
            const QString lineCondition =
                where::Keys(
                    {{"QXFileID", fileID}, {"QXObjectID", objectID}, {"QXEntryID", entryID}}) +
                QStringLiteral(" AND ") + where::In("QXRowID", rows, QStringLiteral(", "));
            FRecords.Prefetch(
                Table::QXROW, lineCondition,
                [](const TQXFlowRecords::Record& r) {
                    using namespace qx::QXROW;
                    return Line(ToInt(r[QXFileID]), ToInt(r[QXObjectID]), ToInt(r[QXEntryID]),
                                ToInt(r[QXRowID]));
                },
                rowWheres);
            FRecords.Prefetch(
                Table::QXWORD, lineCondition + QStringLiteral(" AND QXWordID > 0"),
                [](const TQXFlowRecords::Record& r) {
                    using namespace qx::QXWORD;
                    return LineWords(ToInt(r[QXFileID]), ToInt(r[QXObjectID]), ToInt(r[QXEntryID]),
                                     ToInt(r[QXRowID]));
                },
                wordWheres);
        }
    }
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
    if (!FRecords.Select(qx::Table::QXWORD, LineWordsInScope(scope, o.Flow.RowID)))
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
    if (!FRecords.Select(qx::Table::QXDATAFLOW, FlowAt(to, f.FileID, f.RowID, f.WordID)))
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
    if (!FRecords.Select(qx::Table::QXROW, Line(f.FileID, f.ObjectID, f.EntryID, f.RowID))) {
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
    if (!FRecords.Select(qx::Table::QXWORD, LineWords(f.FileID, f.ObjectID, f.EntryID, f.RowID)))
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
