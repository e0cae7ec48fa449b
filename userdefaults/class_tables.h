// The class that this library registers.
#pragma once

#include "hostapi/class_records.h"

// The record that is handed to the host, which reads it in place for the life of the process. Empty until it is
// restored for the first time.
extern REALclassDefinition userDefaultsClass;

// Puts the record back as it was before any registration, so that one can start anew. Only where the host
// keeps the instance data stays: live objects are read by it.
void RestoreUserDefaultsClass();
