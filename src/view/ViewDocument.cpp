// View documents: the view's settings, filter rows, tree, selection and
// tracks written to a .kvv file and read back, without asking the
// repository for the nodes.
#include "view/View.h"

#include "filter/FilterDialog.h"
#include "host/BaseFunctionsInterface.h"
#include "host/QueryRow.h"
#include "platform/BusyCursor.h"
#include "platform/TreeControl.h"
#include "platform/TreeUpdate.h"
#include "platform/UIServices.h"
#include "repository/DataAccessInterface.h"
#include "repository/Errors.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QHash>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <algorithm>
#include <vector>

namespace {

const QString MarkerStart = QStringLiteral("  *** ");

TQXDocumentNode DocumentNode(const TQXTreeNode& node) {
    TQXDocumentNode line;
    const TQXTreeNode* parent = node.ParentNode();
    line.ParentExpanded = !parent || parent->Expanded();
    line.ImageIndex = node.ImageIndex();
    line.Level = node.Level();
    line.Text = node.Text();
    if (const auto* item = node.ItemAs<TQXItem>()) {
        line.Kind = TQXDocumentNode::Payload::Item;
        line.Numbers = {item->FileID,        item->SystemID,  item->ComputerID,
                        item->ApplicationID, item->PackageID, item->ObjectID,
                        item->EntryID,       item->RowID,     item->WordID};
    } else if (const auto* data = node.ItemAs<TQXDataItem>()) {
        line.Kind = TQXDocumentNode::Payload::DataItem;
        line.DataText1 = data->DataText1;
        line.DataText2 = data->DataText2;
        line.Numbers = {data->OwnerFileID, data->OwnerObjectID, data->OwnerEntryID,
                        data->FileID,      data->ObjectID,      data->EntryID,
                        data->RowID,       data->WordID,        data->LanguageID};
    }
    return line;
}

std::unique_ptr<TQXTreeItem> TreeItem(const TQXDocumentNode& line) {
    const auto& n = line.Numbers;
    switch (line.Kind) {
    case TQXDocumentNode::Payload::Item:
        return std::make_unique<TQXItem>(n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8]);
    case TQXDocumentNode::Payload::DataItem:
        return std::make_unique<TQXDataItem>(line.DataText1, line.DataText2, n[0], n[1], n[2], n[3],
                                             n[4], n[5], n[6], n[7], n[8]);
    case TQXDocumentNode::Payload::None:
        break;
    }
    return nullptr;
}

// A node whose children are still to be read is written with an empty child
// line without item, as the tree's placeholder child once was; reading turns
// such a line back into the placeholder.
bool IsPlaceholderLine(const std::vector<TQXDocumentNode>& nodes, std::size_t i) {
    const TQXDocumentNode& line = nodes[i];
    return line.Level > 0 && line.Kind == TQXDocumentNode::Payload::None && line.Text.isEmpty() &&
           (i + 1 == nodes.size() || nodes[i + 1].Level <= line.Level);
}

} // namespace

// ------------------------------------------------------------ the filter seam

// The filter dialog's first rows, as many as its where clause holds
// conditions, and its case-sensitive box.
void TQXView::FilterToDocument(TQXViewDocument& document) const {
    document.FilterRows.clear();
    document.CaseSensitive = false;
    if (FFilter == nullptr)
        return;
    const int count = std::min(FFilter->WhereClause().Count(), FFilter->RowCount());
    for (int i = 0; i < count; ++i) {
        const TQXQueryRow* row = FFilter->GetQueryRow(i);
        TQXDocumentFilterRow written;
        written.PreviousJoint = i > 0 && FFilter->GetQueryRow(i - 1)->rbAnd->isChecked();
        written.Attribute = row->cbAttribute->currentText() == QLatin1String("Files Name")
                                ? 10
                                : row->cbAttribute->currentIndex();
        written.Operator = row->cbOperator->currentIndex();
        written.Value = row->cbValue->currentText();
        document.FilterRows << written;
    }
    document.CaseSensitive = FFilter->cbCaseSensitive->isChecked();
}

