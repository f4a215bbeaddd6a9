#pragma once

#include "repository/RecordReader.h"

#include <QString>

class TQXFilter;
class TQXItem;

// Fills the filter dialog from one repository item, so that the root items
// are restricted to the names of the levels it carries: one "equals" row per
// system, computer, application, package, object (and its file, for an
// object shown in its file), entry, and word or row found, joined by AND and
// appended to the rows there are. With at least one row the dialog is made
// case sensitive and applied. Returns the level of the deepest row found
// ("System" ... "Data"); empty when nothing was found, which leaves the
// where clause empty and nothing applied.
QString ActivateFilterFor(TQXFilter& filter, TQXRecordReader& records, const TQXItem& item);
