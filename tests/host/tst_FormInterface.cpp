// The base form: its main menu with the host's items, the commands reaching
// the virtual operations, closing, and menu merging; the class registry:
// registration for a registrar's lifetime, creation by name, and the view
// library registering TQXView when it is loaded.
#include "host/BaseFunctions.h"
#include "host/FormInterface.h"
#include "host/FormRegistrar.h"
#include "platform/ScriptedUIServices.h"
#include "repository/Errors.h"
#include "support/ErrorOf.h"

#include <QAction>
#include <QCoreApplication>
#include <QLibrary>
#include <QMenu>
#include <QtTest>

namespace {

// Records which operation ran, with the sender's name.
class RecordingForm final : public TQXFormInterface {
public:
    using TQXFormInterface::TQXFormInterface;
    QStringList Calls;

    void Open1Click(QObject* sender) override { Record("Open1Click", sender); }
    void Save1Click(QObject* sender) override { Record("Save1Click", sender); }
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

std::unique_ptr<TQXFormInterface> MakePlainForm(QWidget* owner, int number,
                                                TQXBaseFunctionsInterface* host,
                                                const QString& name, const QString& connection,
                                                const QString& command) {
    return std::make_unique<TQXFormInterface>(owner, number, host, name, connection, command);
}

} // namespace

class TestFormInterface : public QObject {
    Q_OBJECT

private slots:
    void mainMenuHoldsTheHostsItems() {
        TQXBaseFunctions host;
        TQXFormInterface plain(nullptr, 1, &host, "View 1", "", "");
        QCOMPARE(Names(plain.MainMenu().Menus()), QStringList({"File1", "Edit1", "Window1"}));
        for (const char* name : {"View3", "Save1", "SaveAs1", "Print1", "Copy1", "SelectAll1",
                                 "ClearSelection1", "Find1", "WorkList2", "Diagram2"})
            QVERIFY2(plain.FindMenuItem(name), name);
        QVERIFY(!plain.FindMenuItem("Save1")->isEnabled());
        QVERIFY(!plain.FindMenuItem("WorkList2")->isEnabled());
        QVERIFY(!plain.FindMenuItem("Diagram2")->isEnabled());
        QCOMPARE(plain.FindMenuItem("Nothing1"), nullptr);

        host.RegisterWindow("WorkList", {});
        TQXFormInterface withWorkList(nullptr, 2, &host, "View 2", "", "");
        QVERIFY(withWorkList.FindMenuItem("WorkList2")->isEnabled());
        QVERIFY(!withWorkList.FindMenuItem("Diagram2")->isEnabled());
    }

    void menuCommandsReachTheVirtualOperations() {
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
    }

    void closingAsksWhenTheFormSaysSo() {
        TQXScriptedUIServices ui;
        TQXBaseFunctions host;
        TQXFormInterface form(nullptr, 1, &host, "View 1", "", "");
        form.show();
        ui.QueueAnswer(false);
        QVERIFY(!form.close());
        QCOMPARE(ui.Questions(), QStringList({"Close View 1?"}));
        ui.QueueAnswer(true);
        QVERIFY(form.close());
    }

    void mergingPlacesMenusByGroupIndex() {
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
        QCOMPARE(TQXMainMenu::GroupIndex(view.FindMenu("Window1")), 90);
    }

    void registrarRegistersForItsLifetime() {
        TQXBaseFunctions host;
        {
            const TQXFormRegistrar registrar("TQXPlainForm", MakePlainForm);
            QVERIFY(TQXFormRegistry::IsRegistered("TQXPlainForm"));
            QVERIFY(TQXFormRegistry::ClassNames().contains("TQXPlainForm"));
            const auto form =
                TQXFormRegistry::Create("TQXPlainForm", nullptr, 3, &host, "View 3", "Estate", "");
            QCOMPARE(form->WindowNumber(), 3);
            QCOMPARE(form->ConnectionName(), QString("Estate"));
        }
        QVERIFY(!TQXFormRegistry::IsRegistered("TQXPlainForm"));
        QCOMPARE(ErrorOf([&] {
                     TQXFormRegistry::Create("TQXPlainForm", nullptr, 1, &host, "", "", "");
                 }),
                 QString("Class TQXPlainForm not found"));
    }

    void viewLibraryRegistersTQXViewWhenLoaded() {
        // This test does not link the view library; loading it is what
        // registers the view.
        QVERIFY(!TQXFormRegistry::IsRegistered("TQXView"));
        QLibrary library(QCoreApplication::applicationDirPath() + "/korvaneview");
        QVERIFY2(library.load(), qPrintable(library.errorString()));
        QVERIFY(TQXFormRegistry::IsRegistered("TQXView"));

        TQXBaseFunctions host;
        const auto view = TQXFormRegistry::Create("TQXView", nullptr, 1, &host, "View 1", "", "");
        QCOMPARE(view->ClassName(), QString("TQXView"));
        QCOMPARE(view->metaObject()->className(), "TQXView");
    }
};

QTEST_MAIN(TestFormInterface)
#include "tst_FormInterface.moc"
