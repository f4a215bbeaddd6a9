#pragma once

#include <array>

// Names of the repository's tables and of the columns the view binds, in the
// order in which a view binds them. Table names are upper case, column names
// mixed case with the QX prefix.
namespace qx {

enum class Table : int {
    QXFILE,
    QXOBJECT,
    QXENTRY,
    QXROW,
    QXWORD,
    QXDEPENDENCIES,
    QXPACKAGE,
    QXATTRIBUTE,
    QXDATAFLOW,
};
inline constexpr int TableCount = 9;
inline constexpr int MaxBoundColumns = 11;

// Column positions within each table's bound field list.
namespace QXFILE {
enum Column : int {
    QXFileID,
    QXComputerID,
    QXSystemID,
    QXApplicationID,
    QXLanguageID,
    QXFileName,
    ColumnCount
};
}
namespace QXOBJECT {
enum Column : int {
    QXFileID,
    QXObjectID,
    QXLanguageID,
    QXInPackage,
    QXObjectName,
    QXObjectInherits,
    QXObjectIdentifier,
    QXObjectType,
    QXIcon,
    QXSubObjectParentName,
    QXInheritsParentName,
    ColumnCount
};
}
namespace QXENTRY {
enum Column : int { QXFileID, QXObjectID, QXEntryID, QXEntryName, QXObjectIdentifier, ColumnCount };
}
namespace QXROW {
enum Column : int { QXFileID, QXObjectID, QXEntryID, QXRowID, QXRow, QXCall, ColumnCount };
}
namespace QXWORD {
enum Column : int {
    QXFileID,
    QXObjectID,
    QXEntryID,
    QXRowID,
    QXWordID,
    QXSectionType,
    QXSectionLevel,
    QXWord,
    QXWordType,
    QXObjectIdentifier,
    QXLanguageID,
    ColumnCount
};
}
namespace QXDEPENDENCIES {
enum Column : int {
    QXFileID,
    QXObjectID,
    QXEntryID,
    QXInheritsFileID,
    QXInheritsObjectID,
    QXFromFileID,
    QXFromObjectID,
    QXFromEntryID,
    QXFromRowID,
    QXFromWordID,
    ColumnCount
};
}
namespace QXPACKAGE {
enum Column : int {
    QXFileID,
    QXPackageID,
    QXPackageName,
    QXObjectName,
    QXObjectFileID,
    QXObjectID,
    ColumnCount
};
}
namespace QXATTRIBUTE {
enum Column : int { QXAttributeID, QXAttributeType, QXAttributeName, QXIcon, ColumnCount };
}
namespace QXDATAFLOW {
enum Column : int {
    QXFileID,
    QXRowID,
    QXWordID,
    QXFromFileID,
    QXFromRowID,
    QXFromWordID,
    ColumnCount
};
}

// The tenth table, read and written by the item properties dialog only.
inline constexpr const char* QXLOADName = "QXLOAD";

const char* TableName(Table table);
int ColumnCount(Table table);
const char* ColumnName(Table table, int column);

// Repository codes several parts of the view rely on.
namespace code {
inline constexpr int AttributeSystem = 1;
inline constexpr int AttributeComputer = 2;
inline constexpr int AttributeApplication = 3;
inline constexpr int WordVariableDeclaration = 1011;
inline constexpr int WordVariableUse = 1012;
inline constexpr int WordQualifier = 10;
inline constexpr int SectionCallArgument = 24;
inline constexpr int IconHiddenPart = -1;
inline constexpr int IconComputerAmongApplications = 49;
} // namespace code

} // namespace qx
