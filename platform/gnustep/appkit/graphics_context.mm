#include "platform/gnustep/appkit/graphics_context.h"

#include "platform/gnustep/foundation/replacement.h"

#include <stdlib.h>
#include <string.h>

@implementation PlatformGraphicsContext

// NSGraphicsContext leaves some 180 operations, named DPS… and GS…, to its subclasses.
+ (void)initialize
{
    if (self != [PlatformGraphicsContext class])
        return;
    unsigned count = 0;
    Method *methods = class_copyMethodList([NSGraphicsContext class], &count);
    for (unsigned i = 0; i < count; ++i) {
        SEL selector = method_getName(methods[i]);
        const char *name = sel_getName(selector);
        const char *type = method_getTypeEncoding(methods[i]);
        bool operation = strncmp(name, "DPS", 3) == 0 || strncmp(name, "GS", 2) == 0;
        if (operation && strchr("vicCILlsS@^*", type[0]))
            class_addMethod(self, selector, reinterpret_cast<IMP>(platform::answerNothing), type);
    }
    free(methods);
}

- (BOOL)isDrawingToScreen
{
    return NO;
}

@end
