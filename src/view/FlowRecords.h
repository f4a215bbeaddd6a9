#pragma once

#include "repository/RecordReader.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>
#include <vector>

// The selections of one data flow lookup. On the reference path each one is
// sent to the repository as it is made. On the set-based path each distinct
// selection is read once and kept for the lookup, and selections the lookup
// is about to make for many keys can be read together beforehand
// (Prefetch): the lookup's steps stay as they are and read the same records
// in the same order.
class TQXFlowRecords {
public:
    using Record = std::vector<QVariant>; // the table's bound columns

    TQXFlowRecords(TQXDataAccessInterface& dataAccess, TQXTableHandleSet& tables, bool remember);

    bool Remembers() const { return FRemember; }
    bool Select(qx::Table table, const QString& where);
    bool Next(qx::Table table);
    qint32 Int(qx::Table table, int column);
    QString Text(qx::Table table, int column);

    // Selects `condition` once and remembers, for each where text in
    // `wheres`, the records of that selection whose whereOf gives that text,
    // in the selection's order; a where text no record gives selects
    // nothing. `condition` must select every record of every where text:
    // a where text it does not cover would be remembered as empty.
    void Prefetch(qx::Table table, const QString& condition,
                  const std::function<QString(const Record&)>& whereOf, const QStringList& wheres);

private:
    using Records = std::shared_ptr<const std::vector<Record>>;
    struct Cursor {
        Records Rows;
        std::size_t Index = 0;
    };

    // Every record of the current selection of the table, read through.
    std::vector<Record> ReadSelection(qx::Table table);
    const QVariant& Value(qx::Table table, int column) const;

    TQXRecordReader FReader;
    bool FRemember;
    std::array<QHash<QString, Records>, qx::TableCount> FSelections;
    std::array<Cursor, qx::TableCount> FCurrent;
};
