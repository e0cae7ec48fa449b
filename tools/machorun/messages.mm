#include "tools/machorun/messages.h"

#include "tools/machorun/mapped_image.h"

#import <Foundation/Foundation.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <mutex>
#include <unordered_map>
#include <vector>

namespace machorun {

namespace {

// What messages.S needs to know of a method, in the two registers that carry a 64-bit result (eax and edx).
struct Target {
    IMP implementation;
    uint32_t returnsSmallStruct;
};

std::mutex lock;
std::vector<const MappedImage *> images;
std::unordered_map<IMP, bool> smallStructMethods; // remembered answers

bool isInImage(IMP implementation)
{
    for (const MappedImage *image : images) {
        if (image->contains(reinterpret_cast<const void *>(implementation))) {
            return true;
        }
    }
    return false;
}

// macOS returns a struct of 1, 2, 4 or 8 bytes in eax and edx, Linux every struct through a hidden pointer. The caller
// in the image cannot tell, so the method's type encoding decides.
bool encodesSmallStruct(Method method)
{
    const char *types = method ? method_getTypeEncoding(method) : nullptr;
    if (!types) {
        return false;
    }
    types = objc_skip_type_qualifiers(types);
    if (*types != '{' && *types != '(') {
        return false;
    }
    int size = objc_sizeof_type(types);
    return size == 1 || size == 2 || size == 4 || size == 8;
}

Target targetOf(Class receiverClass, SEL selector, IMP implementation)
{
    std::lock_guard<std::mutex> hold(lock);
    auto known = smallStructMethods.find(implementation);
    if (known == smallStructMethods.end()) {
        Method method = class_getInstanceMethod(receiverClass, selector);
        bool isSmall = !isInImage(implementation) && encodesSmallStruct(method);
        if (!method) {
            return {implementation, isSmall}; // forwarding: one implementation for many methods
        }
        known = smallStructMethods.emplace(implementation, isSmall).first;
    }
    return {implementation, known->second};
}

uint64_t inRegisters(const Target &target)
{
    return static_cast<uint64_t>(target.returnsSmallStruct) << 32 | reinterpret_cast<uint32_t>(target.implementation);
}

} // namespace

void RegisterMethodsOf(const MappedImage &image)
{
    std::lock_guard<std::mutex> hold(lock);
    images.push_back(&image);
}

} // namespace machorun

extern "C" __attribute__((visibility("hidden"))) uint64_t machorun_lookUp(id receiver, SEL selector)
{
    using namespace machorun;
    return inRegisters(targetOf(object_getClass(receiver), selector, objc_msg_lookup(receiver, selector)));
}

extern "C" __attribute__((visibility("hidden"))) uint64_t machorun_lookUpSuper(objc_super *super, SEL selector)
{
    using namespace machorun;
    return inRegisters(targetOf(super->super_class, selector, objc_msg_lookup_super(super, selector)));
}
