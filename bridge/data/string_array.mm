#include "bridge/data/string_array.h"

#include "bridge/exceptions/held_handles.h"
#include "bridge/strings/cf_string.h"
#include "hostapi/services.h"

void FillStringArray(REALarrayString array, NSArray *strings)
{
    if (!array || !strings)
        return;
    NSEnumerator *enumerator = [strings objectEnumerator];
    int32_t index = 0;
    while (NSString *element = [enumerator nextObject]) {
        REALstring string = Hold(CFString2RBString((CFStringRef)element));
        REALInsertArrayValueString(reinterpret_cast<REALarray>(array), index, string);
        ReleaseNewestHeld();
        index++;
    }
}
