#pragma once

#include <QSqlDatabase>
#include <QString>
#include <QtGlobal>

#include <functional>

// The sample estate: a bank and insurer's COBOL, CICS, VisualAge Generator,
// JCL, SQL and Java sources as a loader would have stored them. Scale 1 is
// the demo (a few dozen files); each further unit of scale adds one regional
// copy of the banking and insurance suite with fresh ids and names, larger
// programs, and calls and data flows into the copy before it.
struct SampleEstateOptions {
    int scale = 1;
    quint32 seed = 1;
    std::function<void(const QString&)> progress; // optional; one line per step
    std::function<bool()> cancelled;              // optional; true stops the build
};

struct SampleEstateCounts {
    qint64 files = 0, objects = 0, entries = 0, rows = 0, words = 0, dependencies = 0, packages = 0,
           attributes = 0, dataflows = 0, loads = 0;
};

// Scale at which the estate holds at least 1,000,000 QXROW and 5,000,000
// QXWORD records.
inline constexpr int SampleEstateMillionRowScale = 200;

// Writes the estate into db, which must hold no repository tables: creates the
// tables, loads them in one transaction, creates the indexes. The same scale
// and seed give identical table contents. Throws EQXError on failure or when
// cancelled; the database is then left half-written and should be discarded.
SampleEstateCounts BuildSampleEstate(QSqlDatabase& db, const SampleEstateOptions& options);
