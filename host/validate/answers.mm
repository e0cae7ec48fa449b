#include "host/validate/answers.h"

#import <Foundation/Foundation.h>

#include <CoreFoundation/CoreFoundation.h>

namespace validate {

static id shaped(NSString *text, AnswerShape shape)
{
    switch (shape) {
    case AnswerShape::Text:
        return text;
    case AnswerShape::InArray:
        return [NSArray arrayWithObject:text];
    case AnswerShape::AsValue:
        return [NSDictionary dictionaryWithObject:text forKey:@"key"];
    case AnswerShape::AsKey:
        return [NSDictionary dictionaryWithObject:[NSNumber numberWithInt:1] forKey:text];
    }
    return nil;
}

void answerText(StandIn &standIn, const char *selector, AnswerShape shape, const std::u16string &units)
{
    CFStringRef text =
        CFStringCreateWithCharacters(nullptr, reinterpret_cast<const UniChar *>(units.data()), CFIndex(units.size()));
    standIn.answerObject(selector, shaped((NSString *)text, shape));
    CFRelease(text);
}

} // namespace validate
