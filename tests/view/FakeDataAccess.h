#pragma once

// A data-access object for view tests: tables without records except what a
// test says, call counters, and scripted failures.
#include "repository/Errors.h"
#include "support/NullDataAccess.h"

#include <functional>
#include <map>
#include <memory>

class FakeDataAccess final : public NullDataAccess {
public:
    // What the repository holds: QXFILE answers SelectRecords with this.
    bool HasFiles = true;
    // Failures: GetTableRef of this table, CloseTables, SelectRecords.
    QString FailTable;
    bool FailCloseTables = false;
    bool FailSelect = false;
    // Runs inside every SelectRecords, to look at the view mid-refresh.
    std::function<void(const QString& table)> OnSelect;

    int CloseTablesCalls = 0;
    int EndRefreshCalls = 0;
    QStringList Selected; // "TABLE:where" per SelectRecords

    void CloseTables(QObject*, bool flag) override {
        ++CloseTablesCalls;
        if (!flag)
            throw EQXError(QStringLiteral("CloseTables expects true"));
        if (FailCloseTables)
            throw EQXError(QStringLiteral("connection lost"));
    }
    TQXTableRef GetTableRef(const QString& name) override {
        if (name == FailTable)
            throw EQXError(QStringLiteral("no such table: ") + name);
        auto& table = FTables[name];
        if (!table)
            table = std::make_unique<NullDataSet>(name);
        return table.get();
    }
    TQXFieldRef GetFieldRef(TQXTableRef table, const QString& column) override {
        auto& field = FFields[table->TableName() + QLatin1Char('.') + column];
        if (!field)
            field = std::make_unique<TQXField>(TQXField{table, column, 0});
        return field.get();
    }
    QString GetFieldName(TQXTableRef, TQXFieldRef field) override { return field->Name; }
    bool SelectRecords(TQXTableRef table, const QString& where) override {
        if (!table)
            throw EQXError(QStringLiteral("table not bound"));
        Selected << table->TableName() + QLatin1Char(':') + where;
        if (OnSelect)
            OnSelect(table->TableName());
        if (FailSelect)
            throw EQXError(QStringLiteral("database is locked"));
        return table->TableName() == QLatin1String("QXFILE") && HasFiles;
    }
    void EndRefresh(bool flag1, bool flag2) override {
        if (flag1 && !flag2)
            ++EndRefreshCalls;
    }
    std::unique_ptr<TQXDataSet> OpenQuery(QObject*, const QStringList&, int) override {
        return std::make_unique<NullDataSet>(QStringLiteral("QUERY"));
    }

private:
    std::map<QString, std::unique_ptr<NullDataSet>> FTables;
    std::map<QString, std::unique_ptr<TQXField>> FFields;
};
