#include "SampleEstate.h"

#include "Estate.h"
#include "EstateCodes.h"
#include "EstateWriter.h"

#include "repository/Errors.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/RepositorySchema.h"

#include <QSqlError>
#include <QSqlQuery>

#include <vector>

using namespace estate;

namespace {

// The regional copies' programs grow with the paragraphs of generated rules;
// these bounds give about 5,400 rows and 29,000 words per copy.
constexpr int RegionalParagraphsMin = 30;
constexpr int RegionalParagraphsMax = 50;

QString PragmaValue(QSqlDatabase& db, const QString& name) {
    QSqlQuery query(db);
    if (query.exec(QStringLiteral("PRAGMA ") + name) && query.next())
        return query.value(0).toString();
    return QString();
}

void Exec(QSqlDatabase& db, const QString& sql) {
    QSqlQuery query(db);
    if (!query.exec(sql))
        throw EQXError(query.lastError().text() + QStringLiteral(" in: ") + sql);
}

// While a new SQLite file is loaded nothing needs to survive a crash: the
// caller writes to a temporary file. Journal and syncs are switched off for
// the load and restored afterwards.
class TSQLiteLoadMode {
public:
    explicit TSQLiteLoadMode(QSqlDatabase& db) : FDb(db), FActive(!IsPostgreSQL(db)) {
        if (!FActive)
            return;
        FJournal = PragmaValue(db, QStringLiteral("journal_mode"));
        FSynchronous = PragmaValue(db, QStringLiteral("synchronous"));
        Exec(db, QStringLiteral("PRAGMA journal_mode = OFF"));
        Exec(db, QStringLiteral("PRAGMA synchronous = OFF"));
    }
    ~TSQLiteLoadMode() {
        if (!FActive)
            return;
        QSqlQuery query(FDb);
        if (!FJournal.isEmpty())
            query.exec(QStringLiteral("PRAGMA journal_mode = ") + FJournal);
        if (!FSynchronous.isEmpty())
            query.exec(QStringLiteral("PRAGMA synchronous = ") + FSynchronous);
    }
    TSQLiteLoadMode(const TSQLiteLoadMode&) = delete;
    TSQLiteLoadMode& operator=(const TSQLiteLoadMode&) = delete;

private:
    QSqlDatabase& FDb;
    bool FActive;
    QString FJournal, FSynchronous;
};

struct TAttributes {
    qint32 retail, insurance, finance;
    qint32 frankfurt, london, munich, cloud, development, workstation;
    qint32 accounts, payments, claims, policies, ledger;
};

TAttributes AddAttributes(TEstate& estate) {
    TAttributes a{};
    a.retail = estate.AddAttribute(attr::System, QStringLiteral("RETAIL BANKING"), icon::System);
    a.insurance = estate.AddAttribute(attr::System, QStringLiteral("INSURANCE"), icon::System);
    a.finance = estate.AddAttribute(attr::System, QStringLiteral("GROUP FINANCE"), icon::System);
    estate.AddAttribute(attr::System, QStringLiteral("ARCHIVE"), icon::System); // holds no file

    a.frankfurt =
        estate.AddAttribute(attr::Computer, QStringLiteral("ZOS-PROD@FRANKFURT"), icon::Mainframe);
    a.london =
        estate.AddAttribute(attr::Computer, QStringLiteral("ZOS-PROD@LONDON"), icon::Mainframe);
    a.munich = estate.AddAttribute(attr::Computer, QStringLiteral("AS400@MUNICH"), icon::Midrange);
    a.cloud = estate.AddAttribute(attr::Computer, QStringLiteral("LINUX-GL01@EU-CLOUD"),
                                  icon::RackServer);
    // A computer without a location: its load records leave the location empty.
    a.development = estate.AddAttribute(attr::Computer, QStringLiteral("DEVLPAR"), icon::Terminal);
    // A workstation that runs a program of its own: listed among applications.
    a.workstation = estate.AddAttribute(attr::Computer, QStringLiteral("OS2-CLAIMS@HAMBURG"),
                                        icon::ComputerAsApplication);

    a.accounts = estate.AddAttribute(attr::Application, QStringLiteral("CUSTOMER ACCOUNTS"),
                                     icon::OnlineApplication);
    a.payments =
        estate.AddAttribute(attr::Application, QStringLiteral("PAYMENTS"), icon::BatchApplication);
    a.claims =
        estate.AddAttribute(attr::Application, QStringLiteral("CLAIMS"), icon::OnlineApplication);
    a.policies = estate.AddAttribute(attr::Application, QStringLiteral("POLICY ADMINISTRATION"),
                                     icon::BatchApplication);
    a.ledger = estate.AddAttribute(attr::Application, QStringLiteral("GENERAL LEDGER"),
                                   icon::BatchApplication);
    estate.AddAttribute(attr::Application, QStringLiteral("TREASURY"),
                        icon::OnlineApplication); // holds no file
    return a;
}

sample::TSuiteCopy DemoSuite(const TAttributes& a) {
    sample::TSuiteCopy copy;
    copy.accounts = {a.retail, a.frankfurt, a.accounts};
    copy.payments = {a.retail, a.frankfurt, a.payments};
    copy.claims = {a.insurance, a.london, a.claims};
    copy.policies = {a.insurance, a.london, a.policies};
    return copy;
}

// A regional copy runs on the same computers under applications of its own.
sample::TSuiteCopy RegionalSuite(TEstate& estate, const TAttributes& a, int index) {
    sample::TSuiteCopy copy = DemoSuite(a);
    copy.index = index;
    copy.suffix = sample::TSuiteCopy::SuffixOf(index);
    const QString region = QStringLiteral(" - REGION %1").arg(index, 3, 10, QLatin1Char('0'));
    copy.accounts.application = estate.AddAttribute(
        attr::Application, QStringLiteral("CUSTOMER ACCOUNTS") + region, icon::OnlineApplication);
    copy.payments.application = estate.AddAttribute(
        attr::Application, QStringLiteral("PAYMENTS") + region, icon::BatchApplication);
    copy.claims.application = estate.AddAttribute(
        attr::Application, QStringLiteral("CLAIMS") + region, icon::OnlineApplication);
    copy.policies.application =
        estate.AddAttribute(attr::Application, QStringLiteral("POLICY ADMINISTRATION") + region,
                            icon::BatchApplication);
    copy.extraParagraphsMin = RegionalParagraphsMin;
    copy.extraParagraphsMax = RegionalParagraphsMax;
    return copy;
}

} // namespace

