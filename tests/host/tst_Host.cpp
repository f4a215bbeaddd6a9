// The host: its base functions (connections and their data-access objects,
// the Source Databases choice, settings, item hand-over), the base form (its
// main menu with the host's items, the commands reaching the virtual
// operations, closing, menu merging) and the class registry (registration
// for a registrar's lifetime, creation by name). The view library registering
// TQXView when the host loads it is checked by korvane's screenshot.
#include "host/BaseFunctions.h"
#include "host/FormInterface.h"
#include "host/FormRegistrar.h"
#include "host/Items.h"
#include "platform/ScriptedUIServices.h"
#include "repository/Errors.h"
#include "repository/TreeItems.h"
#include "support/Failure.h"
#include "support/NullDataAccess.h"

#include <QAction>
#include <QMenu>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Records which operation ran, with the sender's name.
class RecordingForm final : public TQXFormInterface {
public:
    using TQXFormInterface::TQXFormInterface;
    QStringList Calls;

    void Open1Click(QObject* sender) override { Record("Open1Click", sender); }
    void SaveAs1Click(QObject* sender) override { Record("SaveAs1Click", sender); }
    void Print1Click(QObject* sender) override {
        Record("Print1Click", sender);
        throw EQXError("no printer");
    }
    void Edit1Click(QObject* sender) override { Record("Edit1Click", sender); }
    void Copy1Click(QObject* sender) override { Record("Copy1Click", sender); }
    void SelectAll1Click(QObject* sender) override { Record("SelectAll1Click", sender); }
    void ClearSelection1Click(QObject* sender) override { Record("ClearSelection1Click", sender); }
    void Find1Click(QObject* sender) override { Record("Find1Click", sender); }

private:
    void Record(const char* operation, QObject* sender) {
        Calls << QString(operation) + ":" + sender->objectName();
    }
};

QStringList Names(const QList<QMenu*>& menus) {
    QStringList names;
    for (const QMenu* menu : menus)
        names << menu->objectName();
    return names;
}

} // namespace

class TestHost : public QObject {
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