// Hands a document's filter rows to the fresh filter dialog the connection
// built, and applies them when there are any.
void TQXView::FilterFromDocument(const QList<TQXDocumentFilterRow>& rows, bool caseSensitive) {
    if (FFilter == nullptr)
        return;
    FFilter->WhereClause().Clear();
    for (int i = 0; i < rows.size(); ++i)
        FFilter->AddFilterRow(rows[i].Attribute, rows[i].Operator, rows[i].Value,
                              rows[i].AddFilterRowJoint(i));
    FFilter->cbCaseSensitive->setChecked(caseSensitive);
    if (!rows.isEmpty())
        FFilter->cbApplyClick();
}

// ------------------------------------------------------------------ writing

TQXViewDocument TQXView::MakeDocument() const {
    TQXViewDocument document;
    document.DocumentName = FDocumentName;
    document.CreationText2 = FCreationConnectionName;
    document.CreationText3 = FCreationCommand;
    document.ConnectionName = FConnectionName;
    document.Dependencies = rbDependencies->isChecked();
    document.TopDown = rbTopDown->isChecked();
    document.ViewBy = cbViewBy->currentText();
    document.Option = cbOption->isChecked();
    document.FilterOn = rbFilterOn->isChecked();
    document.LimitText = tbRootItemLimit->text();
    FilterToDocument(document);

    QHash<const TQXTreeNode*, int> lineOf;
    for (const TQXTreeNode* node = tvMain->FirstNode(); node;
         node = TQXTreeControl::NextNode(node)) {
        lineOf.insert(node, static_cast<int>(document.Nodes.size()));
        document.Nodes.push_back(DocumentNode(*node));
        if (node->ChildCount() == 0 && TQXTreeControl::HasPlaceholder(node)) {
            TQXDocumentNode placeholder;
            placeholder.ParentExpanded = node->Expanded();
            placeholder.Level = node->Level() + 1;
            document.Nodes.push_back(placeholder);
        }
    }
    for (const TQXTreeNode* node : tvMain->Selection())
        document.Selection << lineOf.value(node);
    for (const TTrack& track : FTracks)
        document.Tracks << TQXDocumentTrack{track.Name, track.Keys};
    return document;
}

void TQXView::SaveViewDoc(const QString& fileName) {
    TQXBusyCursor busy;
    viewdoc::Save(MakeDocument(), fileName);
    setWindowTitle(QStringLiteral("Korvane - ") + FDocumentName);
    FBaseFunctions->ViewRenamed(this, FDocumentName);
    FDocumentFile = fileName;
    if (QAction* save = FindMenuItem(QStringLiteral("Save1")))
        save->setEnabled(true);
}

// ------------------------------------------------------------------ reading

void TQXView::OpenViewDoc(const QString& fileName) {
    try {
        TQXBusyCursor busy;
        // The whole file is read first: a file that is not a document
        // changes nothing.
        const TQXViewDocument document = viewdoc::Load(fileName);
        TQXTreeUpdate update(*tvMain);

        // The connection to go back to, if the view has one.
        const QString previousConnection = FDataAccess ? FConnectionName : QString();
        FDocumentName = document.DocumentName;
        FCreationConnectionName = document.CreationText2;
        FCreationCommand = document.CreationText3;
        FConnectionName = document.ConnectionName;
        const qsizetype suffix = FDocumentName.indexOf(QStringLiteral(" on ") + FConnectionName);
        if (suffix >= 0)
            FDocumentName.truncate(suffix);

        try {
            ConnectToDB();
        } catch (const std::exception& e) {
            TQXUIServices& ui = TQXUIServices::Current();
            const QString created =
                QStringLiteral("Document is created against database ") + document.ConnectionName;
            QString reason = ExceptionMessage(e);
            bool connected = false;
            if (!previousConnection.isEmpty()) {
                ui.ShowMessage(created + QLatin1Char('\r') +
                               QStringLiteral("Connection is changed to database ") +
                               previousConnection);
                FConnectionName = previousConnection;
                try {
                    ConnectToDB();
                    connected = true;
                } catch (const std::exception& again) {
                    reason = ExceptionMessage(again);
                }
            }
            if (!connected) {
                // Nothing to go back to: the tree comes from the file alone,
                // and the document keeps its connection for a later refresh.
                ui.ShowMessage(created + QLatin1Char('\r') +
                               QStringLiteral("It could not be opened (") + reason +
                               QStringLiteral("); the view shows the document without a "
                                              "connection"));
                FConnectionName = document.ConnectionName;
                FDataAccess = nullptr;
                FTables.Clear();
            }
        }
        FDocumentName += QStringLiteral(" on ") + FConnectionName;

        (document.Dependencies ? rbDependencies : rbDistribution)->setChecked(true);
        (document.TopDown ? rbTopDown : rbBottomUp)->setChecked(true);
        for (int i = 0; i < cbViewBy->count(); ++i) {
            if (cbViewBy->itemText(i) == document.ViewBy) {
                cbViewBy->setCurrentIndex(i);
                break;
            }
        }
        ApplyOptionRule(false, document.Option);
        (document.FilterOn ? rbFilterOn : rbFilterOff)->setChecked(true);
        tbRootItemLimit->setText(document.LimitText);
        FilterFromDocument(document.FilterRows, document.CaseSensitive);

        BuildTree(document);

        setWindowTitle(QStringLiteral("Korvane - ") + FDocumentName);
        FBaseFunctions->ViewRenamed(this, FDocumentName);
        FDocumentFile = fileName;
        if (QAction* save = FindMenuItem(QStringLiteral("Save1")))
            save->setEnabled(true);
        SyncMenuItems();
        SetUserHint();
    } catch (const std::exception& e) {
        throw EQXError(QStringLiteral("TQXView.OpenViewDoc: ") + ExceptionMessage(e));
    }
}

