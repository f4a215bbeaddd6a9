// The class registry: registration for a registrar's lifetime, creation by
// name, and the view library registering TQXView when it is loaded.
#include "host/BaseFunctions.h"
#include "host/FormInterface.h"
#include "host/FormRegistrar.h"
#include "repository/Errors.h"

#include <QCoreApplication>
#include <QLibrary>
#include <QtTest>

namespace {

std::unique_ptr<TQXFormInterface> MakePlainForm(QWidget* owner, int number,
                                                TQXBaseFunctionsInterface* host,
                                                const QString& name, const QString& connection,
                                                const QString& command) {
    return std::make_unique<TQXFormInterface>(owner, number, host, name, connection, command);
}

} // namespace

class TestFormRegistry : public QObject {
    Q_OBJECT

private slots:
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
        try {
            TQXFormRegistry::Create("TQXPlainForm", nullptr, 1, &host, "", "", "");
            QFAIL("created an unregistered class");
        } catch (const EQXError& e) {
            QCOMPARE(e.Message(), QString("Class TQXPlainForm not found"));
        }
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

QTEST_MAIN(TestFormRegistry)
#include "tst_FormRegistry.moc"
