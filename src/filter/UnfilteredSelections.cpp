#include "filter/UnfilteredSelections.h"

TQXRootFilter SelectUnfiltered(TQXRecordReader& records, TQXLevel level) {
    records.Select(qx::Table::QXFILE, QString());
    if (level >= TQXLevel::Package)
        records.Select(qx::Table::QXPACKAGE, QString());
    if (level >= TQXLevel::Object)
        records.Select(qx::Table::QXOBJECT, QString());
    if (level >= TQXLevel::Entry)
        records.Select(qx::Table::QXENTRY, QString());
    return {};
}
