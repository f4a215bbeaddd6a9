// Repositories another loader wrote: no QXSeq, lower-case names, columns in
// another order and of its own, fewer indexes, records deleted. Every view
// reads them as the same estate with QXSeq; failures to bind or to read an id
// name their real cause; a read-only file is shown but not written.
#include "SampleEstate.h"
#include "host/BaseFunctions.h"
#include "platform/ScriptedUIServices.h"
#include "sqlaccess/RepositorySchema.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/EveryView.h"
#include "support/Failure.h"
#include "support/RunProgram.h"
#include "support/TestRepository.h"
#include "view/View.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

#include <map>
#include <memory>

#include <pwd.h>
#include <unistd.h>

using Backend = TestRepository::Backend;

namespace {

const char* const Tables[] = {"QXFILE",         "QXOBJECT",  "QXENTRY",     "QXROW",      "QXWORD",
                              "QXDEPENDENCIES", "QXPACKAGE", "QXATTRIBUTE", "QXDATAFLOW", "QXLOAD"};

// `ours` as another loader writes it into `foreign`: lower-case names, the
// columns reversed around a column of its own, no QXSeq, two indexes of its
// own. Records are written and deleted again, so that the heap of a
// PostgreSQL table has gaps: a few records here and there, and in the tables
// too large to be read at once, thousands before the first record and after
// the thousandth (empty windows, and windows grown past them).
void WriteForeignCopy(TestRepository& ours, TestRepository& foreign, bool postgres) {
    QSqlDatabase db = foreign.Db();
    RepositorySchema::DropTables(db);
    if (!postgres)
        foreign.Exec("ATTACH DATABASE " + SqlLiteral(ours.Location()) + " AS ours");
    foreign.Exec(
        "CREATE TEMP TABLE kvgap AS WITH RECURSIVE n(f) AS (SELECT 1 UNION ALL SELECT f + 1 "
        "FROM n WHERE f < 20000) SELECT f FROM n");
    for (const char* table : Tables) {
        QSqlQuery probe(ours.Db());
        probe.exec(QString("SELECT * FROM %1 WHERE 1 = 0").arg(table));
        QStringList columns, names;
        for (int i = probe.record().count() - 1; i >= 0; --i) {
            const QString column = probe.record().fieldName(i);
            if (column.compare("QXSeq", Qt::CaseInsensitive) != 0) {
                columns << "src." + column + " AS " + column.toLower();
                names << column.toLower();
            }
        }
        names.insert(names.size() / 2, "note");
        const QString name = QString(table).toLower();
        const QString from = (postgres ? ours.Schema() : QString("ours")) + "." + table + " AS src";
        auto part = [&](const char* note, const char* order, const QString& join) {
            return "SELECT " + columns.join(", ") + ", '" + note + "' AS note, src.QXSeq AS o1, " +
                   order + " AS o2 FROM " + from + join;
        };
        QString records = part("loaded", "0", "");
        if (name == "qxrow" || name == "qxword")
            records += " UNION ALL " + part("filler", "f", " JOIN kvgap ON src.QXSeq IN (1, 1000)");
        records += " UNION ALL " +
                   part("filler", "f", " JOIN kvgap ON kvgap.f < 3 AND src.QXSeq % 97 = 0");
        foreign.Exec("CREATE TABLE " + name + " AS SELECT " + names.join(", ") + " FROM (" +
                     records + ") AS u ORDER BY o1, o2 DESC");
        foreign.Exec("DELETE FROM " + name + " WHERE note = 'filler'");
        if (postgres)
            foreign.Exec("VACUUM ANALYZE " + name); // the gaps stay, as empty pages
    }
    foreign.Exec("CREATE INDEX loader_file ON qxfile (qxfileid, qxsystemid)");
    foreign.Exec("CREATE INDEX loader_name ON qxobject (qxobjectname)");
    if (!postgres)
        foreign.Exec("DETACH DATABASE ours");
}

// The demo estate with QXSeq and two foreign copies of it, one to change
// and restore, built once per backend.
struct Estates {
    TestRepository ours, foreign, scratch;
    explicit Estates(Backend backend) : ours(backend), foreign(backend), scratch(backend) {
        QSqlDatabase db = ours.Db();
        RepositorySchema::DropTables(db);
        BuildSampleEstate(db, SampleEstateOptions{});
        WriteForeignCopy(ours, foreign, backend == Backend::PostgreSQL);
        WriteForeignCopy(ours, scratch, backend == Backend::PostgreSQL);
    }
};

// The columns that tell a record of these tables from the others.
QStringList KeyColumns(const QString& table) {
    const QStringList columns{"QXFileID", "QXObjectID", "QXEntryID", "QXRowID", "QXWordID"};
    return columns.first(table == "QXOBJECT" ? 2 : table == "QXROW" ? 4 : 5);
}

} // namespace

