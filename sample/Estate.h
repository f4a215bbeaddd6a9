#pragma once

#include "EstateWriter.h"
#include "Random.h"
#include "SourceFile.h"

#include <QHash>
#include <QString>

// The system, computer and application a file is loaded for; 0 = none.
struct TAssignment {
    qint32 system = 0;
    qint32 computer = 0;
    qint32 application = 0;
};

// What the parts of the estate share while it is written: the writer, the
// id counters, the attributes by id (load records name them), and the
// targets of calls by key ("PGM:CUSTMAINT", "MAP:CUSTM1" ...), so that a part
// can call into a file written before or after it.
class TEstate {
public:
    TEstate(TEstateWriter& writer, quint32 seed) : FWriter(writer), FSeed(seed) {}

    TEstateWriter& Writer() { return FWriter; }
    TRandom Random(quint64 stream) const { return TRandom::Stream(FSeed, stream); }

    qint32 AddAttribute(int type, const QString& name, int icon);
    // Writes the file record and its load record; returns the file id.
    qint32 AddFile(const QString& name, const QString& directory, int language,
                   const TAssignment& assignment);
    qint32 NewPackageID() { return FNextPackage++; }

    // Keys are "KIND:NAME"; a key is defined once.
    void Define(const QString& key, const TTarget& target);
    TTarget Find(const QString& key) const; // throws when the key is not defined
    // What source calls by name: a program, function, screen map or table,
    // looked for in that order. Throws when there is none.
    TTarget FindCallable(const QString& name) const;

private:
    TEstateWriter& FWriter;
    quint32 FSeed;
    QHash<qint32, QString> FAttributeNames;
    QHash<QString, TTarget> FTargets;
    qint32 FNextAttribute = 1;
    qint32 FNextFile = 1;
    qint32 FNextPackage = 1;
};

// The parts of the estate. Each is planned first (files and call targets
// defined) and written afterwards, so parts can call each other both ways.
namespace sample {

// The banking and insurance suite; copy 0 is the demo's, further copies are
// the regional variants that scale adds.
struct TSuiteCopy {
    int index = 0;
    QString suffix; // appended to every program, copy member, map and job name
    TAssignment accounts, payments, claims, policies;
    qint32 loadModulePackage = 0;
    qint32 batchPackage = 0;
    int extraParagraphsMin = 1, extraParagraphsMax = 2;

    QString Name(const QString& base) const { return base + suffix; }
    static QString SuffixOf(int copyIndex) {
        return copyIndex == 0 ? QString() : QStringLiteral("-%1").arg(copyIndex);
    }
};

void PlanSuite(TEstate& estate, TSuiteCopy& copy);
void WriteSuite(TEstate& estate, const TSuiteCopy& copy);

// The estate's single pieces: the general ledger's Java classes, the
// VisualAge Generator claim entry, the databases, the date conversion
// routine, a test driver and an unassigned conversion program.
struct TLandscape {
    TAssignment ledgerJava, ledgerCobol, claimsWorkstation, bankData, insuranceData, dateRoutine,
        testDriver;
    qint32 ledgerPackage = 0;
};

void PlanLandscape(TEstate& estate, TLandscape& landscape);
void WriteLandscape(TEstate& estate, const TLandscape& landscape);

} // namespace sample
