// Values that rows hand in and that carried objects answer.
#pragma once

#import <Foundation/Foundation.h>

#include "host/value.h"

namespace validate {

constexpr char kExistingFile[] = "/etc/hosts";
constexpr char kMissingFile[] = "/etc/no such file";
constexpr char kDate[] = "date 2012-03-29 10:20:30"; // as it is shown

// A number of any encoding: Foundation itself makes only some of them.
id numberOf(const char *type, long long whole, double real);
id dateInMarch();
id twoStrings();
id bytes();
id longText();
id nestedDictionary();

host::Value dictionary();
host::Value block();
host::Value dateValue();

} // namespace validate
