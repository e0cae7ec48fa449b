#include "hostapi/version.h"

#include "hostapi/class_records.h"

HostResolver gResolver = nullptr;
double rbversion_rbversion = 0.0;
int32_t CurrentREALControlVersion = kNewestRecordVersion;
