#pragma once

#include "platform/TreeControl.h"
#include "repository/RecordReader.h"
#include "repository/TableHandleSet.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"
#include "support/TreeTexts.h"

#include <memory>

// A throw-away repository read the way a view reads it: data access over it,
// the table handles assigned to that access, a record reader on both, and a
// tree to show nodes in. A test fills FRepo with its estate, then calls
// OpenRepository() once before anything reads it.
class ViewRepositoryFixture {
protected:
    void OpenRepository() {
        FAccess = std::make_unique<SqlDataAccess>(FRepo.Location());
        AssignDBPointers(*FAccess, FTables);
        FRecords = std::make_unique<TQXRecordReader>(*FAccess, FTables);
        FTree = std::make_unique<TQXTreeControl>();
    }

    // A node as the root-item listing leaves it: an item and a placeholder.
    TQXTreeNode* AddClosed(std::unique_ptr<TQXItem> item, int image, TQXTreeNode* parent = nullptr,
                           const QString& text = "node") {
        TQXTreeNode* node = FTree->AddChild(parent, text, std::move(item), image);
        FTree->AddPlaceholder(node);
        return node;
    }

    TestRepository FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;
    TQXTableHandleSet FTables;
    std::unique_ptr<TQXRecordReader> FRecords;
    std::unique_ptr<TQXTreeControl> FTree;
};
