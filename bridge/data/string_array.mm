#include "bridge/data/string_array.h"

#include "bridge/strings/ns_string.h"
#include "hostapi/held_handles.h"

void FillStringArray(REALarray array, NSArray *strings, HeldHandles &held)
{
    if (!array || !strings)
        return;
    NSEnumerator *enumerator = [strings objectEnumerator];
    int32_t index = 0;
    while (NSString *element = [enumerator nextObject]) {
        REALstring string = HostTextOf(element, held);
        REALInsertArrayValueString(array, index, string);
        held.release(string);
        index++;
    }
}
