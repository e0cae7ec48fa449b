// Host objects for times of the movie frameworks, and their NSValue forms both ways. The instance data is the struct.
#include "host/family/class_record.h"
#include "host/family/cocoa_methods.h"

#include <Foundation/Foundation.h>
#include <cstring>

namespace family {

namespace {

struct QTTime {
    long long timeValue;
    long timeScale;
    long flags;
};

struct QTTimeRange {
    QTTime time;
    QTTime duration;
};

struct CMTime {
    int64_t value;
    int32_t timescale;
    uint32_t flags;
    int64_t epoch;
};

struct CMTimeRange {
    CMTime start;
    CMTime duration;
};

struct CMTimeMapping {
    CMTimeRange source;
    CMTimeRange target;
};

static_assert(sizeof(QTTime) == 16 && sizeof(CMTime) == 24 && sizeof(CMTimeMapping) == 96);

// One line for each: the host class, the struct's size and type text, the message that makes a value of a host object
// and the one that makes a host object of a value.
struct TimeFacts {
    const char *hostClass;
    int32_t size;
    const char *objCType;
    const char *valueSelector;
    const char *objectSelector;
};

const TimeFacts kTimes[] = {
    {"QTKitTimeKTZ", sizeof(QTTime), "{?=qll}", "valueWithQTTimeKTZ:", "QTTimeValueKTZ"},
    {"QTKitTimeRangeKTZ", sizeof(QTTimeRange), "{?={?=qll}{?=qll}}", "valueWithQTTimeRangeKTZ:", "QTTimeRangeValueKTZ"},
    {"CMTimeKTZ", sizeof(CMTime), "{?=qiIq}", "valueWithCMTimeKTZ:", "CMTimeValueKTZ"},
    {"CMTimeRangeKTZ", sizeof(CMTimeRange), "{?={?=qiIq}{?=qiIq}}", "valueWithCMTimeRangeKTZ:", "CMTimeRangeValueKTZ"},
    {"CMTimeMappingKTZ", sizeof(CMTimeMapping), "{?={?={?=qiIq}{?=qiIq}}{?={?=qiIq}{?=qiIq}}}",
     "valueWithCMTimeMappingKTZ:", "CMTimeMappingValueKTZ"},
};

const TimeFacts *factsOf(SEL selector)
{
    const char *name = sel_getName(selector);
    for (const TimeFacts &facts : kTimes)
        if (strcmp(name, facts.valueSelector) == 0 || strcmp(name, facts.objectSelector) == 0)
            return &facts;
    return nullptr;
}

id valueWithObject(id, SEL selector, void *object)
{
    return [NSValue valueWithBytes:dataOf<char>(object) objCType:factsOf(selector)->objCType];
}

void *newObjectForValue(NSValue *value, SEL selector)
{
    void *object = services->newInstance(factsOf(selector)->hostClass);
    if (object)
        [value getValue:dataOf<char>(object)];
    return object;
}

} // namespace

void addTimeClasses()
{
    Class values = [NSValue class];
    for (const TimeFacts &facts : kTimes) {
        addClass({facts.hostClass, nullptr, facts.size});
        addClassMethod(values, facts.valueSelector, valueWithObject, "@@:^v");
        addInstanceMethod(values, facts.objectSelector, newObjectForValue, "^v@:");
    }
}

} // namespace family
