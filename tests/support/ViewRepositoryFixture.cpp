#include "support/ViewRepositoryFixture.h"

#include "platform/TreeNode.h"

void ViewRepositoryFixture::OpenRepository() {
    FAccess = std::make_unique<SqlDataAccess>(FRepo.Location());
    AssignDBPointers(*FAccess, FTables);
    FRecords = std::make_unique<TQXRecordReader>(*FAccess, FTables);
    FTree = std::make_unique<TQXTreeControl>();
}

QStringList ViewRepositoryFixture::ChildTexts(const TQXTreeNode* node) {
    QStringList texts;
    for (int i = 0; i < node->ChildCount(); ++i)
        texts << node->Child(i)->Text();
    return texts;
}