    void oneDataAccessObjectPerUsableConnection() {
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

        // Unusable connections fail with their reason.
        host.SetConnection("Broken", "/data/broken.kvdb");
        QCOMPARE(FailureOf([&] { host.GetDataAccess(""); }).Message,
                 QString("No Source Database chosen"));
        QCOMPARE(FailureOf([&] { host.GetDataAccess("Nowhere"); }).Message,
                 QString("Source Database \"Nowhere\" is not configured"));
        QCOMPARE(FailureOf([&] { host.GetDataAccess("Broken"); }).Message,
                 QString("unable to open database file"));
        QVERIFY(!host.IsOpen("Broken")); // tried again on the next request
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
        QCOMPARE(name, QString("payroll")); // named after the file, or a database's name:
        QCOMPARE(host.Repository("payroll"), QString("/data/payroll.kvdb"));
        QCOMPARE(TQXBaseFunctions::ConnectionNameFor("host=/tmp dbname=estate user=me"),
                 QString("estate"));
        QCOMPARE(TQXBaseFunctions::ConnectionNameFor("postgresql://me@dbhost:5432/payroll"),
                 QString("payroll"));

        // With connections the choice is offered; the view's case takes one.
        host.SetConnection("Beta", "/b.kvdb");
        ui.QueueChoice(std::nullopt); // cancelled: the name stays
        host.ChooseSourceDatabase(nullptr, 0, name, 1);
        QCOMPARE(name, QString("payroll"));
        QCOMPARE(ui.Questions(), QStringList({"Source Databases"}));
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

    void languageDefinitionsShippedAndFromSettings() {
        QTemporaryDir dir;
        const QString file = dir.filePath("korvane.ini");
        {
            QSettings settings(file, QSettings::IniFormat);
            settings.setValue("Languages/20100", "COBOL, 5"); // overrides the shipped scope
            settings.setValue("Languages/31000", QStringList{"PL/I", "2"});
            settings.setValue("Languages/31001", "RPG");    // no scope: left out
            settings.setValue("Languages/x", "Natural, 2"); // no id: left out
        }
        QSettings settings(file, QSettings::IniFormat);
        QStringList rejected;
        LanguagesFromSettings(settings, &rejected);
        QCOMPARE(rejected, QStringList({"31001", "x"}));

        TQXBaseFunctions host;
        auto definition = [&](const QString& name) {
            return qobject_cast<TQXLanguageDefinition*>(host.GetNamedObject("LangDef_" + name));
        };
        QCOMPARE(host.GetLanguageName(20200), QString("JCL"));
        QCOMPARE(definition("JCL")->Scope(), 5);
        const QPointer<TQXLanguageDefinition> shipped = definition("COBOL");
        QCOMPARE(shipped->Scope(), 2);
        host.LoadSettings(settings);
        QVERIFY(shipped.isNull()); // replaced, so a view holding it looks it up again
        QCOMPARE(definition("COBOL")->Scope(), 5);
        QCOMPARE(definition("COBOL")->LanguageID(), 20100);
        QCOMPARE(host.GetLanguageName(31000), QString("PL/I"));
        QCOMPARE(definition("PL/I")->Scope(), 2);
        QVERIFY(host.GetLanguageName(31001).isEmpty());
        QVERIFY_THROWS_EXCEPTION(EQXError, host.GetNamedObject("LangDef_RPG"));
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

        QStringList received;
        host.RegisterWindow("WorkList", [&](const QString& connection, const TQXItems& got,
                                            const QString& command, QString&) {
            received << connection << command << got.At(0).Text
                     << QString::number(got.At(0).EntryID) + "/" + QString::number(got.At(0).RowID);
        });
        host.SendItemsToWindow("WorkList", 0, "Estate", items, "AddToWorkList", error);
        QVERIFY(error.isEmpty());
        QCOMPARE(received, QStringList({"Estate", "AddToWorkList", "PAYCALC", "3/4"}));

        // A single item travels as a one-entry list, entry before row.
        received.clear();
        host.SendItemsToWindow("WorkList", 0, "Estate", TQXItem(7, 0, 0, 0, 0, 8, 9, 10, 0), "",
                               error);
        QCOMPARE(received.last(), QString("9/10"));
        // A data item takes entry before row too, and travels with its first text.
        const TQXDataItem data("WS-AMOUNT", "PAYCALC", 1, 2, 3, 4, 5, 6, 7, 8, 9);
        host.SendItemsToWindow("WorkList", 0, "Estate", data, "", error);
        QCOMPARE(received.mid(6), QStringList({"WS-AMOUNT", "6/7"}));
        QCOMPARE((QList<int>{data.WordID, data.LanguageID}), (QList<int>{8, 9}));
    }

    void mainMenuHoldsTheHostsItemsAndMerges() {
        TQXBaseFunctions host;
        TQXFormInterface plain(nullptr, 1, &host, "View 1", "", "");
        QVERIFY(!plain.FindMenuItem("Save1")->isEnabled());
        QVERIFY(!plain.FindMenuItem("WorkList2")->isEnabled());
        QVERIFY(!plain.FindMenuItem("Diagram2")->isEnabled());

        host.RegisterWindow("WorkList", {});
        TQXFormInterface withWorkList(nullptr, 2, &host, "View 2", "", "");
        QVERIFY(withWorkList.FindMenuItem("WorkList2")->isEnabled());
        QVERIFY(!withWorkList.FindMenuItem("Diagram2")->isEnabled());

        // Merging places menus by group index.
        QWidget owner;
        TQXMainMenu base(&owner);
        base.AddMenu("File1", "File", 0);
        base.AddMenu("Edit1", "Edit", 1);
        base.AddMenu("Window1", "Window", 90);
        TQXMainMenu view(&owner);
        view.AddMenu("View1", "View", 40);
        view.AddMenu("Filter1", "Filter", 40);
        view.AddMenu("Edit2", "Edit", 1);

        view.Merge(base);
        QCOMPARE(Names(view.Menus()),
                 QStringList({"File1", "Edit1", "View1", "Filter1", "Window1"}));

        // A merged menu replaces every menu of its group.
        TQXMainMenu other(&owner);
        other.AddMenu("Views1", "Views", 40);
        view.Merge(other);
        QCOMPARE(Names(view.Menus()), QStringList({"File1", "Edit1", "Views1", "Window1"}));
    }

    void menuCommandsReachTheVirtualOperationsAndClosingAsks() {
        TQXScriptedUIServices ui;
        TQXBaseFunctions host;
        RecordingForm form(nullptr, 1, &host, "View 1", "", "");
        for (const char* name :
             {"View3", "SaveAs1", "Copy1", "SelectAll1", "ClearSelection1", "Find1", "Print1"})
            form.FindMenuItem(name)->trigger();
        emit form.MainMenu().FindMenu("Edit1")->aboutToShow();
        QCOMPARE(form.Calls,
                 QStringList({"Open1Click:View3", "SaveAs1Click:SaveAs1", "Copy1Click:Copy1",
                              "SelectAll1Click:SelectAll1", "ClearSelection1Click:ClearSelection1",
                              "Find1Click:Find1", "Print1Click:Print1", "Edit1Click:Edit1"}));
        // A failing command reaches the error display, not the event loop.
        QCOMPARE(ui.Errors(), QStringList({"no printer"}));
        // Closing asks when the form says so.
        form.show();
        ui.QueueAnswer(false);
        QVERIFY(!form.close());
        QCOMPARE(ui.Questions(), QStringList({"Close View 1?"}));
        ui.QueueAnswer(true);
        QVERIFY(form.close());
    }

    void registrarRegistersForItsLifetime() {
        TQXBaseFunctions host;
        {
            const TQXFormRegistrar registrar("TQXPlainForm", [](auto&&... arguments) {
                return std::make_unique<TQXFormInterface>(arguments...);
            });
            QVERIFY(TQXFormRegistry::IsRegistered("TQXPlainForm"));
            QVERIFY(TQXFormRegistry::ClassNames().contains("TQXPlainForm"));
            const auto form =
                TQXFormRegistry::Create("TQXPlainForm", nullptr, 3, &host, "View 3", "Estate", "");
            QCOMPARE(form->WindowNumber(), 3);
            QCOMPARE(form->ConnectionName(), QString("Estate"));
        }
        QVERIFY(!TQXFormRegistry::IsRegistered("TQXPlainForm"));
        QCOMPARE(FailureOf([&] {
                     TQXFormRegistry::Create("TQXPlainForm", nullptr, 1, &host, "", "", "");
                 }).Message,
                 QString("Class TQXPlainForm not found"));
    }
};

QTEST_MAIN(TestHost)
#include "tst_Host.moc"
