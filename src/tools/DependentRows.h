#pragma once

#include <QString>
#include <QStringList>

#include <optional>

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

private:
    TQXDataAccessInterface& FDataAccess;
};