class TestForeignRepository : public QObject {
    Q_OBJECT

    std::map<int, std::unique_ptr<Estates>> FEstates;
    QTemporaryDir FDir;

    Estates& EstatesOf(int backend) {
        auto& estates = FEstates[backend];
        if (!estates)
            estates = std::make_unique<Estates>(Backend(backend));
        return *estates;
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }
    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
    }

    void everyViewIsTheSameAsWithQXSeq() {
        QFETCH_GLOBAL(int, backend);
        Estates& estates = EstatesOf(backend);
        for (const TQXViewSettings& settings : EveryView()) {
            const QStringList ours = Dump(FullyOpened(estates.ours.Location(), settings)->Tree());
            QVERIFY2(!ours.isEmpty() &&
                         Dump(FullyOpened(estates.foreign.Location(), settings)->Tree()) == ours,
                     qPrintable(Describe(settings)));
        }
        // The indexes the loader left out are named once, on connecting; its
        // own index on (qxfileid, qxsystemid) serves lookups by QXFileID.
        TQXViewDriver ours(estates.ours.Location());
        QCOMPARE(ours.RepositoryNotice(), QString());
        TQXScriptedUIServices ui;
        TQXBaseFunctions host;
        host.SetConnection("Foreign", estates.foreign.Location());
        for (int window = 1; window <= 2; ++window) {
            TQXView view(nullptr, window, &host, "View", "Foreign", "");
            view.RefreshContent(nullptr, nullptr, QString());
        }
        QCOMPARE(ui.Messages().size(), 1);
        const QString notice = ui.Messages().front();
        const ProgramRun cli = RunProgram("korvane-cli", {"tree", estates.foreign.Location()});
        QCOMPARE(cli.ExitCode, 0);
        QCOMPARE(cli.Err, "korvane-cli: note: " + notice + "\n");
        QVERIFY2(notice.contains(" lacks ") && notice.contains("QXFILE (QXSystemID), ") &&
                     !notice.contains("QXFILE (QXFileID)") &&
                     notice.contains("(QXObjectName, QXIcon)") &&
                     notice.contains("QXWORD (QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID)"),
                 qPrintable(notice));
    }

    // Record order, locating, walking on from a located record and writing,
    // through the data access itself, against the same estate with QXSeq.
    void recordsAreReadInTheLoadersOrder() {
        QFETCH_GLOBAL(int, backend);
        Estates& estates = EstatesOf(backend);
        SqlDataAccess ours(estates.ours.Location()), foreign(estates.foreign.Location());
        // Selections read through an index come in the index's order.
        if (backend == int(Backend::PostgreSQL))
            QVERIFY(QSqlQuery(foreign.Database())
                        .exec("SET enable_seqscan = off; SET enable_bitmapscan = off; "
                              "SET enable_tidscan = off"));
        auto read = [](SqlDataAccess& access, const char* table, const QString& where,
                       const QString& locateKeys, const QVariantList& locate) {
            TQXTableRef t = access.GetTableRef(table);
            QList<QVariantList> seen;
            auto record = [&] {
                QVariantList values;
                for (const QString& column : KeyColumns(table))
                    values << access.GetFieldValue(t, access.GetFieldRef(t, column));
                seen << values;
            };
            if (!access.SelectRecords(t, where))
                return seen;
            if (!locate.isEmpty()) {
                // Past the direct lookups, through the selection's index.
                for (int i = 0; i < 30; ++i)
                    access.LocateRecord(t, locateKeys, locate, 1);
                for (bool found = true; found;
                     found = access.LocateNextRecord(t, locateKeys, locate, 1))
                    record();
                access.LocateRecord(t, locateKeys, locate, 1);
            }
            do
                record();
            while (access.NextRecord(t));
            return seen;
        };
        for (const auto& [table, where, keys, values] :
             {std::tuple<const char*, QString, QString, QVariantList>{"QXWORD", "", "", {}},
              {"QXROW", "", "QXFileID;QXObjectID", {9, 1}},
              {"QXWORD", "QXWordType = 1011", "QXFileID", {12}},
              {"QXROW", "QXFileID = 3 OR QXFileID = 9", "QXRowID", {4}},
              {"QXOBJECT", "QXObjectName > ' '", "QXObjectID", {1}}}) {
            const auto expected = read(ours, table, where, keys, values);
            QVERIFY(expected.size() > 20);
            QCOMPARE(read(foreign, table, where, keys, values), expected);
        }
        // Writing twice to one record: a PostgreSQL update moves it.
        SqlDataAccess written(estates.scratch.Location());
        TQXTableRef attribute = written.GetTableRef("QXATTRIBUTE");
        TQXFieldRef name = written.GetFieldRef(attribute, "QXAttributeName");
        QVERIFY(written.SelectRecords(attribute, "QXAttributeID = 3"));
        for (const char* text : {"FIRST", "RENAMED"})
            written.SetFieldValue(attribute, name, QString(text));
        QCOMPARE(estates.scratch.Count("qxattribute", "qxattributename = 'RENAMED'"), 1);
        QCOMPARE(written.GetFieldValue(attribute, name).toString(), QString("RENAMED"));
    }

    void bindingFailuresNameTheRealCause() {
        QFETCH_GLOBAL(int, backend);
        if (backend == int(Backend::PostgreSQL)) {
            // A role that may connect but not read the tables.
            TestRepository& foreign = EstatesOf(backend).foreign;
            const QString role = QString("kv_viewer_%1").arg(QCoreApplication::applicationPid());
            foreign.Exec("CREATE ROLE " + role + " LOGIN");
            foreign.Exec("GRANT USAGE ON SCHEMA " + foreign.Schema() + " TO " + role);
            // The last user= is the one libpq takes.
            const ProgramRun run =
                RunProgram("korvane-cli", {"tree", foreign.Location() + " user=" + role});
            foreign.Exec("DROP OWNED BY " + role);
            foreign.Exec("DROP ROLE " + role);
            QCOMPARE(run.ExitCode, 1);
            QVERIFY2(
                run.Err.contains("AssignDBPointers failed: Table QXFILE of the repository ") &&
                    run.Err.contains("cannot be read: ERROR: permission denied for table qxfile"),
                qPrintable(run.Err));
            return;
        }
        QFile notes(FDir.filePath("notes.kvdb"));
        QVERIFY(notes.open(QIODevice::WriteOnly) && notes.write("Notes, not a repository\n") > 0);
        notes.close();
        TestRepository missing, withoutRowid;
        missing.Exec("DROP TABLE QXOBJECT");
        withoutRowid.Exec("DROP TABLE QXENTRY");
        withoutRowid.Exec("CREATE TABLE qxentry (qxfileid INT, qxobjectid INT, qxentryid INT, "
                          "qxentryname TEXT, qxobjectidentifier TEXT, "
                          "PRIMARY KEY (qxfileid, qxobjectid, qxentryid)) WITHOUT ROWID");
        for (const auto& [repository, message] :
             {std::pair{notes.fileName(), QString("Table QXFILE of the repository %1 cannot be "
                                                  "read: file is not a database")},
              {missing.Location(), QString("Table QXOBJECT not found in the repository %1")},
              {withoutRowid.Location(), QString("Table QXENTRY is a WITHOUT ROWID table "
                                                "without a QXSeq column")}}) {
            const ProgramRun run = RunProgram("korvane-cli", {"tree", repository});
            QCOMPARE(run.ExitCode, 1);
            QVERIFY2(run.Err.contains("AssignDBPointers failed: " +
                                      QString(message).replace("%1", repository)),
                     qPrintable(run.Err));
        }
    }

    void idsNameTableColumnAndRecord() {
        QFETCH_GLOBAL(int, backend);
        Estates& estates = EstatesOf(backend);
        const bool sqlite = backend == int(Backend::SQLite);
        TestRepository& foreign = estates.scratch;
        // The 17th object in the loader's order; a PostgreSQL column typed
        // integer by the loader holds neither text nor 64 bits, and an update
        // moves the record there.
        QSqlQuery key(foreign.Db());
        QVERIFY(key.exec(sqlite ? "SELECT rowid FROM qxobject ORDER BY rowid LIMIT 1 OFFSET 16"
                                : "SELECT ctid FROM qxobject ORDER BY ctid LIMIT 1 OFFSET 16") &&
                key.next());
        const QString id = key.value(0).toString();
        QList<std::tuple<TestRepository*, QString, QVariant, QString>> cases{
            {&foreign, sqlite ? "rowid = " + id : "ctid = '" + id + "'", QVariant(),
             "is NULL in the record with %1"}};
        if (sqlite)
            cases << std::tuple{&foreign, "rowid = " + id, QVariant("7b"),
                                QString("is not a whole number in the record with %1: '7b'")}
                  << std::tuple{&estates.ours, QString("QXSeq = 17"), QVariant(4294967297LL),
                                QString("is 4294967297 in the record with %1, outside the "
                                        "32-bit range")};
        for (const auto& [repo, where, value, message] : cases) {
            QSqlQuery original(repo->Db());
            QVERIFY(original.exec("SELECT QXObjectID FROM qxobject WHERE " + where) &&
                    original.next());
            QSqlQuery update(repo->Db());
            update.prepare("UPDATE qxobject SET QXObjectID = ? WHERE " + where +
                           (sqlite ? "" : " RETURNING ctid"));
            update.addBindValue(value);
            QVERIFY(update.exec());
            const QString record = repo == &estates.ours ? "QXSeq 17"
                                   : sqlite              ? "rowid " + id
                                   : update.next()       ? "ctid " + update.value(0).toString()
                                                         : QString();
            const ProgramRun run =
                RunProgram("korvane-cli", {"tree", repo->Location(), "--level", "Object"});
            repo->Exec("UPDATE qxobject SET QXObjectID = " + SqlLiteral(original.value(0)) +
                       " WHERE " + where);
            QCOMPARE(run.ExitCode, 1);
            QVERIFY2(run.Err.endsWith(
                         "korvane-cli: QXOBJECT.QXObjectID " + message.arg(record) +
                         (message.endsWith("range") ? " (-2147483648 to 2147483647)\n" : "\n")),
                     qPrintable(run.Err.section('\n', -2)));
        }
        // Conversions that are no loss pass; what would lose a digit does not.
        QCOMPARE(RecordInt(3.0, "T", "C", nullptr), 3);
        QCOMPARE(RecordInt(" -12 ", "T", "C", nullptr), -12);
        QCOMPARE(FailureOf([] { RecordInt(2.5, "T", "C", nullptr); }).Message,
                 QString("T.C is not a whole number in the current record: '2.5'"));
        QVERIFY(
            FailureOf([] {
                RecordInt("99999999999999999999", "T", "C", nullptr);
            }).Message.startsWith("T.C is 99999999999999999999 in the current record, outside"));
    }

    // A file its user may not read is said to be so; a read-only one is
    // shown but not written. Root reads and writes any file: there they are
    // opened as nobody, the real user too, as QFileInfo asks by that one.
    void filePermissionsAreHeeded() {
        QFETCH_GLOBAL(int, backend);
        if (backend != int(Backend::SQLite))
            QSKIP("a file's permissions are SQLite's");
        const passwd* nobody = geteuid() == 0 ? getpwnam("nobody") : nullptr;
        if (geteuid() == 0 && !nobody)
            QSKIP("running as root, which reads and writes any file, and no user nobody");
        TestRepository repo;
        repo.Insert("QXFILE", "QXFileID, QXFileName, QXSystemID", {{1, "PAYCALC.CBL", 1}});
        repo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName",
                    {{1, 1, "BANK"}});
        const QString folder = QFileInfo(repo.Location()).path();
        QFile unreadable(folder + "/unreadable.kvdb");
        QVERIFY(unreadable.open(QIODevice::WriteOnly));
        unreadable.setPermissions(QFileDevice::WriteOwner);
        const auto readable =
            QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;
        const auto open = QFileDevice::ExeOwner | QFileDevice::ExeGroup | QFileDevice::ExeOther;
        QFile::setPermissions(repo.Location(), readable);
        QFile::setPermissions(folder, readable | open);
        if (nobody)
            QVERIFY(setresuid(nobody->pw_uid, nobody->pw_uid, 0) == 0);
        std::unique_ptr<TQXViewDriver> driver;
        std::unique_ptr<SqlDataAccess> access;
        const QString refused = FailureOf([&] { SqlDataAccess{unreadable.fileName()}; }).Message;
        const QString opened = FailureOf([&] {
                                   driver = std::make_unique<TQXViewDriver>(repo.Location());
                                   access = std::make_unique<SqlDataAccess>(repo.Location());
                               }).Message;
        if (nobody)
            QVERIFY(setresuid(0, 0, 0) == 0);
        QCOMPARE(refused,
                 "The repository " + unreadable.fileName() + " cannot be read: permission denied");
        QCOMPARE(opened, QString("(nothing thrown)"));
        driver->Refresh();
        QCOMPARE(driver->Tree().Root(0)->Text(), QString("BANK"));
        TQXTableRef attribute = access->GetTableRef("QXATTRIBUTE");
        QVERIFY(access->SelectRecords(attribute, QString()));
        const TQXFieldRef name = access->GetFieldRef(attribute, "QXAttributeName");
        const QString message =
            FailureOf([&] { access->SetFieldValue(attribute, name, QString("IMS")); }).Message;
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                          QFileDevice::ExeOwner);
        QCOMPARE(message, "The repository " + repo.Location() +
                              " is read-only: attempt to write a readonly database");
    }
};

QTEST_MAIN(TestForeignRepository)
#include "tst_ForeignRepository.moc"
