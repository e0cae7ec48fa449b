// What becomes of a file when Core Foundation cannot make one of the texts and URLs on the way. Its functions in this
// program come before the platform's, and pass on what no test spoils.
#include "tests/bridge/crossing.h"
#include "tests/support/next_function.h"

#include <CoreServices/CoreServices.h>

using host::Value;

namespace {

const char *failing; // the function that gives null

bool fails(const char *function)
{
    return failing && strcmp(failing, function) == 0;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) CFStringRef CFStringCreateWithCharacters(CFAllocatorRef allocator,
                                                                                const UniChar *units, CFIndex length)
{
    auto next = nextFunction<decltype(CFStringCreateWithCharacters)>(__func__);
    return fails(__func__) ? nullptr : next(allocator, units, length);
}

__attribute__((visibility("default"))) CFMutableStringRef CFStringCreateMutableCopy(CFAllocatorRef allocator,
                                                                                    CFIndex longest, CFStringRef string)
{
    auto next = nextFunction<decltype(CFStringCreateMutableCopy)>(__func__);
    return fails(__func__) ? nullptr : next(allocator, longest, string);
}

__attribute__((visibility("default"))) CFStringRef CFURLCopyLastPathComponent(CFURLRef url)
{
    auto next = nextFunction<decltype(CFURLCopyLastPathComponent)>(__func__);
    return fails(__func__) ? nullptr : next(url);
}

__attribute__((visibility("default"))) CFURLRef CFURLCreateCopyDeletingLastPathComponent(CFAllocatorRef allocator,
                                                                                         CFURLRef url)
{
    auto next = nextFunction<decltype(CFURLCreateCopyDeletingLastPathComponent)>(__func__);
    return fails(__func__) ? nullptr : next(allocator, url);
}
}

namespace {

const char16_t kComposed[] = u"caf\u00E9", kDecomposed[] = u"cafe\u0301";
const char *const kParent = "/tmp";

std::vector<std::string> made; // the names of the items that the host was to make in a folder

void *itemOfParent(const FSRef *, const HFSUniStr255 *name)
{
    made.push_back([[NSString stringWithCharacters:name->unicode length:name->length] UTF8String]);
    return nullptr;
}

// The host knows an item by its parent and its name.
unsigned char parentAndName(void *, FSRef *ref, HFSUniStr255 *name)
{
    if (!name)
        return 0;
    name->length = std::size(kComposed) - 1;
    memcpy(name->unicode, kComposed, sizeof kComposed);
    return FSPathMakeRef(reinterpret_cast<const UInt8 *>(kParent), ref, nullptr) == noErr;
}

NSString *text(const char16_t *units)
{
    return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(units)
                                   length:std::char_traits<char16_t>::length(units)];
}

class CoreFoundationFailures : public CrossingTest {
protected:
    void SetUp() override
    {
        start();
        carrier();
    }

    // The names that the host is told for a file that does not exist while a function fails.
    std::vector<std::string> namesToldWithout(const char *function)
    {
        host.replace("REALFolderItemFromParentFSRef", reinterpret_cast<void *>(itemOfParent));
        NSURL *url = [NSURL URLWithString:@"file:///tmp/caf%C3%A9"];
        made.clear();
        failing = function;
        EXPECT_TRUE(toHostWith("fileForKey", url).isNil());
        failing = nullptr;
        return made;
    }

    // The path of the URL that is made of an item while a function fails.
    std::string pathWithout(const char *function)
    {
        host.replace("REALFSRefFromFolderItem", reinterpret_cast<void *>(parentAndName));
        Value item = Value::folderItem(kParent); // which has an FSSpec
        failing = function;
        NSURL *url = toCocoaWith("setFileValue", item);
        failing = nullptr;
        return textOf([url path]);
    }
};

} // namespace

TEST_F(CoreFoundationFailures, AFileWithoutParentOrNameIsNil)
{
    EXPECT_EQ(namesToldWithout(nullptr), std::vector<std::string>{[text(kDecomposed) UTF8String]});
    EXPECT_EQ(namesToldWithout("CFURLCreateCopyDeletingLastPathComponent"), std::vector<std::string>{});
    EXPECT_EQ(namesToldWithout("CFURLCopyLastPathComponent"), std::vector<std::string>{});
}

TEST_F(CoreFoundationFailures, ANameThatCannotBeCopiedStaysAsItIs)
{
    EXPECT_EQ(namesToldWithout("CFStringCreateMutableCopy"), std::vector<std::string>{[text(kComposed) UTF8String]});
    EXPECT_EQ(pathWithout(nullptr), "/tmp/" + textOf(text(kDecomposed)));
    EXPECT_EQ(pathWithout("CFStringCreateMutableCopy"), "/tmp/" + textOf(text(kComposed)));
}

TEST_F(CoreFoundationFailures, ANameThatIsNoTextLeadsToTheFSSpec)
{
    EXPECT_EQ(pathWithout("CFStringCreateWithCharacters"), kParent);
}