SampleEstateCounts BuildSampleEstate(QSqlDatabase& db, const SampleEstateOptions& options) {
    if (options.scale < 1)
        throw EQXError(QStringLiteral("The scale must be at least 1"));
    auto report = [&](const QString& text) {
        if (options.progress)
            options.progress(text);
    };
    auto checkCancelled = [&] {
        if (options.cancelled && options.cancelled())
            throw EQXError(QStringLiteral("Interrupted"));
    };

    TSQLiteLoadMode loadMode(db);
    if (!db.transaction())
        throw EQXError(QStringLiteral("Could not begin a transaction: ") + db.lastError().text());
    try {
        report(QStringLiteral("creating tables"));
        RepositorySchema::CreateTables(db);
        TEstateWriter writer(db, checkCancelled);
        TEstate estate(writer, options.seed);

        const TAttributes attributes = AddAttributes(estate);
        std::vector<sample::TSuiteCopy> regions;
        for (int index = 1; index < options.scale; ++index)
            regions.push_back(RegionalSuite(estate, attributes, index));

        report(QStringLiteral("writing the demo estate"));
        sample::TSuiteCopy demo = DemoSuite(attributes);
        sample::TLandscape landscape;
        landscape.ledgerCobol = {attributes.finance, attributes.munich, attributes.ledger};
        landscape.ledgerJava = {attributes.finance, attributes.cloud, attributes.ledger};
        landscape.claimsWorkstation = {attributes.insurance, attributes.workstation, 0};
        landscape.bankData = {attributes.retail, attributes.frankfurt, attributes.payments};
        landscape.insuranceData = {attributes.insurance, attributes.london, attributes.policies};
        landscape.dateRoutine = {attributes.retail, attributes.frankfurt, 0};
        landscape.testDriver = {attributes.retail, attributes.development, 0};
        sample::PlanSuite(estate, demo);
        sample::PlanLandscape(estate, landscape);
        sample::WriteSuite(estate, demo);
        sample::WriteLandscape(estate, landscape);

        int reported = 0;
        for (sample::TSuiteCopy& region : regions) {
            checkCancelled();
            sample::PlanSuite(estate, region);
            sample::WriteSuite(estate, region);
            const int percent = int(qint64(region.index) * 100 / (options.scale - 1));
            if (percent >= reported + 10 || region.index + 1 == options.scale) {
                reported = percent - percent % 10;
                report(QStringLiteral("regional copy %1 of %2 written")
                           .arg(region.index)
                           .arg(options.scale - 1));
            }
        }
        writer.Flush();
        const SampleEstateCounts counts = writer.Counts();

        report(QStringLiteral("creating indexes"));
        checkCancelled();
        RepositorySchema::CreateIndexes(db);
        if (!db.commit())
            throw EQXError(QStringLiteral("Commit failed: ") + db.lastError().text());
        return counts;
    } catch (...) {
        db.rollback();
        throw;
    }
}
