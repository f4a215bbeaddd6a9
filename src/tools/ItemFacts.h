#pragma once

#include <QList>
#include <QString>

class TQXDataAccessInterface;
class TQXItem;

// What the item properties dialog shows of one tree item, read from the
// repository: kind, name, file, identifiers, the icons it may choose among,
// and what may be changed. Only systems, computers and applications can be
// renamed or given another icon; every other kind is read-only.
struct TQXItemFacts {
    QString Kind; // "System", "Computer", "Application", "Variable", ...; empty when unknown
    QString Name;
    QString InFile; // directory, "\" and file name; empty when the item lies in no file
    QString KVID;   // the item's identifiers as text
    QList<int> IconChoices;
    int Icon = -1; // the chosen one among IconChoices; -1 for none
    bool NameEditable = true;
    bool IconEditable = true;
    bool InFileKnown = false;
    // Neither an attribute nor a kind with a record: "Unsupported Itemtype".
    bool Unsupported = false;
    // The attribute shown; 0 for other kinds.
    qint32 AttributeID = 0;
    // Whether the attribute's record was found.
    bool AttributeFound = false;
};

// Reads the facts of the item as the dialog is filled. Selects on QXATTRIBUTE
// (for attributes), on the table of the item's kind, and on QXFILE.
TQXItemFacts ReadItemFacts(TQXDataAccessInterface& dataAccess, const TQXItem& item);

// The icons an attribute type offers: 2 to 8 for a computer, 9 and 10 for
// an application; none for a system, which keeps its own.
QList<int> AttributeIconChoices(int attributeType);
