// Building the form of a large screen map: a BMS map of 200 fields (100
// labelled fields, each after a constant that names it) and a VisualAge map
// of as many, whose 100 constants are each read from their row. Each run
// constructs the window as the view's command does: the word query, the
// builder and the boxes.
//
//   bench_form [--fields N] [--runs N]
#include "BenchStats.h"

#include "formshow/FormShow.h"
#include "repository/TreeItems.h"
#include "sqlaccess/RepositorySchema.h"
#include "sqlaccess/SqlDataAccess.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSqlQuery>
#include <QTemporaryDir>

namespace {

struct TWords {
    QSqlQuery insert;
    int object = 0;
    int language = 0;
    int row = 0;
    int word = 0;
    void Row() {
        ++row;
        word = 0;
    }
    void Add(const QString& text, int type = 4) {
        insert.addBindValue(1);
        insert.addBindValue(object);
        insert.addBindValue(row);
        insert.addBindValue(++word);
        insert.addBindValue(text);
        insert.addBindValue(type);
        insert.addBindValue(language);
        insert.exec();
    }
    void Words(const QString& text) {
        for (const QString& w : text.split(QLatin1Char(' '), Qt::SkipEmptyParts))
            Add(w);
    }
};

void Fill(QSqlDatabase& db, int fields) {
    RepositorySchema::DropTables(db);
    RepositorySchema::CreateTables(db);
    db.transaction();
    TWords words{QSqlQuery(db)};
    words.insert.prepare(QStringLiteral("INSERT INTO QXWORD (QXFileID, QXObjectID, QXRowID, "
                                        "QXWordID, QXWord, QXWordType, QXLanguageID) VALUES "
                                        "(?, ?, ?, ?, ?, ?, ?)"));
    QSqlQuery rows(db);
    rows.prepare(QStringLiteral("INSERT INTO QXROW (QXFileID, QXObjectID, QXRowID, QXRow) "
                                "VALUES (1, 2, ?, ?)"));
    // BMS: an unlabelled constant and a labelled field per screen position.
    words.object = 1;
    words.language = 20525;
    for (int i = 0; i < fields / 2; ++i) {
        const QString line = QString::number(1 + i % 24);
        const QString column = QString::number(1 + (i / 24) * 16);
        words.Row();
        words.Words(QStringLiteral("DFHMDF POS = ( ") + line + QStringLiteral(" , ") + column +
                    QStringLiteral(" ) , LENGTH = 6 , INITIAL = "));
        words.Add(QStringLiteral("'"), 1001);
        words.Add(QStringLiteral("FIELD"), 1001);
        words.Add(QStringLiteral(":"), 1001);
        words.Add(QStringLiteral("'"), 2);
        words.Words(QStringLiteral(", ATTRB = ASKIP"));
        words.Row();
        words.Add(QStringLiteral("F") + QString::number(i), 1011);
        words.Words(QStringLiteral("DFHMDF POS = ( ") + line + QStringLiteral(" , ") +
                    QString::number(column.toInt() + 7) +
                    QStringLiteral(" ) , LENGTH = 8 , ATTRB = UNPROT"));
    }
    // VisualAge: a constant (read from its row) and a variable field.
    words.object = 2;
    words.language = 20500;
    for (int i = 0; i < fields / 2; ++i) {
        const QString place = QStringLiteral("row = ") + QString::number(1 + i % 24) +
                              QStringLiteral(" column = ") + QString::number(1 + (i / 24) * 16);
        words.Row();
        words.Words(QStringLiteral(": cfield ") + place + QStringLiteral(" bytes = 6"));
        words.Row();
        words.Words(QStringLiteral(". FIELD:"));
        rows.addBindValue(words.row);
        rows.addBindValue(QStringLiteral(".FIELD:"));
        rows.exec();
        words.Row();
        words.Words(QStringLiteral(": vfield row = ") + QString::number(1 + i % 24) +
                    QStringLiteral(" column = ") + QString::number(8 + (i / 24) * 16) +
                    QStringLiteral(" bytes = 8 name = V") + QString::number(i));
    }
    db.commit();
    RepositorySchema::CreateIndexes(db);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({"fields", "Fields of each map.", "n", "200"});
    parser.addOption({"runs", "Runs per map.", "n", "9"});
    parser.process(app);
    const int fields = parser.value("fields").toInt();
    const int runs = parser.value("runs").toInt();

    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("form.kvdb"));
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), "fill");
        db.setDatabaseName(path);
        db.open();
        Fill(db, fields);
        db.close();
    }
    QSqlDatabase::removeDatabase("fill");

    SqlDataAccess access(path);
    for (const auto& [object, name] : {std::pair(1, "BMS"), std::pair(2, "VisualAge")}) {
        const TQXItem item(1, 0, 0, 0, 0, object, 0, 0, 0);
        std::size_t boxes = 0;
        qint64 trips = 0;
        const BenchSamples samples = Measure(runs, [&] {
            const qint64 before = access.RoundTrips();
            TQXFormShow form(nullptr, &access, item);
            boxes = form.Boxes().size();
            trips = access.RoundTrips() - before;
        });
        Out() << QStringLiteral("%1 map of %2 fields: form built in median %3 ms, p95 %4 ms "
                                "(%5 boxes, %6 round trips, %7 runs)\n")
                     .arg(QLatin1String(name))
                     .arg(fields)
                     .arg(samples.Median(), 0, 'f', 2)
                     .arg(samples.P95(), 0, 'f', 2)
                     .arg(boxes)
                     .arg(trips)
                     .arg(runs);
    }
    Out().flush();
    return 0;
}
