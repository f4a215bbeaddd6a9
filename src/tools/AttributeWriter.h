#pragma once

#include <QString>

#include <optional>

class TQXDataAccessInterface;
class TQXItem;

// The two writes of the library, each all or nothing in one transaction:
// when any statement fails, nothing of it stays written and the database's
// message is raised as EQXError.

// Gives the attribute its new name and icon (nullopt keeps the icon) and
// carries the rename into every load record that names it: a system by
// QXSystemName, a computer by QXComputerType and QXComputerLocation (its
// name is type "@" location), an application by QXApplicationName. Answers
// the number of load records changed. Ends the data-access object's refresh.
int SaveAttribute(TQXDataAccessInterface& dataAccess, qint32 attributeID, const QString& name,
                  std::optional<int> icon);

// How load records name a computer: type and location, split at the name's
// first "@"; without one the whole name is the type and the location empty.
struct TQXComputerName {
    QString Type;
    QString Location;
    bool HasLocation = false;

    static TQXComputerName Split(const QString& name);
};

// Deletes the item's most specific attribute (application before computer
// before system) and clears it from every file that names it. False when
// the item carries no attribute: nothing is deleted.
bool DeleteAttribute(TQXDataAccessInterface& dataAccess, const TQXItem& item);
