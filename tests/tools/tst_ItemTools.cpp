// Item properties, the attribute writes and dependent rows on SQLite and
// PostgreSQL: what the dialog shows for each kind of item, renames carried
// into load records, the close question, a failed save leaving every table
// as it was, the delete rule, and the dependent rows of two selected nodes.
#include "SampleEstate.h"
#include "ToolsEstate.h"

#include "driver/ViewDriver.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "repository/TreeItems.h"
#include "repository/WhereText.h"
#include "sqlaccess/RepositoryConnection.h"
#include "sqlaccess/RepositorySchema.h"
#include "sqlaccess/SqlDataAccess.h"
#include "tools/AttributeWriter.h"
#include "tools/DependentRows.h"
#include "tools/DependentRowsWindow.h"
#include "tools/ItemPropertiesDialog.h"
#include "view/View.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QtTest>

namespace {

// Every record of the tables the writes touch, for before-and-after checks.
QStringList Snapshot(TestRepository& repo) {
    QStringList rows;
    for (const char* sql :
         {"SELECT QXAttributeID, QXAttributeName, QXIcon FROM QXATTRIBUTE ORDER BY QXSeq",
          "SELECT QXFileName, QXSystemName, QXComputerType, QXComputerLocation, "
          "QXApplicationName FROM QXLOAD ORDER BY QXSeq",
          "SELECT QXFileID, QXSystemID, QXComputerID, QXApplicationID FROM QXFILE ORDER BY "
          "QXSeq"}) {
        QSqlQuery query(repo.Db());
        query.exec(QLatin1String(sql));
        while (query.next()) {
            QStringList values;
            for (int i = 0; i < query.record().count(); ++i)
                values << query.value(i).toString();
            rows << values.join('|');
        }
    }
    return rows;
}

QStringList Choices(const TQXItemProperties& dialog) {
    QStringList icons;
    for (int i = 0; i < dialog.cbeIcon->count(); ++i)
        icons << dialog.cbeIcon->itemData(i).toString();
    return icons;
}

// Type, name, file, chosen icon, choices, identifiers and what can be edited.
QString Shown(const TQXItemProperties& dialog) {
    return QStringList{dialog.tbItemType->text(),
                       dialog.tbItemName->text(),
                       dialog.mmInFile->toPlainText(),
                       QString::number(dialog.ChosenIcon()),
                       Choices(dialog).join(','),
                       dialog.tbKVID->text(),
                       QString(dialog.tbItemName->isEnabled() ? "N" : "-") +
                           (dialog.cbeIcon->isEnabled() ? "I" : "-") +
                           (dialog.cbSave->isEnabled() ? "S" : "-")}
        .join(" / ");
}

TQXViewSettings SettingsOf(TQXViewType type, TQXLevel level, bool topDown = true) {
    TQXViewSettings settings;
    settings.Type = type;
    settings.Level = level;
    settings.Direction = topDown ? TQXDirection::TopDown : TQXDirection::BottomUp;
    return settings;
}

// The rows "Show Dependent Rows" lists for the nodes at two paths of a
// Dependencies view, selected in that order, or the message it showed.
QStringList DependentRows(const QString& repository, TQXLevel level, bool topDown,
                          const QStringList& first, const QStringList& second) {
    TQXViewDriver driver(repository);
    driver.Apply(SettingsOf(TQXViewType::Dependencies, level, topDown));
    driver.Refresh();
    auto find = [&](const QStringList& path) {
        TQXTreeNode* node = nullptr;
        for (const QString& text : path) {
            if (node)
                driver.Expand(node);
            const int count = node ? node->ChildCount() : driver.Tree().RootCount();
            TQXTreeNode* parent = node;
            node = nullptr;
            for (int i = 0; i < count && !node; ++i) {
                TQXTreeNode* candidate = parent ? parent->Child(i) : driver.Tree().Root(i);
                if (candidate->Text() == text)
                    node = candidate;
            }
            if (!node)
                throw EQXError("no node " + text);
        }
        return node;
    };
    TQXTreeNode* a = find(first);
    driver.Tree().Select(a);
    if (!second.isEmpty())
        driver.Tree().Select(find(second), true);
    QStringList rows;
    driver.Ui().QueueDialog([&rows](QDialog& window) {
        rows = static_cast<TQXDependentRows&>(window).Rows();
        return int(QDialog::Accepted);
    });
    driver.View().ShowDependentRows1Click(nullptr);
    return driver.Ui().Messages().isEmpty() ? rows : driver.Ui().Messages();
}

} // namespace

