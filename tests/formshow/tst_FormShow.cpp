// The screen map viewer on repositories built here, on both databases: a
// BMS mapset written the way the loader tokenises it, compared box by box
// with values worked out by hand; VisualAge maps with a constant read from
// QXROW; conversion errors, other languages and objects without words; the
// window, its registration and the view's command; korvane-cli form.
#include "EstateText.h"
#include "EstateWriter.h"
#include "SourceWriters.h"

#include "driver/ViewDriver.h"
#include "formshow/FormBuilder.h"
#include "formshow/FormShow.h"
#include "host/FormRegistry.h"
#include "platform/ScriptedUIServices.h"
#include "platform/TreeControl.h"
#include "sqlaccess/SqlDataAccess.h"
#include "support/Failure.h"
#include "support/RunProgram.h"
#include "support/TestRepository.h"
#include "view/View.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QSqlQuery>
#include <QtTest>

namespace {

// A mapset as a bank's developer writes it: an operand list continued in
// column 72 with ATTRB before POS, constants, a named field with INITIAL,
// PICOUT, a stopper field without text and a LENGTH that is a symbol.
const char* const MapSet = R"(TSTSET   DFHMSD TYPE=MAP,MODE=INOUT,LANG=COBOL
TSTMAP   DFHMDI SIZE=(24,80)
         DFHMDF POS=(1,30),LENGTH=13,INITIAL='Customer name',ATTRB=ASKIP
FLD1     DFHMDF POS=(5,10),LENGTH=8,ATTRB=UNPROT
         DFHMDF ATTRB=(ASKIP,NORM),COLOR=BLUE,LENGTH=6,POS=(7,2),      X00000500
               INITIAL='Tran :'                                         00000600
STATUS   DFHMDF POS=(7,20),LENGTH=4,INITIAL='OPEN'
AMOUNT   DFHMDF POS=(9,20),LENGTH=12,PICOUT='ZZZ,ZZ9.99'
         DFHMDF POS=(9,33),LENGTH=1,ATTRB=ASKIP
NOTE     DFHMDF POS=(11,2),LENGTH=&NOTELEN,ATTRB=ASKIP
         DFHMSD TYPE=FINAL)";

// Words as "text" (type 4), "@label" (1011) or "~literal" (1001), one list
// per row; rows and words numbered from 1.
void InsertWords(TestRepository& repo, int file, int object, int language,
                 const QStringList& rows) {
    QList<QVariantList> words;
    for (int row = 0; row < rows.size(); ++row) {
        int id = 0;
        for (QString word : rows[row].split(' ', Qt::SkipEmptyParts)) {
            int type = 4;
            if (word.startsWith('@') || word.startsWith('~')) {
                type = word.startsWith('@') ? 1011 : 1001;
                word = word.mid(1);
            }
            words << QVariantList{file, object, row + 1, ++id, word, type, language};
        }
    }
    repo.Insert("QXWORD",
                "QXFileID, QXObjectID, QXRowID, QXWordID, QXWord, QXWordType, QXLanguageID", words);
}

// A box as "top,left,width text|hint|cb|hidden" for comparisons.
QStringList Boxes(const TQXFormLayout& layout) {
    QStringList boxes;
    for (const TQXFormBox& box : layout.Boxes)
        boxes << QString("%1,%2,%3 %4|%5%6%7")
                     .arg(box.Top)
                     .arg(box.Left)
                     .arg(box.Width)
                     .arg(box.Text, box.Hint, box.Constant ? "|cb" : "",
                          box.Visible ? "" : "|hidden");
    return boxes;
}

} // namespace

class TestFormShow : public QObject {
    Q_OBJECT

    std::unique_ptr<TestRepository> FRepo;
    std::unique_ptr<SqlDataAccess> FAccess;

    TQXFormLayout Build(int file, int object) {
        const TQXItem item(file, 0, 0, 0, 0, object, 0, 0, 0);
        auto words = FAccess->OpenQuery(nullptr, TQXFormBuilder::WordQuery(item), 0);
        return TQXFormBuilder::Build(*words, *FAccess, item);
    }

private slots:
    void initTestCase_data() { TestRepository::AddBackendRows(); }

