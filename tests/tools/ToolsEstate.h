#pragma once

// A small estate for the item and row tools. Attributes: system ACCOUNTS
// (1), computers HOST@DC1 (2), OS2@HAM (4, listed among applications: icon
// 49), SOLO (5, no location) and O'NEIL@DC1 (6), application PAYROLL (3).
// File PAY.CBL (1) holds MAIN (entries START, LOOP), ZETA (RUN) and SUB
// (S1); MAIN and SUB belong to package 7 (file 5, not a file of its own).
// START calls LOOP, S1 and RUN; LOOP and S1 call RUN; RUN calls START. MAIN
// also calls RUN from a line of an entry missing from QXENTRY, and from a
// line missing from QXROW.
#include "support/TestRepository.h"

inline void BuildToolsEstate(TestRepository& repo) {
    repo.Insert("QXATTRIBUTE", "QXAttributeID, QXAttributeType, QXAttributeName, QXIcon",
                {{1, 1, "ACCOUNTS", 1},
                 {2, 2, "HOST@DC1", 2},
                 {3, 3, "PAYROLL", 9},
                 {4, 2, "OS2@HAM", 49},
                 {5, 2, "SOLO", 3},
                 {6, 2, "O'NEIL@DC1", 2}});
    repo.Insert("QXLOAD",
                "QXFileName, QXSystemName, QXComputerType, QXComputerLocation, QXApplicationName",
                {{"B.CBL", "ACCOUNTS", "HOST", "DC1", "PAYROLL"},
                 {"A.CBL", "ACCOUNTS", "HOST", "DC1", "PAYROLL"},
                 {"C.CBL", "ACCOUNTS", "HOST", "DC2", "PAYROLL"},
                 {"D.CBL", "OTHER", "SOLO", "X", "OTHERAPP"},
                 {"E.CBL", "ACCOUNTS", "O'NEIL", "DC1", "PAYROLL"},
                 {"F.CBL", "ACCOUNTS", "O'NEILL", "DC1", "PAYROLL"}});
    repo.Insert("QXFILE",
                "QXFileID, QXFileName, QXDirectory, QXSystemID, QXComputerID, QXApplicationID",
                {{1, "PAY.CBL", "C:\\SRC", 1, 2, 3}, {2, "LIB.CBL", "C:\\LIB", 1, 2, 0}});
    repo.Insert("QXOBJECT",
                "QXFileID, QXObjectID, QXObjectName, QXObjectIdentifier, "
                "QXObjectType, QXIcon",
                {{1, 1, "MAIN", "MAIN", "Program", 52},
                 {1, 2, "ZETA", "ZETA", "Program", 52},
                 {1, 3, "SUB", "SUB", "Program", 52}});
    repo.Insert("QXENTRY", "QXFileID, QXObjectID, QXEntryID, QXEntryName",
                {{1, 1, 1, "START"}, {1, 1, 2, "LOOP"}, {1, 2, 1, "RUN"}, {1, 3, 1, "S1"}});
    repo.Insert("QXROW", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow",
                {{1, 1, 1, 10, "PERFORM LOOP"},
                 {1, 1, 1, 11, "CALL 'SUB'"},
                 {1, 1, 1, 12, "CALL 'ZETA'"},
                 {1, 1, 2, 20, "CALL 'ZETA' AGAIN"},
                 {1, 3, 1, 30, "CALL 'ZETA' FROM SUB"},
                 {1, 2, 1, 40, "CALL 'MAIN'"},
                 {1, 1, 9, 13, "CALL 'ZETA' ELSEWHERE"}});
    repo.Insert("QXWORD", "QXFileID, QXObjectID, QXEntryID, QXRowID, QXWordID, QXWord",
                {{1, 1, 1, 12, 1, "ZETA"}});
    repo.Insert("QXDEPENDENCIES",
                "QXFileID, QXObjectID, QXEntryID, QXFromFileID, QXFromObjectID, QXFromEntryID, "
                "QXFromRowID",
                {{1, 1, 2, 1, 1, 1, 10},
                 {1, 3, 1, 1, 1, 1, 11},
                 {1, 2, 1, 1, 1, 1, 12},
                 {1, 2, 1, 1, 1, 2, 20},
                 {1, 2, 1, 1, 3, 1, 30},
                 {1, 1, 1, 1, 2, 1, 40},
                 {1, 2, 1, 1, 1, 9, 13},
                 {1, 2, 1, 1, 1, 1, 99}});
    repo.Insert("QXPACKAGE",
                "QXFileID, QXPackageID, QXPackageName, QXObjectName, "
                "QXObjectFileID, QXObjectID",
                {{5, 7, "PAYPACK", "MAIN", 1, 1},
                 {5, 7, "PAYPACK", "SUB", 1, 3},
                 {2, 8, "LIBPACK", "LIB", 2, 1}});
}
