#include "host/script/text_functions.h"

#include <Foundation/Foundation.h>

#include "host/runtime/utf8.h"

namespace script {

using host::runtime::startsCharacter;

std::vector<std::string> charactersOf(const std::string &utf8)
{
    std::vector<std::string> characters;
    for (char byte : utf8) {
        if (startsCharacter(byte) || characters.empty())
            characters.emplace_back();
        characters.back() += byte;
    }
    return characters;
}

static std::string changed(const std::string &utf8, SEL change)
{
    @autoreleasepool {
        NSString *text = [[[NSString alloc] initWithBytes:utf8.data() length:utf8.size()
                                                 encoding:NSUTF8StringEncoding] autorelease];
        if (!text) // bytes without an encoding
            return utf8;
        NSData *bytes = [[text performSelector:change] dataUsingEncoding:NSUTF8StringEncoding];
        return std::string(static_cast<const char *>([bytes bytes]), [bytes length]);
    }
}

std::string uppercase(const std::string &utf8)
{
    return changed(utf8, @selector(uppercaseString));
}

std::string lowercase(const std::string &utf8)
{
    return changed(utf8, @selector(lowercaseString));
}

std::string titlecase(const std::string &utf8)
{
    return changed(utf8, @selector(capitalizedString));
}

int compareText(const std::string &a, const std::string &b)
{
    return lowercase(a).compare(lowercase(b));
}

std::string base64Of(const std::string &bytes, size_t lineLength)
{
    @autoreleasepool {
        NSData *data = [NSData dataWithBytes:bytes.data() length:bytes.size()];
        std::string text = [[data base64EncodedStringWithOptions:0] UTF8String];
        for (size_t at = lineLength; lineLength > 0 && at < text.size(); at += lineLength + 2)
            text.insert(at, "\r\n");
        return text;
    }
}

std::string bytesOfBase64(const std::string &text)
{
    @autoreleasepool {
        NSData *characters = [NSData dataWithBytes:text.data() length:text.size()];
        NSData *bytes =
            [[[NSData alloc] initWithBase64EncodedData:characters
                                               options:NSDataBase64DecodingIgnoreUnknownCharacters] autorelease];
        return std::string(static_cast<const char *>([bytes bytes]), [bytes length]);
    }
}

} // namespace script
