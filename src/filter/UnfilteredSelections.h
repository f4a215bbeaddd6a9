#pragma once

#include "filter/RootFilter.h"
#include "repository/RecordReader.h"
#include "repository/ViewSettings.h"

// The root-item filter switched off: every file is selected, and for the
// levels that need them every package (Package to Data), object (Object to
// Data) and entry (Entry, Code and Data). No condition texts.
TQXRootFilter SelectUnfiltered(TQXRecordReader& records, TQXLevel level);
