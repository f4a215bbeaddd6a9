#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

class TQXDataAccessInterface;
class TQXItem;

// The lines of code through which one item calls another: A is the caller
// in a TopDown view and the called item in a BottomUp one, B the other.
class TQXDependentRowsReader {
public:
    explicit TQXDependentRowsReader(TQXDataAccessInterface& dataAccess) : FDataAccess(dataAccess) {}

    // The condition on QXDEPENDENCIES by B's level: entries, objects, or a
    // package that is a file of its own. Nothing when B's level has none
    // ("Function not implemented for ..."). An empty text when B is a
    // package without a record: no call is listed then.
    std::optional<QString> Condition(const TQXItem& a, const TQXItem& b, bool topDown);

    // One line per call the condition selects, in selection order: the
    // calling line's text, four blanks and "[" object identifier "." entry
    // name "]" (without the entry when it is missing; nothing when the
    // object is). Calls whose line is missing are left out.
    QStringList Rows(const QString& condition);

    // Rows reads the calling lines of all calls in a statement per few
    // hundred lines (the default), or, as the reference, one statement per
    // call; both give the same list.
    void SetLineByLine(bool lineByLine) { FLineByLine = lineByLine; }

private:
    struct Line {
        qint32 ObjectID = 0;
        qint32 EntryID = 0;
        QString Text;
    };
    // The first record of each (file, row) of the calls, by file and row.
    QHash<std::pair<qint32, qint32>, Line> ReadLines(const QList<std::pair<qint32, qint32>>& keys);

    TQXDataAccessInterface& FDataAccess;
    bool FLineByLine = false;
};
