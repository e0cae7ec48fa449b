// Single values on their way across the border, through the registered methods: an instance of the class carries a
// stand-in that hands out, and takes, any Cocoa object, property list or not.
#pragma once

#include "tests/support/cocoa_method.h"
#include "tests/support/host_test.h"
#include "tests/support/log_capture.h"

#include <CoreFoundation/CoreFoundation.h>
#import <Foundation/Foundation.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

// Every getter that gives an object answers `answer`; every setter keeps what it is sent.
@interface CrossingDefaults : NSObject {
@public
    id answer;
    id sent; // retained
    NSString *sentKey;
    int timesSent;
}
@end

class CrossingTest : public support::BlackBox {
protected:
    using support::BlackBox::start;
    void start() { start("2013.03"); }

    // A host of that version without anything of the plug-in family but exceptions and the registry of wrappers.
    static host::Profile profileWithBareFamily(const std::string &version = "2013.03");

    // Whether even plain objects answer _cfTypeID, as macOS's very likely do; the tests run in both worlds.
    static bool everyObjectIsTyped();

    // What `variantForKey` gives for an object; the call must raise nothing. The other getters likewise.
    host::Value toHost(id object) { return toHostWith("variantForKey", object); }
    host::Value toHostWith(const char *getter, id object);
    host::Outcome tryToHost(id object, const char *getter = "variantForKey");

    // What `setVariantValue` sends to Cocoa, autoreleased; the call must raise nothing and send exactly once. The other
    // setters likewise.
    id toCocoa(const host::Value &value) { return toCocoaWith("setVariantValue", value); }
    id toCocoaWith(const char *setter, const host::Value &value);
    // The exceptions raised; `sent()` tells what was sent, and `timesSent()` whether.
    std::vector<host::RaisedException> tryToCocoa(const host::Value &value, const char *setter = "setVariantValue");
    id sent() { return standIn()->sent; }
    int timesSent() { return standIn()->timesSent; }

    CrossingDefaults *standIn();
    const host::Value &carrier(); // the instance that carries the stand-in

    // A host class with instance data, its words from 0 on as given.
    void defineWrapperClass(const std::string &name, const std::string &superName = {});
    // One that carries the tag of a Core Foundation wrapper.
    void defineTaggedClass(const std::string &name);

    // The handle with a lock more, as a plug-in hands it out.
    void *lockedForPlugin(const host::Value &value);
    // Unlocks the instances of the class that a plug-in holds and nobody knows of, and counts them.
    int releaseLeftBehind(const std::string &className);
    // At which indexes elements are inserted where the host has no insert procedure for the second one. Once per test.
    std::vector<int> indexesWithoutTheSecondProcedure(const std::function<void()> &convert);
    // The host's own function behind an entry point.
    template <class Function>
    Function entry(const char *name)
    {
        return reinterpret_cast<Function>(host::Host::resolver()(name));
    }

    void TearDown() override;

private:
    host::Value _carrier;
    CrossingDefaults *_standIn = nil;
};

// A method more for a class of Cocoa, for the rest of the process.
void addMethod(const char *className, const char *selector, void *body);
void addClassMethod(const char *className, const char *selector, void *body);

template <class Body>
void *bodyOf(Body body)
{
    return reinterpret_cast<void *>(+body);
}

std::string textOf(id object); // what `description` says, for messages of tests

inline uint32_t *wordsOf(const host::Value &object)
{
    return static_cast<uint32_t *>(object.instanceData());
}

inline id carriedBy(const host::Value &object)
{
    return reinterpret_cast<id>(wordsOf(object)[0]);
}

// The family's registry of wrapper objects.
CFMutableDictionaryRef familyInstances();
