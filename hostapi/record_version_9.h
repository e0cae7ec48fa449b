// Class records for hosts older than 2012, which know record version 9 only.
#pragma once

#include "hostapi/class_records.h"

// Turns `definition` into the version 9 layout in place: its first 25 words, with every member table
// replaced by a new one of shorter records. The new tables are never freed, since the host keeps pointers
// into them; the old tables stay as they are, except that each event record's second word is pointed at
// the copy, where hosts of that age look for it. The last four words stay as they are.
void ConvertToVersion9(REALclassDefinition *definition);

// The property records of a table cut from 12 words to 10, in a new table that is never freed. Null for
// no table, no records, and a table that would be too large.
void *FixProperties(const void *properties, int32_t count);
