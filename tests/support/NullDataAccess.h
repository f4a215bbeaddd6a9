#pragma once

#include "repository/DataAccessInterface.h"

// A table by name that holds no records.
class NullDataSet final : public TQXDataSet {
public:
    explicit NullDataSet(const QString& name) : FName(name) {}
    QString TableName() const override { return FName; }
    void First() override {}
    void Next() override {}
    bool Eof() const override { return true; }
    int FieldCount() const override { return 0; }
    QVariant FieldValue(int) const override { return {}; }
    void Close() override {}

private:
    QString FName;
};

// Stands in for a repository connection that holds nothing: no table or field
// is found, no record is selected or located, and writes go nowhere. Tests
// derive from it to record or answer only the calls they look at.
class NullDataAccess : public TQXDataAccessInterface {
public:
    void CloseTables(QObject*, bool) override {}
    TQXTableRef GetTableRef(const QString&) override { return nullptr; }
    TQXFieldRef GetFieldRef(TQXTableRef, const QString&) override { return nullptr; }
    QString GetFieldName(TQXTableRef, TQXFieldRef) override { return {}; }
    bool SelectRecords(TQXTableRef, const QString&) override { return false; }
    bool NextRecord(TQXTableRef) override { return false; }
    void DeleteRecords(TQXTableRef, const QString&, int) override {}
    QVariant GetFieldValue(TQXTableRef, TQXFieldRef) override { return {}; }
    void SetFieldValue(TQXTableRef, TQXFieldRef, const QVariant&) override {}
    bool LocateRecord(TQXTableRef, const QString&, const QVariantList&, int) override {
        return false;
    }
    bool LocateNextRecord(TQXTableRef, const QString&, const QVariantList&, int) override {
        return false;
    }
    void EndRefresh(bool, bool) override {}
    std::unique_ptr<TQXDataSet> OpenQuery(QObject*, const QStringList&, int) override {
        return nullptr;
    }
};
