#pragma once

#include "platform/TreeControl.h"
#include "repository/RecordReader.h"
#include "repository/TableHandleSet.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/TestRepository.h"

#include <QStringList>

#include <memory>

// A throw-away repository read the way a view reads it: data access over it,
// the table handles assigned to that access, a record reader on both, and a
// tree to show nodes in. A test fills FRepo with its estate, then calls
// OpenRepository() once before anything reads it.
class ViewRepositoryFixture {
protected:
    void OpenRepository();

    // The texts of a node's children, in order.
    static QStringList ChildTexts(const TQXTreeNode* node);

    TestRepository FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;
    TQXTableHandleSet FTables;
    std::unique_ptr<TQXRecordReader> FRecords;
    std::unique_ptr<TQXTreeControl> FTree;
};
