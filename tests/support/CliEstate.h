#pragma once

// A small estate for the korvane-cli tests. System ACCOUNTS (1), computer
// HOST@DC1 (2) and application PAYROLL (3) hold PAY.CBL (1) and LIB.CBL (2).
// MAIN and ZETA call each other, BETA calls MAIN; IO/PRINT and SUM,"TOTAL"
// call nothing and are called by nobody.
#include "support/TestRepository.h"

#include <QDir>
#include <QFile>

inline void BuildCliEstate(TestRepository& repo) {
    repo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName, QXIcon",
                {{1, 1, "ACCOUNTS", 1}, {2, 2, "HOST@DC1", 2}, {3, 3, "PAYROLL", 9}});
    repo.Insert("QXFILE", "QXFileID, QXFileName, QXSystemID, QXComputerID, QXApplicationID",
                {{1, "PAY.CBL", 1, 2, 3}, {2, "LIB.CBL", 1, 2, 3}});
    repo.Insert("QXOBJECT", "QXFileID, QXObjectID, QXObjectName, QXObjectType, QXIcon",
                {{1, 1, "MAIN", "Program", 20},
                 {1, 2, "ZETA", "Program", 20},
                 {2, 1, "BETA", "Class", 30},
                 {2, 2, "IO/PRINT", "Program", 20},
                 {2, 3, "SUM,\"TOTAL\"", "Program", 20}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "START"}, {1, 2, 1, "RUN"}, {2, 1, 1, "INIT"}});
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXFromFileID, QXFromObjectID, QXFromEntryID, QXFromRowID",
                {{1, 2, 1, 1, 1, 10}, {1, 1, 1, 2, 1, 20}, {1, 1, 2, 1, 1, 30}});
}

// A text file with a repository's name: something that is no database.
inline QString NotARepositoryFile() {
    const QString path = QDir::temp().filePath(QStringLiteral("korvane-not-a-repository.kvdb"));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write("This is a text file, not a repository.\n");
    return path;
}
