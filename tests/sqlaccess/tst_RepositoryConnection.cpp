// Opening repositories: connection strings read as libpq reads them, the
// timeouts of the settings file, and no connect, statement or lock that
// waits longer than its timeout, whether the server cancels, never answers
// or another program holds a lock.
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/Failure.h"
#include "support/SilentServer.h"
#include "support/TestRepository.h"

#include <QSettings>
#include <QSqlQuery>
#include <QtTest>

#include <csignal>

namespace {

// Sets the timeouts of new connections for one scope.
struct TimeoutsFor {
    const RepositoryTimeouts saved = RepositoryTimeouts::Current();
    TimeoutsFor(int connect, int statement) {
        RepositoryTimeouts::SetCurrent({.connectSeconds = connect, .statementSeconds = statement});
    }
    ~TimeoutsFor() { RepositoryTimeouts::SetCurrent(saved); }
};

// A backend stopped for one scope, and woken again however the scope ends;
// should this test process die meanwhile, a shell wakes it a little later.
struct StoppedProcess {
    const qint64 pid;
    const bool stopped = ::kill(pid_t(pid), SIGSTOP) == 0;
    explicit StoppedProcess(qint64 backend) : pid(backend) {
        if (stopped)
            QProcess::startDetached(
                "sh", {"-c", QString("exec >/dev/null 2>&1; sleep 30; kill -CONT %1").arg(pid)});
    }
    ~StoppedProcess() {
        if (stopped)
            ::kill(pid_t(pid), SIGCONT);
    }
};

} // namespace

class TestRepositoryConnection : public QObject {
    Q_OBJECT

private slots:
    void connectionStringsAreReadAsLibpqReadsThem() {
        using Kind = RepositoryLocation::Kind;
        const RepositoryLocation spaced = RepositoryLocation::Parse(
            "host = dbhost  dbname= estate user =me password='a b\\'c\\\\d' port = 5433");
        QCOMPARE(spaced.Display(), QString("postgresql://me@dbhost:5433/estate"));
        QCOMPARE(spaced.password, QString("a b'c\\d"));

        // Further keywords are handed on quoted, so blanks and quotes survive.
        const RepositoryLocation further =
            RepositoryLocation::Parse("dbname=e options='-c search_path=x' sslmode=disable");
        QCOMPARE(further.options, QString("options='-c search_path=x';sslmode='disable'"));
        const RepositoryLocation uri =
            RepositoryLocation::Parse("postgresql://me:pw@dbhost:5432/payroll?connect_timeout=5");
        QCOMPARE(uri.Display(), QString("postgresql://me@dbhost:5432/payroll"));
        QCOMPARE(uri.password, QString("pw"));
        QCOMPARE(uri.options, QString("connect_timeout='5'"));
        const RepositoryLocation hosts =
            RepositoryLocation::Parse("host=a,b port=5432,5433 dbname=e");
        QCOMPARE(hosts.port, -1);
        QCOMPARE(hosts.options, QString("port='5432,5433'"));

        // A text that starts with no libpq keyword is a file path.
        QCOMPARE(int(RepositoryLocation::Parse("runs/a=b.kvdb").kind), int(Kind::SQLite));
        QCOMPARE(int(RepositoryLocation::Parse("user=me").kind), int(Kind::PostgreSQL));

        const std::pair<const char*, const char*> invalid[] = {
            {"host=h port=abc dbname=e", "the port must be a number from 1 to 65535, not 'abc'"},
            {"host=h port=0 dbname=e", "not '0'"},
            {"postgresql://h:99999/e", "not '99999'"},
            {"host=h dbname=estate garbage", "missing \"=\" after \"garbage\""},
            {"host=h dbname=e colour=red", "invalid connection option \"colour\""},
            {"dbname=e password='unterminated", "unterminated quoted string"},
            {"dbname=e options='-c a=1;b'", "the value of options holds a ';'"},
        };
        for (const auto& [given, reason] : invalid) {
            const QString text = given; // Clang before 16 cannot capture a structured binding
            const Failure failure = FailureOf([&] { RepositoryLocation::Parse(text); });
            QVERIFY2(failure.Message.startsWith("Invalid PostgreSQL connection string: ") &&
                         failure.Message.contains(reason),
                     qPrintable(text + QString(" -> ") + failure.Message));
        }
    }

