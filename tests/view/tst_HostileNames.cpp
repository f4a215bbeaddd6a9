// Names that look like SQL, format strings, LIKE wildcards, escapes or other
// scripts change nothing but the texts: every view of the demo estate with
// such names shows the nodes and items of the same estate with plain names,
// identically on SQLite and PostgreSQL, and leaves the repository file as it
// was. A NUL in a name breaks no view.
#include "SampleEstate.h"
#include "driver/ViewDriver.h"
#include "platform/TreeControl.h"
#include "repository/Errors.h"
#include "sqlaccess/RepositorySchema.h"
#include "support/EveryView.h"
#include "support/TestRepository.h"
#include "support/TreeTexts.h"

#include <QFile>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QtTest>

namespace {

// What a hostile name adds behind a letter, between « and »: for a lower-case
// letter and for an upper-case one, which is the first upper-cased.
struct Mark {
    char letter;
    const char* lower;
    const char* upper;
};
const Mark Marks[] = {{'A', "ü", "Ü"},
                      {'C', "%1", "%1"},
                      {'D', "_", "_"},
                      {'E', "'", "'"},
                      {'I', "ı", "I"},
                      {'L', "\"", "\""},
                      {'N', "' OR 1=1 --", "' OR 1=1 --"},
                      {'O', "%2%3", "%2%3"},
                      {'P', "\\", "\\"},
                      {'R', "漢字", "漢字"},
                      {'S', "ß", "ß"},
                      {'T', "\u200f", "\u200f"},
                      {'-', "%", "%"}};

// Two families of files whose hostile base names, read as LIKE wildcards,
// would take in a file of another base name (WBXZ.CPY, WXBHZ.CPY).
const QStringList FamilyFiles{"WHXZ.CBL", "WHXZ.CPY", "WBXZ.CPY",
                              "WXHZ.CBL", "WXHZ.CPY", "WXBHZ.CPY"};
const QList<std::pair<QString, QString>> FamilyNames{{"WHXZ", "W_XZ"}, {"WXHZ", "WX%Z"}};

// The hostile twin of a plain text. File names take the marks of one case
// (`variant` 0 lower, 1 upper) so that sibling files differ but for case;
// other texts take them by the case of each letter. The object ACCT is named
// with 10,000 characters more.
QString Hostile(QString text, int variant = -1) {
    for (const auto& [plain, hostile] : FamilyNames)
        text.replace(plain, hostile);
    QString hostile = QLatin1String(""); // never null: NULL does not go into NOT NULL
    for (const QChar c : std::as_const(text)) {
        hostile += c;
        for (const Mark& mark : Marks)
            if (c.toUpper() == QLatin1Char(mark.letter)) {
                const bool upper = variant < 0 ? c.isUpper() : variant == 1;
                hostile += QStringLiteral("«") +
                           QString::fromUtf8(upper ? mark.upper : mark.lower) + QStringLiteral("»");
            }
    }
    if (text == QLatin1String("ACCT"))
        hostile +=
            QStringLiteral("«") + QStringLiteral("%1Ü'_").repeated(2000) + QStringLiteral("»");
    return hostile;
}

// The plain twin of a hostile text, or of a node text made of them.
QString Plain(QString text) {
    static const QRegularExpression mark(QStringLiteral("«[^»]*»"));
    text.remove(mark);
    for (const auto& [plain, hostile] : FamilyNames)
        text.replace(hostile, plain);
    return text;
}

const QList<std::pair<const char*, QStringList>> TextColumns{
    {"QXFILE", {"QXFileName", "QXDirectory"}},
    {"QXOBJECT",
     {"QXObjectName", "QXObjectInherits", "QXObjectIdentifier", "QXObjectType",
      "QXSubObjectParentName", "QXInheritsParentName"}},
    {"QXENTRY", {"QXEntryName", "QXObjectIdentifier"}},
    {"QXROW", {"QXRow"}},
    {"QXWORD", {"QXWord", "QXObjectIdentifier"}},
    {"QXPACKAGE", {"QXPackageName", "QXObjectName"}},
    {"QXATTRIBUTE", {"QXAttributeName"}}};

void Run(QSqlQuery& query) {
    if (!query.exec())
        throw EQXError(query.lastError().text());
}

// The demo estate, the two families beside ACCT.CBL, every name hostile when asked.
void FillEstate(TestRepository& repo, bool hostile) {
    QSqlDatabase db = repo.Db();
    RepositorySchema::DropTables(db);
    BuildSampleEstate(db, SampleEstateOptions{});
    for (int i = 0; i < FamilyFiles.size(); ++i) {
        const QString file = FamilyFiles[i];
        const bool program = file.endsWith(".CBL");
        const QString name = file.section('.', 0, 0) + (program ? "" : "-REC");
        repo.Exec("INSERT INTO QXFILE (QXFileID, QXSystemID, QXComputerID, QXApplicationID, "
                  "QXLanguageID, QXFileName) SELECT " +
                  QString::number(9001 + i) +
                  ", QXSystemID, QXComputerID, QXApplicationID, QXLanguageID, '" + file +
                  "' FROM QXFILE WHERE QXFileName = 'ACCT.CBL'");
        repo.Insert("QXOBJECT",
                    "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, QXObjectType, "
                    "QXIcon, QXSubObjectParentName",
                    {{9001 + i, 1, name, name, program ? "COBOL Program" : "Record Layout",
                      program ? 52 : 18, program ? QString("") : FamilyNames[i / 3].first}});
    }
    if (!hostile)
        return;
    QVERIFY(db.transaction());
    for (const auto& [table, columns] : TextColumns) {
        QSqlQuery select(db);
        QVERIFY(select.exec(QStringLiteral("SELECT QXSeq, ") + columns.join(", ") +
                            (table == QLatin1String("QXFILE") ? ", QXFileID" : "") + " FROM " +
                            table));
        QList<QVariantList> rows;
        while (select.next()) {
            QVariantList row;
            for (int i = 0; i < columns.size(); ++i) {
                const QString plain = select.value(i + 1).toString();
                const bool fileName =
                    columns[i] == QLatin1String("QXFileName") && table == QLatin1String("QXFILE");
                const QString text =
                    Hostile(plain, fileName ? select.value(columns.size() + 1).toInt() % 2 : -1);
                QCOMPARE(Plain(text), plain);
                row << text;
            }
            rows << (row << select.value(0));
        }
        QSqlQuery update(db);
        update.prepare(QStringLiteral("UPDATE ") + table + " SET " + columns.join(" = ?, ") +
                       " = ? WHERE QXSeq = ?");
        for (const QVariantList& row : std::as_const(rows)) {
            for (const QVariant& value : row)
                update.addBindValue(value);
            Run(update);
        }
    }
    QVERIFY(db.commit());
}

// Every node as its path of plain texts from the root, with its image, item
// and number of children; sorted, as plain and hostile names sort apart.
void Paths(const TQXTreeNode* node, const QString& path, QStringList& paths) {
    const QString own = path + QStringLiteral(" / ") + Plain(node->Text());
    paths << own + '|' + QString::number(node->ImageIndex()) + '|' + ItemId(node) + '|' +
                 QString::number(node->ChildCount());
    for (const TQXTreeNode* child : ChildNodes(node))
        Paths(child, own, paths);
}
QStringList Shape(const TQXTreeControl& tree) {
    QStringList paths;
    for (const TQXTreeNode* root : RootNodes(tree))
        Paths(root, QString(), paths);
    paths.sort();
    return paths;
}

QByteArray Bytes(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestHostileNames : public QObject {
    Q_OBJECT

private slots:
    void everyViewShowsThePlainEstatesNodes() {
        TestRepository plain(TestRepository::Backend::SQLite);
        TestRepository sqlite(TestRepository::Backend::SQLite);
        std::unique_ptr<TestRepository> postgres;
        if (TestRepository::PostgreSQLAvailable())
            postgres = std::make_unique<TestRepository>(TestRepository::Backend::PostgreSQL);
        else
            qWarning("PostgreSQL not configured (KV_TEST_PG unset): SQLite only");
        FillEstate(plain, false);
        FillEstate(sqlite, true);
        if (postgres)
            FillEstate(*postgres, true);
        if (QTest::currentTestFailed())
            return;
        const QByteArray bytes = Bytes(sqlite.Location());
        QVERIFY(!bytes.isEmpty());

        const QList<TQXViewSettings> views = EveryView();
        QCOMPARE(views.size(), 34);
        for (const TQXViewSettings& settings : views) {
            const QString view = Describe(settings);
            const auto hostileView = FullyOpened(sqlite.Location(), settings);
            const QStringList expected = Shape(FullyOpened(plain.Location(), settings)->Tree());
            const QStringList shape = Shape(hostileView->Tree());
            if (shape != expected || expected.isEmpty())
                qWarning("%s", qPrintable(view));
            QVERIFY(!expected.isEmpty());
            QCOMPARE(shape, expected);
            if (postgres)
                QVERIFY2(Dump(FullyOpened(postgres->Location(), settings)->Tree()) ==
                             Dump(hostileView->Tree()),
                         qPrintable(view + QStringLiteral(": SQLite and PostgreSQL differ")));
        }
        QVERIFY(Bytes(sqlite.Location()) == bytes);
    }

    // SQLite stores a NUL in a text; a where text cannot carry it, so the
    // object whose identifier holds one finds no sub-objects, and no view fails.
    void aNulInANameBreaksNoView() {
        TestRepository sqlite(TestRepository::Backend::SQLite);
        FillEstate(sqlite, false);
        const QString nul = QStringLiteral("ACCT") + QChar(0) + QStringLiteral("X");
        for (const char* column : {"QXObjectIdentifier", "QXSubObjectParentName"}) {
            QSqlQuery update(sqlite.Db());
            update.prepare(QStringLiteral("UPDATE QXOBJECT SET ") + column + " = ? WHERE " +
                           column + " = 'ACCT'");
            update.addBindValue(nul);
            Run(update);
            QVERIFY(update.numRowsAffected() > 0);
        }
        for (const TQXViewSettings& settings : EveryView())
            QVERIFY(FullyOpened(sqlite.Location(), settings)->Tree().RootCount() > 0);
    }
};

QTEST_MAIN(TestHostileNames)
#include "tst_HostileNames.moc"