void TQXView::BuildTree(const TQXViewDocument& document) {
    tvMain->Clear();
    FLoadingDocument = true;
    struct Reset {
        bool& Flag;
        ~Reset() { Flag = false; }
    } reset{FLoadingDocument};

    const std::vector<TQXDocumentNode>& lines = document.Nodes;
    std::vector<TQXTreeNode*> nodeOfLine(lines.size(), nullptr);
    std::vector<TQXTreeNode*> parentForLevel; // the parent that nodes of a level join
    std::vector<TQXTreeNode*> toExpand;
    TQXTreeNode* previous = nullptr;
    int previousLevel = -1;
    bool marker = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const TQXDocumentNode& line = lines[i];
        TQXTreeNode* node = nullptr;
        if (line.Level == 0) {
            node = tvMain->AddRoot(line.Text, TreeItem(line), line.ImageIndex);
            marker = marker || (line.Kind == TQXDocumentNode::Payload::None &&
                                line.Text.startsWith(MarkerStart));
        } else {
            // The reader lets a level follow at most one below the one before.
            if (previousLevel < line.Level) {
                if (static_cast<int>(parentForLevel.size()) <= line.Level)
                    parentForLevel.resize(line.Level + 1, nullptr);
                parentForLevel[line.Level] = previous;
            }
            TQXTreeNode* parent = parentForLevel[line.Level];
            if (!parent)
                throw EQXError(QStringLiteral("node ") + QString::number(i + 1) +
                               QStringLiteral(" has no parent"));
            if (IsPlaceholderLine(lines, i) && parent->ChildCount() == 0) {
                TQXTreeControl::AddPlaceholder(parent);
                previous = nullptr;
                previousLevel = line.Level;
                continue;
            }
            node = tvMain->AddChild(parent, line.Text, TreeItem(line), line.ImageIndex);
            if (line.ParentExpanded && (toExpand.empty() || toExpand.back() != parent))
                toExpand.push_back(parent);
        }
        nodeOfLine[i] = node;
        previous = node;
        previousLevel = line.Level;
    }
    // Parents open after all nodes are in place, outermost first.
    for (TQXTreeNode* parent : toExpand)
        parent->SetExpanded(true);
    tvMain->SetPopupMenu(marker ? nullptr : pmnuView);

    DropTracks();
    for (const TQXDocumentTrack& track : document.Tracks) {
        FTracks.push_back(TTrack{track.Name, track.Keys});
        AddTrackMenuItem(static_cast<int>(FTracks.size()) - 1);
    }

    QList<TQXTreeNode*> selection;
    for (int index : document.Selection)
        if (TQXTreeNode* node = nodeOfLine[index])
            selection << node;
    tvMain->SetSelection(selection);
}
