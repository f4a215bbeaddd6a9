// The UI services: swapping the current instance, scripted answers, the
// busy cursor guard, the error display, and the Qt services' own rules.
#include "platform/BusyCursor.h"
#include "platform/ErrorDisplay.h"
#include "platform/QtUIServices.h"
#include "platform/ScriptedUIServices.h"
#include "repository/Errors.h"

#include <QGuiApplication>
#include <QtTest>

class TestUIServices : public QObject {
    Q_OBJECT

private slots:
    // Scripted services are current while they live, nested too, and answer
    // from their queue first, then with the default answer (No unless set).
    void scriptedServicesAnswerWhileTheyLive() {
        QVERIFY(dynamic_cast<TQXQtUIServices*>(&TQXUIServices::Current()));
        {
            TQXScriptedUIServices outer;
            {
                TQXScriptedUIServices ui;
                TQXUIServices& current = TQXUIServices::Current();
                QCOMPARE(&current, &ui);
                ui.QueueAnswer(true);
                ui.QueueAnswer(false);
                QVERIFY(current.Ask("Overwrite existing file?"));
                QVERIFY(!current.Ask("Again?"));
                QVERIFY(!current.Ask("Unscripted?", TQXQuestionKind::Warning));
                QCOMPARE(ui.Questions(),
                         QStringList({"Overwrite existing file?", "Again?", "Unscripted?"}));
                QCOMPARE(ui.Unanswered(), QStringList({"Unscripted?"}));
                ui.SetDefaultAnswer(true);
                ui.QueueAnswer(false);
                QVERIFY(!current.Ask("Queued?"));
                QVERIFY(current.Ask("Defaulted?"));
            }
            QCOMPARE(&TQXUIServices::Current(), &outer);
        }
        QVERIFY(dynamic_cast<TQXQtUIServices*>(&TQXUIServices::Current()));
    }

    void busyCursorRestoresWhatItFound() {
        TQXScriptedUIServices ui;
        ui.SetScreenCursor(Qt::CrossCursor);
        try {
            TQXBusyCursor outer;
            QCOMPARE(ui.ScreenCursor(), Qt::WaitCursor);
            { TQXBusyCursor inner; }
            QCOMPARE(ui.ScreenCursor(), Qt::WaitCursor);
            throw EQXError("failed while busy");
        } catch (const EQXError&) {
        }
        QCOMPARE(ui.ScreenCursor(), Qt::CrossCursor);
        QCOMPARE(ui.CursorLog(),
                 (QList<Qt::CursorShape>{Qt::CrossCursor, Qt::WaitCursor, Qt::WaitCursor,
                                         Qt::WaitCursor, Qt::CrossCursor}));
    }

    void qtServicesUseTheOverrideCursor() {
        TQXQtUIServices qt;
        QCOMPARE(qt.ScreenCursor(), Qt::ArrowCursor);
        qt.SetScreenCursor(Qt::WaitCursor);
        QVERIFY(QGuiApplication::overrideCursor());
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        qt.SetScreenCursor(Qt::IBeamCursor);
        QCOMPARE(qt.ScreenCursor(), Qt::IBeamCursor);
        qt.SetScreenCursor(Qt::ArrowCursor);
        QCOMPARE(QGuiApplication::overrideCursor(), nullptr);
        QCOMPARE(qt.ScreenCursor(), Qt::ArrowCursor);
    }

    // An EQXError's way there is checked with the base form's commands.
    void unhandledErrorsReachTheErrorDisplay() {
        TQXScriptedUIServices ui;
        RunReportingErrors([] { throw std::runtime_error("bad_alloc"); });
        RunReportingErrors([] {});
        QCOMPARE(ui.Errors(), QStringList({"bad_alloc"}));
    }

    void fileFiltersBecomeQtFilters() {
        QCOMPARE(TQXQtUIServices::QtFilter("Korvane View files (*.kvv)|*.kvv"),
                 QString("Korvane View files (*.kvv)"));
        QCOMPARE(TQXQtUIServices::QtFilter("Sources|*.cbl;*.cpy|All (*)|*"),
                 QString("Sources (*.cbl *.cpy);;All (*)"));
        QCOMPARE(TQXQtUIServices::QtFilter(""), QString());
    }
};

QTEST_MAIN(TestUIServices)
#include "tst_UIServices.moc"
