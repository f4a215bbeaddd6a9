#include "repository/SchemaNames.h"

namespace qx {
namespace {

struct TableSpec {
    const char* name;
    std::array<const char*, MaxBoundColumns> columns;
};

// The binding order: tables in this order, each with its columns in order.
const std::array<TableSpec, TableCount>& Tables() {
    static const std::array<TableSpec, TableCount> tables{{
        {"QXFILE",
         {"QXFileID", "QXComputerID", "QXSystemID", "QXApplicationID", "QXLanguageID",
          "QXFileName"}},
        {"QXOBJECT",
         {"QXFileID", "QXObjectID", "QXLanguageID", "QXInPackage", "QXObjectName",
          "QXObjectInherits", "QXObjectIdentifier", "QXObjectType", "QXIcon",
          "QXSubObjectParentName", "QXInheritsParentName"}},
        {"QXENTRY", {"QXFileID", "QXObjectID", "QXEntryID", "QXEntryName", "QXObjectIdentifier"}},
        {"QXROW", {"QXFileID", "QXObjectID", "QXEntryID", "QXRowID", "QXRow", "QXCall"}},
        {"QXWORD",
         {"QXFileID", "QXObjectID", "QXEntryID", "QXRowID", "QXWordID", "QXSectionType",
          "QXSectionLevel", "QXWord", "QXWordType", "QXObjectIdentifier", "QXLanguageID"}},
        {"QXDEPENDENCIES",
         {"QXFileID", "QXObjectID", "QXEntryID", "QXInheritsFileID", "QXInheritsObjectID",
          "QXFromFileID", "QXFromObjectID", "QXFromEntryID", "QXFromRowID", "QXFromWordID"}},
        {"QXPACKAGE",
         {"QXFileID", "QXPackageID", "QXPackageName", "QXObjectName", "QXObjectFileID",
          "QXObjectID"}},
        {"QXATTRIBUTE", {"QXAttributeID", "QXAttributeType", "QXAttributeName", "QXIcon"}},
        {"QXDATAFLOW",
         {"QXFileID", "QXRowID", "QXWordID", "QXFromFileID", "QXFromRowID", "QXFromWordID"}},
    }};
    return tables;
}

} // namespace

const char* TableName(Table table) {
    return Tables()[static_cast<int>(table)].name;
}

int ColumnCount(Table table) {
    int count = 0;
    for (const char* column : Tables()[static_cast<int>(table)].columns)
        count += column != nullptr ? 1 : 0;
    return count;
}

const char* ColumnName(Table table, int column) {
    return Tables()[static_cast<int>(table)].columns[column];
}

} // namespace qx
