#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/Files.h>