class TestItemTools : public QObject {
    Q_OBJECT

    std::unique_ptr<TestRepository> FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;

    std::unique_ptr<TQXItemProperties> Dialog(const TQXItem& item, int* refreshes = nullptr) {
        return std::make_unique<TQXItemProperties>(nullptr, nullptr, item, FAccess.get(),
                                                   [refreshes] {
                                                       if (refreshes)
                                                           ++*refreshes;
                                                   });
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }

    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
        FRepo = std::make_unique<TestRepository>(TestRepository::CurrentBackend());
        BuildToolsEstate(*FRepo);
        FAccess = std::make_unique<SqlDataAccess>(FRepo->Location());
    }
    void cleanup() {
        FAccess.reset();
        FRepo.reset();
    }

    void propertiesShowEachKindOfItem() {
        TQXScriptedUIServices ui;
        const QList<std::pair<TQXItem, QString>> cases{
            {*TQXItem::ForSystem(1), "System / ACCOUNTS /  / 1 / 1 / QXAttributeID = 1 / N--"},
            {*TQXItem::ForComputer(2),
             "Computer / HOST@DC1 /  / 2 / 2,3,4,5,6,7,8 / QXAttributeID = 2 / NI-"},
            {*TQXItem::ForApplication(3),
             "Application / PAYROLL /  / 9 / 9,10 / QXAttributeID = 3 / NI-"},
            {*TQXItem::ForComputer(4),
             "Computer / OS2@HAM /  / 49 / 2,3,4,5,6,7,8,49 / QXAttributeID = 4 / ---"},
            {*TQXItem::ForComputer(9), "Computer /  /  / -1 /  / QXAttributeID = 9 / NI-"},
            {*TQXItem::ForWord(1, 1, 1, 12, 1),
             "Variable / ZETA / C:\\SRC\\PAY.CBL / 35 / 35 / 1;1;1;12;1 / ---"},
            {*TQXItem::ForRow(1, 1, 1, 12),
             "Line of Code /  / C:\\SRC\\PAY.CBL / 0 / 0 / 1;1;1;12 / ---"},
            {*TQXItem::ForEntry(1, 2, 1), "Entry / RUN / C:\\SRC\\PAY.CBL / 29 / 29 / 1;2;1 / ---"},
            {*TQXItem::ForObject(1, 3), "Object / SUB / C:\\SRC\\PAY.CBL / 52 / 52 / 1;3 / ---"},
            {*TQXItem::ForPackage(5, 7), "Package / PAYPACK /  / 12 / 12 / QXPackageID = 7 / ---"},
            {*TQXItem::ForObject(1, 8), " /  / C:\\SRC\\PAY.CBL / -1 /  / 1;8 / ---"},
        };
        for (const auto& [item, expected] : cases) {
            ui.ClearLog();
            const auto dialog = Dialog(item);
            QCOMPARE(Shown(*dialog), expected);
            QVERIFY(!dialog->tbItemType->isEnabled());
            QCOMPARE(dialog->mmInFile->isEnabled(), dialog->mmInFile->toPlainText().isEmpty());
            QCOMPARE(ui.Messages(), expected.startsWith(" /") ? QStringList{"Unsupported Itemtype"}
                                                              : QStringList{});
        }
        // A variable node opens with a temporary item built from its data item.
        TQXViewDriver driver(FRepo->Location());
        driver.Refresh();
        driver.Tree().Select(driver.Tree().AddRoot(
            "ZETA", std::make_unique<TQXDataItem>("ZETA", "", 9, 9, 9, 1, 1, 1, 12, 1, 0), 35));
        QString shown;
        driver.Ui().QueueDialog([&shown](QDialog& dialog) {
            shown = Shown(static_cast<TQXItemProperties&>(dialog));
            return int(QDialog::Rejected);
        });
        driver.View().Properties2Click(nullptr);
        QCOMPARE(shown, QString("Variable / ZETA / C:\\SRC\\PAY.CBL / 35 / 35 / 1;1;1;12;1 / ---"));
    }

    void renamesCarryIntoLoadRecords() {
        TQXScriptedUIServices ui;
        int refreshes = 0;
        auto rename = [&](qint32 computer, const QString& name, int icon = -1) {
            const auto dialog = Dialog(*TQXItem::ForComputer(computer), &refreshes);
            dialog->tbItemName->setText(name);
            if (icon >= 0)
                dialog->cbeIcon->setCurrentIndex(dialog->cbeIcon->findData(icon));
            QVERIFY(dialog->cbSave->isEnabled());
            dialog->cbSaveClick();
            QVERIFY(!dialog->cbSave->isEnabled());
            // Closing right after a save asks nothing.
            dialog->cbCloseClick();
            QVERIFY(ui.Questions().isEmpty());
        };
        auto loads = [&](const QString& where) { return FRepo->Count("QXLOAD", where); };

        rename(2, "NEW@DC9", 5);
        QCOMPARE(loads("QXComputerType = 'NEW' AND QXComputerLocation = 'DC9'"), 2);
        QCOMPARE(loads("QXComputerType = 'HOST' AND QXComputerLocation = 'DC2'"), 1);
        QCOMPARE(FRepo->Count("QXATTRIBUTE", "QXAttributeName = 'NEW@DC9' AND QXIcon = 5"), 1);
        rename(2, "NEWONLY");
        QCOMPARE(loads("QXComputerType = 'NEWONLY' AND QXComputerLocation = ''"), 2);
        // A name with a quote renames exactly the records that carry it.
        rename(6, "O'NEIL@DC2");
        QCOMPARE(loads("QXComputerType = 'O''NEIL' AND QXComputerLocation = 'DC2'"), 1);
        QCOMPARE(loads("QXComputerType = 'O''NEILL' AND QXComputerLocation = 'DC1'"), 1);
        // A computer without a location is found by its type.
        rename(5, "SOLO2@Z");
        QCOMPARE(loads("QXComputerType = 'SOLO2' AND QXComputerLocation = 'Z'"), 1);
        QCOMPARE(refreshes, 4);

        const auto system = Dialog(*TQXItem::ForSystem(1));
        system->tbItemName->setText("ACC");
        system->cbSaveClick();
        QCOMPARE(system->LastLoadRecordsChanged(), 5);
        QCOMPARE(loads("QXSystemName = 'ACC'"), 5);
        const auto application = Dialog(*TQXItem::ForApplication(3));
        application->tbItemName->setText("PAY2");
        application->cbeIcon->setCurrentIndex(1);
        application->cbSaveClick();
        QCOMPARE(loads("QXApplicationName = 'PAY2'"), 5);
        QCOMPARE(FRepo->Count("QXATTRIBUTE", "QXAttributeName = 'PAY2' AND QXIcon = 10"), 1);

        // An empty name is refused; closing with changes asks, and No keeps it open.
        const QStringList before = Snapshot(*FRepo);
        const auto empty = Dialog(*TQXItem::ForComputer(2));
        empty->show();
        empty->tbItemName->clear();
        empty->cbSaveClick();
        QCOMPARE(ui.Messages(), QStringList{"Name is required"});
        QCOMPARE(Snapshot(*FRepo), before);
        ui.QueueAnswer(false);
        empty->cbCloseClick();
        QVERIFY(empty->isVisible());
        ui.QueueAnswer(true);
        empty->cbCloseClick();
        QVERIFY(!empty->isVisible());
        QCOMPARE(ui.Questions(), QStringList(2, "Unsaved changes will be lost. Close anyway?"));
    }

    void failedSaveLeavesEveryTableAsItWas() {
        TQXScriptedUIServices ui;
        // The second of the two load records of HOST@DC1 clashes with one of NEW@DC9.
        FRepo->Insert("QXLOAD", "QXFileName, QXComputerType, QXComputerLocation",
                      {{"A.CBL", "NEW", "DC9"}});
        FRepo->Exec("CREATE UNIQUE INDEX QXLOAD_CLASH ON QXLOAD (QXComputerType, "
                    "QXComputerLocation, QXFileName)");
        const QStringList before = Snapshot(*FRepo);
        const auto dialog = Dialog(*TQXItem::ForComputer(2));
        dialog->tbItemName->setText("NEW@DC9");
        dialog->cbeIcon->setCurrentIndex(dialog->cbeIcon->findData(7));
        dialog->cbSaveClick();
        QCOMPARE(ui.Messages().size(), 1);
        QVERIFY2(ui.Messages().constFirst().contains("UNIQUE", Qt::CaseInsensitive) ||
                     ui.Messages().constFirst().contains("duplicate"),
                 qPrintable(ui.Messages().constFirst()));
        QCOMPARE(Snapshot(*FRepo), before);
        // The dialog keeps its values: once the clash is gone the same save succeeds.
        QVERIFY(dialog->cbSave->isEnabled());
        FRepo->Exec("DROP INDEX QXLOAD_CLASH");
        dialog->cbSaveClick();
        QCOMPARE(FRepo->Count("QXLOAD", "QXComputerType = 'NEW' AND QXComputerLocation = 'DC9'"),
                 3);
        QCOMPARE(FRepo->Count("QXATTRIBUTE", "QXAttributeName = 'NEW@DC9' AND QXIcon = 7"), 1);

        const QStringList saved = Snapshot(*FRepo);
        ui.ClearLog();
        if (TestRepository::CurrentBackend() == TestRepository::Backend::PostgreSQL) {
            // The connection is lost on the second load record written.
            FRepo->Exec("CREATE FUNCTION kv_lose_connection() RETURNS trigger AS $$ BEGIN "
                        "IF OLD.QXFileName = 'A.CBL' THEN PERFORM "
                        "pg_terminate_backend(pg_backend_pid()); END IF; RETURN NEW; END $$ "
                        "LANGUAGE plpgsql");
            FRepo->Exec("CREATE TRIGGER kv_lose BEFORE UPDATE ON QXLOAD FOR EACH ROW EXECUTE "
                        "FUNCTION kv_lose_connection()");
        } else {
            // Another program holds the file's write lock.
            RepositoryTimeouts timeouts;
            timeouts.statementSeconds = 1;
            RepositoryTimeouts::SetCurrent(timeouts);
            FAccess = std::make_unique<SqlDataAccess>(FRepo->Location());
            FRepo->Exec("BEGIN IMMEDIATE");
        }
        const auto again = Dialog(*TQXItem::ForComputer(2));
        again->tbItemName->setText("LAST@DC0");
        again->cbSaveClick();
        if (TestRepository::CurrentBackend() == TestRepository::Backend::SQLite) {
            FRepo->Exec("ROLLBACK");
            RepositoryTimeouts::SetCurrent(RepositoryTimeouts());
        }
        QCOMPARE(ui.Messages().size(), 1);
        QCOMPARE(Snapshot(*FRepo), saved);
        QVERIFY(again->cbSave->isEnabled());
        QCOMPARE(again->tbItemName->text(), QString("LAST@DC0"));
    }

    void deleteTakesTheMostSpecificAttribute() {
        QVERIFY(DeleteAttribute(*FAccess, TQXItem(0, 1, 2, 3, 0, 0, 0, 0, 0)));
        QCOMPARE(FRepo->Count("QXATTRIBUTE", "QXAttributeID IN (1, 2, 3)"), 2);
        QCOMPARE(FRepo->Count("QXATTRIBUTE", "QXAttributeID = 3"), 0);
        QCOMPARE(FRepo->Count("QXFILE", "QXApplicationID = 0 AND QXComputerID = 2"), 2);
        QVERIFY(DeleteAttribute(*FAccess, *TQXItem::ForSystem(1)));
        QCOMPARE(FRepo->Count("QXFILE", "QXSystemID = 0"), 2);
        const QStringList before = Snapshot(*FRepo);
        QVERIFY(!DeleteAttribute(*FAccess, *TQXItem::ForObject(1, 1)));
        QCOMPARE(Snapshot(*FRepo), before);

        // Through the view: an object node cannot be deleted.
        TQXViewDriver driver(FRepo->Location());
        driver.Refresh();
        driver.Tree().Select(driver.Tree().AddRoot("MAIN", TQXItem::ForObject(1, 1), 52));
        driver.View().DeletethisItem1Click(nullptr);
        QCOMPARE(driver.Ui().Messages(), QStringList{"Delete not possible"});
    }

    void dependentRowsOfTwoNodes() {
        const QString repo = FRepo->Location();
        const QStringList mainToZeta{"CALL 'ZETA'    [MAIN.START]",
                                     "CALL 'ZETA' AGAIN    [MAIN.LOOP]",
                                     "CALL 'ZETA' ELSEWHERE    [MAIN]"};
        const QStringList main{"MAIN [Program]"}, mainZeta{"MAIN [Program]", "ZETA [Program]"};
        const QStringList zeta{"ZETA [Program]"}, zetaMain{"ZETA [Program]", "MAIN [Program]"};
        // TopDown: the lines in A that call B, in either order of selection.
        QCOMPARE(DependentRows(repo, TQXLevel::Object, true, main, mainZeta), mainToZeta);
        QCOMPARE(DependentRows(repo, TQXLevel::Object, true, mainZeta, main), mainToZeta);
        // BottomUp: the lines in B that call A.
        QCOMPARE(DependentRows(repo, TQXLevel::Object, false, zeta, zetaMain), mainToZeta);
        QCOMPARE(DependentRows(repo, TQXLevel::Object, false, zetaMain, zeta), mainToZeta);
        QCOMPARE(DependentRows(repo, TQXLevel::Entry, true, {"START [MAIN]"},
                               {"START [MAIN]", "RUN [ZETA]"}),
                 QStringList{"CALL 'ZETA'    [MAIN.START]"});
        QCOMPARE(DependentRows(repo, TQXLevel::Object, true, main, {}),
                 QStringList{"Select two items, a node and one of its children, to show the rows "
                             "through which the one calls the other"});
        {
            TQXViewDriver driver(repo);
            driver.Apply(SettingsOf(TQXViewType::Dependencies, TQXLevel::System));
            driver.Refresh();
            TQXTreeNode* system = driver.Tree().AddRoot("ACCOUNTS", TQXItem::ForSystem(1), 1);
            driver.Tree().Select(system);
            driver.Tree().Select(driver.Tree().AddChild(system, "ACC", TQXItem::ForSystem(9), 1),
                                 true);
            driver.View().ShowDependentRows1Click(nullptr);
            QCOMPARE(driver.Ui().Messages(), QStringList{"Function not implemented for System"});
            QVERIFY(driver.Ui().Dialogs().isEmpty());
        }

        // Packages: a file-like one by files, another not at all; one without a record lists
        // nothing.
        TQXDependentRowsReader reader(*FAccess);
        QCOMPARE(reader.Condition(*TQXItem::ForPackage(5, 7), *TQXItem::ForPackage(2, 8), false),
                 std::optional<QString>("QXFromFileID = 2 AND QXFileID = 5"));
        QCOMPARE(reader.Condition(*TQXItem::ForPackage(2, 8), *TQXItem::ForPackage(5, 7), true),
                 std::nullopt);
        QCOMPARE(reader.Condition(*TQXItem::ForObject(1, 1), *TQXItem::ForPackage(5, 9), true),
                 std::optional<QString>(""));
        QVERIFY(reader.Rows("").isEmpty());
    }

    // Reading the calling lines together lists what reading them one by one
    // lists, for every pair of objects and of entries that call each other
    // in the demo estate.
    void dependentRowsReadTogetherAsOneByOne() {
        TestRepository estate(TestRepository::CurrentBackend());
        QSqlDatabase db = estate.Db();
        RepositorySchema::DropTables(db);
        BuildSampleEstate(db, SampleEstateOptions{});
        SqlDataAccess access(estate.Location());
        TQXDependentRowsReader together(access), oneByOne(access);
        oneByOne.SetLineByLine(true);
        QSqlQuery pairs(db);
        QVERIFY(pairs.exec("SELECT DISTINCT QXFromFileID, QXFromObjectID, QXFromEntryID, "
                           "QXFileID, QXObjectID, QXEntryID FROM QXDEPENDENCIES"));
        int compared = 0, lines = 0;
        while (pairs.next()) {
            auto id = [&](int i) { return pairs.value(i).toInt(); };
            const QString objects = where::Keys({{"QXFromFileID", id(0)},
                                                 {"QXFromObjectID", id(1)},
                                                 {"QXFileID", id(3)},
                                                 {"QXObjectID", id(4)}});
            const QString entries =
                objects + where::AndKey("QXFromEntryID", id(2)) + where::AndKey("QXEntryID", id(5));
            for (const QString& condition : {objects, entries}) {
                const QStringList rows = together.Rows(condition);
                QCOMPARE(rows, oneByOne.Rows(condition));
                ++compared;
                lines += int(rows.size());
            }
        }
        QVERIFY2(compared > 100 && lines > compared, qPrintable(QString::number(lines)));
    }
};

QTEST_MAIN(TestItemTools)
#include "tst_ItemTools.moc"