    void timeoutsComeFromTheSettingsFile() {
        QTemporaryDir dir;
        QSettings settings(dir.filePath("korvane.ini"), QSettings::IniFormat);
        settings.setValue("Timeouts/Connect", 4);
        settings.setValue("Timeouts/Statement", "soon");
        RepositoryTimeouts timeouts = RepositoryTimeouts::FromSettings(settings);
        QCOMPARE(timeouts.connectSeconds, 4);
        QCOMPARE(timeouts.statementSeconds, 30); // unreadable: the default
        settings.setValue("Timeouts/Statement", 0);
        QCOMPARE(RepositoryTimeouts::FromSettings(settings).statementSeconds, 0);
    }

    void aServerThatNeverAnswersIsGivenUpOn() {
        const SilentServer silent;
        QVERIFY(silent.Port() > 0);
        const TimeoutsFor timeouts(2, 2);
        const Failure failure = FailureOf([&] {
            OpenRepositoryDatabase(
                RepositoryLocation::Parse(
                    QString("host=127.0.0.1 port=%1 dbname=estate").arg(silent.Port())),
                "silent");
        });
        QVERIFY2(failure.Message.contains("the server did not answer within 2 s") &&
                     failure.Seconds < 8,
                 qPrintable(failure.Message + ", after s: " + QString::number(failure.Seconds)));
    }

    void aLockedSQLiteFileIsReportedAsLocked() {
        TestRepository repository;
        QSqlDatabase other = OpenRepositoryDatabase(
            RepositoryLocation::Parse(repository.Location()), "other program");
        const TimeoutsFor timeouts(10, 1);
        SqlDataAccess opened(repository.Location());
        QVERIFY(QSqlQuery(other).exec("BEGIN EXCLUSIVE"));
        // Locked before the repository is opened, and while it is read.
        const Failure opening = FailureOf([&] { SqlDataAccess(repository.Location()); });
        const Failure reading = FailureOf([&] { opened.GetTableRef("QXFILE"); });
        QCOMPARE(opening.Message, "Could not open repository " + repository.Location() +
                                      ": the file is locked by another program; waited 1 s "
                                      "(database is locked)");
        QCOMPARE(reading.Message, "The repository file " + repository.Location() +
                                      " is locked by another program; waited 1 s (database "
                                      "is locked)");
        QVERIFY(reading.TimedOut && opening.Seconds < 5 && reading.Seconds < 5);
        QSqlQuery(other).exec("ROLLBACK");
        other = QSqlDatabase();
        CloseRepositoryDatabase("other program");
    }

    void aLockOrAStoppedServerEndsAStatementInTime() {
        if (!TestRepository::PostgreSQLAvailable())
            QSKIP("KV_TEST_PG is not set");
        TestRepository repository(TestRepository::Backend::PostgreSQL);
        const TimeoutsFor timeouts(10, 1);
        // The server cancels a statement that waits for a lock.
        QSqlQuery lock(repository.Db());
        QVERIFY(lock.exec("BEGIN") && lock.exec("LOCK TABLE qxfile IN ACCESS EXCLUSIVE MODE"));
        SqlDataAccess access(repository.Location());
        const Failure locked = FailureOf([&] { access.GetTableRef("QXFILE"); });
        QVERIFY(lock.exec("ROLLBACK"));
        QVERIFY2(locked.TimedOut && locked.Seconds < 5 &&
                     locked.Message.startsWith("canceling statement due to lock timeout (the "
                                               "repository's time limit is 1 s)"),
                 qPrintable(locked.Message));

        // A stopped backend answers neither the statement nor its cancellation:
        // the client breaks the connection off after the timeout and a grace.
        qint64 roundTrips = 0;
        QSqlDatabase db =
            OpenRepositoryDatabase(RepositoryLocation::Parse(repository.Location()), "stopped");
        {
            SqlStatement statement(db, roundTrips);
            const StoppedProcess stopped(
                statement.ReadAll("SELECT pg_backend_pid()").at(0).at(0).toLongLong());
            if (!stopped.stopped) {
                db = QSqlDatabase();
                CloseRepositoryDatabase("stopped");
                QSKIP("the server's processes cannot be signalled from here");
            }
            const Failure failure = FailureOf([&] { statement.ReadAll("SELECT 1"); });
            QVERIFY2(
                failure.TimedOut && failure.Seconds >= 1 && failure.Seconds < 8 &&
                    failure.Message.startsWith("The PostgreSQL server did not answer within 1 s"),
                qPrintable(failure.Message + ", after s: " + QString::number(failure.Seconds)));
            QVERIFY(!db.isOpen());
        }
        db = QSqlDatabase();
        CloseRepositoryDatabase("stopped");
    }
};

QTEST_GUILESS_MAIN(TestRepositoryConnection)
#include "tst_RepositoryConnection.moc"