    // File 1: the mapset (object 2 its map). File 2, VisualAge: 1 a map, 2
    // a bad row, 3 without words. File 3: 1 a bad POS, 2 another language.
    void init() {
        if (!TestRepository::Usable(TestRepository::CurrentBackend()))
            QSKIP("PostgreSQL not configured (KV_TEST_PG unset)");
        FRepo = std::make_unique<TestRepository>(TestRepository::CurrentBackend());
        FRepo->Insert("QXFILE", "QXFileID, QXFileName, QXLanguageID",
                      {{1, "TSTSET.BMS", 20525}, {2, "MAPS.ESF", 20500}, {3, "ODD.SRC", 20525}});
        {
            TEstateWriter writer(FRepo->Db(), {});
            TEstate estate(writer, 1);
            sample::WriteMapSet(estate, 1, TEstateText("TSTSET.bms", MapSet));
            writer.Flush();
        }
        FRepo->Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName, QXObjectType, QXIcon",
                      {{2, 1, "CUSTINQ", "VAGen Map", 16},
                       {2, 2, "BADROW", "VAGen Map", 16},
                       {2, 3, "EMPTY", "VAGen Map", 17},
                       {3, 1, "BADPOS", "BMS Map", 16},
                       {3, 2, "PANEL", "Panel", 41}});
        InsertWords(*FRepo, 2, 1, 20500,
                    {": map name = CUSTINQ .", ": cfield row = 1 column = 25 bytes = 16",
                     ". CUSTOMER INQUIRY", ": vfield row = 3 column = 10 bytes = 8 name = CUSTNO",
                     ": vfield row = 7 name = X9 column = 4 bytes = 2",
                     ": vfield row = 5 column = 10 bytes = 8", ": emap ."});
        FRepo->Insert("QXROW", "QXFileID, QXObjectID, QXRowID, QXRow",
                      {{2, 1, 3, "  .CUSTOMER INQUIRY  "}});
        InsertWords(*FRepo, 2, 2, 20500, {": vfield row = X column = 4"});
        InsertWords(*FRepo, 3, 1, 20525, {"@F DFHMDF POS = ( X , 10 )"});
        InsertWords(*FRepo, 3, 2, 20300, {"row = 1 column = 2 bytes = 3 name = A"});
        FAccess = std::make_unique<SqlDataAccess>(FRepo->Location());
    }
    void cleanup() {
        FAccess.reset();
        FRepo.reset();
    }

    void bmsMapsetBoxByBox() {
        const TQXFormLayout layout = Build(1, 2);
        QCOMPARE(Boxes(layout), QStringList({"20,300,130  Customer name||cb",
                                             "100,100,80 FLD1|FLD1", "140,20,60  Tran :||cb",
                                             "140,200,40  OPEN|STATUS", "180,200,120 AMOUNT|AMOUNT",
                                             "180,330,10 ||hidden", "220,20,0 NOTE|NOTE"}));
        // The continuation and sequence columns stay in the row, not in the words.
        QSqlQuery rows(FRepo->Db());
        QVERIFY(rows.exec("SELECT QXRow, (SELECT COUNT(*) FROM QXWORD w WHERE w.QXFileID = 1 AND "
                          "w.QXWord LIKE '%0000%') FROM QXROW WHERE QXFileID = 1 AND QXRowID = 5"));
        QVERIFY(rows.next());
        QCOMPARE(rows.value(0).toString(), QString(MapSet).section('\n', 4, 4));
        QCOMPARE(rows.value(1).toInt(), 0);
        // ATTRB before POS is skipped, once per operand; so is LENGTH=&NOTELEN.
        QCOMPARE(layout.NotUnderstood, QStringList({"ATTRB", "LENGTH"}));
        QVERIFY(layout.StatusText().endsWith("2 operands not understood and skipped: ATTRB, "
                                             "LENGTH"));
    }

    void visualAgeMapWithConstant() {
        const TQXFormLayout layout = Build(2, 1);
        // The constant's row is read from QXROW; the next row's ":" is
        // passed over. A name before column and bytes becomes the text.
        QCOMPARE(Boxes(layout),
                 QStringList({"20,250,160 CUSTOMER INQUIRY||cb", "60,100,80 CUSTNO|CUSTNO",
                              "140,40,20 X9|X9", "100,100,80 ||hidden"}));
        QVERIFY(layout.NotUnderstood.isEmpty());
    }

    void conversionErrorsAndOtherLanguages() {
        QCOMPARE(FailureOf([&] { Build(3, 1); }).Message,
                 QString("'X' is not a valid integer value for POS (QXRowID 1)"));
        QCOMPARE(FailureOf([&] { Build(2, 2); }).Message,
                 QString("'X' is not a valid integer value for row (QXRowID 1)"));
        // No window comes of a conversion error.
        QVERIFY_THROWS_EXCEPTION(
            EQXError, TQXFormShow(nullptr, FAccess.get(), TQXItem(3, 0, 0, 0, 0, 1, 0, 0, 0)));
        for (int object : {2, 3}) { // another language; no words at all
            const TQXFormLayout layout = Build(object == 2 ? 3 : 2, object);
            QVERIFY(layout.Unsupported);
            QCOMPARE(
                Boxes(layout),
                QStringList{"80,20,820 FormViewer does not support this objects Language||cb"});
        }
    }

    // The window registered by name, its boxes, and the view's command.
    void windowAndViewCommand() {
        QVERIFY(TQXFormRegistry::IsRegistered("TQXFormShow"));
        std::unique_ptr<QWidget> window = TQXFormRegistry::CreateItemForm(
            "TQXFormShow", nullptr, FAccess.get(), TQXItem(1, 0, 0, 0, 0, 2, 0, 0, 0));
        const auto* form = qobject_cast<TQXFormShow*>(window.get());
        QVERIFY(form);
        QCOMPARE(form->size(), QSize(870, 640));
        QCOMPARE(form->Boxes().size(), std::size_t(7));
        const QLineEdit* title = form->Boxes()[0];
        QCOMPARE(title->geometry(), QRect(300, 20, 130, 20));
        QVERIFY(title->isReadOnly());
        QCOMPARE(title->palette().color(QPalette::Base), title->palette().color(QPalette::Button));
        QCOMPARE(form->Boxes()[1]->toolTip(), QString("FLD1"));
        QVERIFY(form->Boxes()[1]->palette().color(QPalette::Base) !=
                form->Boxes()[1]->palette().color(QPalette::Button));
        QVERIFY(form->Boxes()[5]->isHidden() && !form->Boxes()[6]->isHidden());
        QVERIFY(form->StatusText().contains("ATTRB, LENGTH"));

        TQXViewDriver driver(FRepo->Location());
        TQXViewSettings settings;
        settings.Level = TQXLevel::Object;
        driver.Apply(settings);
        driver.Refresh();
        TQXView& view = driver.View();
        QAction* command = view.pmnuView->findChild<QAction*>("FormViewer1");
        auto node = [&](const QString& name) {
            for (int i = 0; i < driver.Tree().RootCount(); ++i)
                if (driver.Tree().Root(i)->Text().startsWith(name + " "))
                    return driver.Tree().Root(i);
            return static_cast<TQXTreeNode*>(nullptr);
        };
        auto offered = [&](const QStringList& names) {
            driver.Tree().Select(node(names.constFirst()));
            for (const QString& name : names.mid(1))
                driver.Tree().Select(node(name), true);
            emit view.pmnuView->aboutToShow();
            return command->isEnabled();
        };
        QVERIFY(offered({"CUSTINQ"}) && offered({"EMPTY"})); // images 16 and 17
        QVERIFY(!offered({"PANEL"}) && !offered({"CUSTINQ", "EMPTY"}));

        driver.Tree().Select(node("CUSTINQ"));
        auto* opened = qobject_cast<TQXFormShow*>(view.FormViewer1Click());
        QVERIFY(opened && opened->isVisible() && opened->isWindow());
        QCOMPARE(opened->parentWidget(), &view);
        QCOMPARE(opened->windowTitle(), node("CUSTINQ")->Text());
        QCOMPARE(opened->pos(), view.mapToGlobal(QPoint(100, 100)));
        QCOMPARE(opened->Boxes()[0]->text(), QString("CUSTOMER INQUIRY"));
        // A conversion error reaches the error display; no window is left.
        QVERIFY(offered({"BADPOS"}));
        command->trigger();
        QCOMPARE(driver.Ui().Errors(),
                 QStringList{"'X' is not a valid integer value for POS (QXRowID 1)"});
        QCOMPARE(view.findChildren<TQXFormShow*>().size(), 1);
    }

    void commandLine() {
        auto form = [&](const QStringList& arguments) {
            return RunProgram("korvane-cli", QStringList{"form", FRepo->Location()} + arguments);
        };
        const ProgramRun json = form({"--object", "CUSTINQ", "--format", "json"});
        QCOMPARE(json.ExitCode, 0);
        const QJsonObject document = QJsonDocument::fromJson(json.Out.toUtf8()).object();
        const QJsonArray boxes = document["boxes"].toArray();
        QCOMPARE(boxes.size(), 4);
        QCOMPARE(boxes[1].toObject(), QJsonObject({{"top", 60},
                                                   {"left", 100},
                                                   {"width", 80},
                                                   {"height", 20},
                                                   {"text", "CUSTNO"},
                                                   {"hint", "CUSTNO"},
                                                   {"constant", false},
                                                   {"visible", true}}));

        const QString png = QDir(QDir::tempPath()).filePath("korvane-form-test.png");
        QFile::remove(png);
        const ProgramRun text = form({"--object", "TSTMAP", "--file", "TSTSET.BMS", "--png", png});
        QCOMPARE(text.ExitCode, 0);
        const QStringList lines = text.Out.split('\n');
        QCOMPARE(lines[1].mid(1, 80).trimmed(), QString("Customer name"));
        QCOMPARE(lines[5].mid(10, 10), QString("FLD1____  "));
        QCOMPARE(lines[7].mid(1, 30), QString("  Tran :            OPEN      "));
        QVERIFY(QImage(png).size() == QSize(870, 640));

        const ProgramRun other = form({"--object", "PANEL"});
        QCOMPARE(other.ExitCode, 0);
        QVERIFY(other.Out.contains("| FormViewer does not support this objects Language"));
        QCOMPARE(form({"--object", "NOSUCH"}).ExitCode, 2);
        const ProgramRun bad = form({"--object", "BADPOS"});
        QCOMPARE(bad.ExitCode, 1);
        QVERIFY(bad.Err.contains("'X' is not a valid integer value for POS"));
    }
};

QTEST_MAIN(TestFormShow)
#include "tst_FormShow.moc"
