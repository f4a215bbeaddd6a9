// The host's base functions: connections and their data-access objects, the
// Source Databases choice, settings, item hand-over and named objects.
#include "host/BaseFunctions.h"
#include "host/Items.h"
#include "platform/ScriptedUIServices.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "support/ErrorOf.h"
#include "support/NullDataAccess.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

class TestBaseFunctions : public QObject {
    Q_OBJECT

    QStringList FOpened;

    void UseNullFactory(TQXBaseFunctions& host) {
        host.SetDataAccessFactory([this](const QString& repository) {
            FOpened << repository;
            if (repository.contains("broken"))
                throw EQXError("unable to open database file");
            return std::make_unique<NullDataAccess>();
        });
    }

private slots:
    void init() { FOpened.clear(); }

    void oneDataAccessObjectPerConnection() {
        TQXBaseFunctions host;
        UseNullFactory(host);
        host.SetConnection("Estate", "/data/estate.kvdb");
        host.SetConnection("Other", "host=/tmp dbname=other");
        TQXDataAccessInterface* estate = host.GetDataAccess("Estate");
        QVERIFY(estate);
        QCOMPARE(host.GetDataAccess("Estate"), estate);
        QVERIFY(host.GetDataAccess("Other") != estate);
        QCOMPARE(FOpened, QStringList({"/data/estate.kvdb", "host=/tmp dbname=other"}));

        // A connection given another repository opens anew.
        host.SetConnection("Estate", "/data/estate2.kvdb");
        QVERIFY(!host.IsOpen("Estate"));
        host.GetDataAccess("Estate");
        QCOMPARE(FOpened.last(), QString("/data/estate2.kvdb"));
    }

    void unusableConnectionsFailWithTheirReason() {
        TQXBaseFunctions host;
        UseNullFactory(host);
        host.SetConnection("Broken", "/data/broken.kvdb");
        QCOMPARE(ErrorOf([&] { host.GetDataAccess(""); }), QString("No Source Database chosen"));
        QCOMPARE(ErrorOf([&] { host.GetDataAccess("Nowhere"); }),
                 QString("Source Database \"Nowhere\" is not configured"));
        QCOMPARE(ErrorOf([&] { host.GetDataAccess("Broken"); }),
                 QString("unable to open database file"));
        QVERIFY(!host.IsOpen("Broken"));
        // A failed connection is tried again on the next request.
        QCOMPARE(ErrorOf([&] { host.GetDataAccess("Broken"); }),
                 QString("unable to open database file"));
        QCOMPARE(FOpened.size(), 2);
    }

    void connectionNamesComeFromTheRepository() {
        QCOMPARE(TQXBaseFunctions::ConnectionNameFor("var/sample.kvdb"), QString("sample"));
        QCOMPARE(TQXBaseFunctions::ConnectionNameFor("host=/tmp dbname=estate user=me"),
                 QString("estate"));
        QCOMPARE(TQXBaseFunctions::ConnectionNameFor("postgresql://me@dbhost:5432/payroll"),
                 QString("payroll"));
    }

    void chooseSourceDatabaseOffersConnectionsOrAsksForAFile() {
        TQXScriptedUIServices ui;
        TQXBaseFunctions host;
        QString name;
        host.ChooseSourceDatabase(nullptr, 0, name, 1); // no connections, no file: cancelled
        QVERIFY(name.isEmpty());
        QVERIFY(host.ConnectionNames().isEmpty());
        ui.QueueOpenFileName("/data/payroll.kvdb");
        host.ChooseSourceDatabase(nullptr, 0, name, 1);
        QCOMPARE(name, QString("payroll"));
        QCOMPARE(host.Repository("payroll"), QString("/data/payroll.kvdb"));

        host.SetConnection("Beta", "/b.kvdb");
        ui.QueueChoice(QString("Beta"));
        host.ChooseSourceDatabase(nullptr, 0, name, 1);
        QCOMPARE(name, QString("Beta"));
        ui.QueueChoice(std::nullopt); // cancelled: the name stays
        host.ChooseSourceDatabase(nullptr, 0, name, 1);
        QCOMPARE(name, QString("Beta"));
        QCOMPARE(ui.Questions(), QStringList({"Source Databases", "Source Databases"}));
    }

    void settingsKeepConnectionsAndTreeFont() {
        QTemporaryDir dir;
        const QString file = dir.filePath("korvane.ini");
        {
            TQXBaseFunctions host;
            host.SetConnection("Estate", "/data/estate.kvdb");
            host.SetConnection("Pg", "host=/tmp dbname=pg");
            host.SetTreeFont("DejaVu Sans Mono", 11);
            QSettings settings(file, QSettings::IniFormat);
            host.SaveSettings(settings);
        }
        TQXBaseFunctions host;
        QSettings settings(file, QSettings::IniFormat);
        host.LoadSettings(settings);
        QCOMPARE(host.ConnectionNames(), QStringList({"Estate", "Pg"}));
        QCOMPARE(host.Repository("Pg"), QString("host=/tmp dbname=pg"));
        QCOMPARE(host.TreeFontName(), QString("DejaVu Sans Mono"));
        QCOMPARE(host.TreeFontSize(), 11);
    }

    void itemsGoToRegisteredWindowsOnly() {
        TQXBaseFunctions host;
        TQXItems items;
        items.AddItem(1, 0, 0, 0, 0, 2, 3, 4, 0);
        items.AddText("PAYCALC");
        items.AddLevel(1);
        QString error;
        host.SendItemsToWindow("WorkList", 0, "Estate", items, "AddToWorkList", error);
        QCOMPARE(error, QString("The host has no window named \"WorkList\""));
        QVERIFY(!host.HasWindow("WorkList"));

        QStringList received;
        host.RegisterWindow("WorkList", [&](const QString& connection, const TQXItems& got,
                                            const QString& command, QString&) {
            received << connection << command << got.At(0).Text
                     << QString::number(got.At(0).EntryID) + "/" + QString::number(got.At(0).RowID);
        });
        QVERIFY(host.HasWindow("WorkList"));
        host.SendItemsToWindow("WorkList", 0, "Estate", items, "AddToWorkList", error);
        QVERIFY(error.isEmpty());
        QCOMPARE(received, QStringList({"Estate", "AddToWorkList", "PAYCALC", "3/4"}));

        // A single item travels as a one-entry list, entry before row.
        received.clear();
        host.SendItemsToWindow("WorkList", 0, "Estate", TQXItem(7, 0, 0, 0, 0, 8, 9, 10, 0), "",
                               error);
        QCOMPARE(received.last(), QString("9/10"));
    }
};

QTEST_MAIN(TestBaseFunctions)
#include "tst_BaseFunctions.moc"
