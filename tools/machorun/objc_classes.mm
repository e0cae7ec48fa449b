#include "tools/machorun/objc_sections.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <algorithm>

namespace machorun {

namespace {

// Records of the 32-bit macOS runtime. Pointers are kept as numbers: each is checked before it is followed.
struct FragileModule {
    uint32_t version, size, name, symbols;
};

// Followed by the addresses of the classes, then of the categories.
struct FragileSymbols {
    uint32_t selectorCount, selectors;
    uint16_t classCount, categoryCount;
};

struct FragileClass {
    uint32_t isa, superclass, name, version, info, instanceSize, ivars, methods, cache, protocols, ivarLayout,
        extension;
};
static_assert(sizeof(FragileClass) == 48);

struct FragileCategory {
    uint32_t name, className, instanceMethods, classMethods, protocols;
};

struct FragileMethod {
    uint32_t selector, types, implementation;
};

// Followed by its methods.
struct FragileMethodList {
    uint32_t obsolete, count;
};

struct FragileIvar {
    uint32_t name, type, offset;
};

uint32_t asWord(const void *address)
{
    return reinterpret_cast<uint32_t>(address);
}

// A list is a record that carries the number of its items in its last word, and the items behind it.
template <class Header, class Item>
Item *itemsAfter(const MappedImage &image, uint32_t address, uint32_t count, const char *what)
{
    return image.recordsAt<Item>(address + sizeof(Header), count, what);
}

// `add` is class_addMethod for a class in the making, and class_replaceMethod for one that is in use: a category's
// method takes the place of the class's own.
template <class Add>
void addMethods(const MappedImage &image, Class target, uint32_t list, Add add)
{
    if (!list) {
        return;
    }
    const char *what = "a list of methods";
    uint32_t count = image.recordsAt<FragileMethodList>(list, 1, what)->count;
    auto *methods = itemsAfter<FragileMethodList, FragileMethod>(image, list, count, what);
    for (uint32_t index = 0; index < count; index++) {
        const char *name = image.textAt(methods[index].selector, "a method's name");
        const char *types = image.textAt(methods[index].types, "a method's types");
        if (!image.isExecutable(methods[index].implementation)) {
            throw BadImage(std::string("has a method whose code is not code: ") + name);
        }
        if (class_isMetaClass(target) && strcmp(name, "load") == 0) {
            throw BadImage("has a +load method, and nothing here would call it");
        }
        add(target, sel_registerName(name), reinterpret_cast<IMP>(methods[index].implementation), types);
    }
}

// Instance variables were given their places by the compiler, counting from the superclass's size as declared. A
// superclass that is larger here would share its last ones with them.
void reserveIvars(const MappedImage &image, Class made, Class superclass, const FragileClass &record)
{
    uint32_t inherited = class_getInstanceSize(superclass);
    if (record.ivars) {
        const char *what = "a list of instance variables";
        uint32_t count = *image.recordsAt<uint32_t>(record.ivars, 1, what);
        auto *ivars = itemsAfter<uint32_t, FragileIvar>(image, record.ivars, count, what);
        for (uint32_t index = 0; index < count; index++) {
            if (ivars[index].offset < inherited) {
                throw BadImage(std::string("has a class whose superclass is larger here: ") + class_getName(made));
            }
        }
    }
    if (record.instanceSize > inherited) {
        class_addIvar(made, "imageIvars", record.instanceSize - inherited, 2, "?");
    }
}

// False when the superclass does not exist yet.
bool defineClass(const MappedImage &image, FragileClass &record)
{
    const char *name = image.textAt(record.name, "a class's name");
    Class superclass = objc_lookUpClass(image.textAt(record.superclass, "a class's name"));
    if (!superclass) {
        return false;
    }
    Class made = objc_allocateClassPair(superclass, name, 0);
    if (!made) {
        throw BadImage(std::string("defines the class ") + name + ", which this process has already");
    }
    auto *meta = image.recordsAt<FragileClass>(record.isa, 1, "a metaclass");
    reserveIvars(image, made, superclass, record);
    addMethods(image, made, record.methods, class_addMethod);
    addMethods(image, object_getClass(made), meta->methods, class_addMethod);
    objc_registerClassPair(made);
    // Code that sends to super reads the superclass out of the image's own records.
    record.superclass = asWord(superclass);
    meta->superclass = asWord(object_getClass(superclass));
    return true;
}

void defineModule(const MappedImage &image, const FragileModule &module)
{
    if (!module.symbols) {
        return;
    }
    const char *what = "a list of classes";
    auto *symbols = image.recordsAt<FragileSymbols>(module.symbols, 1, what);
    uint32_t classCount = symbols->classCount;
    uint32_t categoryCount = symbols->categoryCount;
    auto *definitions = itemsAfter<FragileSymbols, uint32_t>(image, module.symbols, classCount + categoryCount, what);

    std::vector<FragileClass *> waiting;
    for (uint32_t index = 0; index < classCount; index++) {
        waiting.push_back(image.recordsAt<FragileClass>(definitions[index], 1, "a class"));
    }
    // A class may stand before its superclass: go round for as long as one more can be made.
    while (!waiting.empty()) {
        auto rest = std::remove_if(waiting.begin(), waiting.end(),
                                   [&](FragileClass *record) { return defineClass(image, *record); });
        if (rest == waiting.end()) {
            throw BadImage(std::string("defines a class whose superclass is missing: ") +
                           image.textAt(waiting.front()->name, "a class's name"));
        }
        waiting.erase(rest, waiting.end());
    }
    for (uint32_t index = classCount; index < classCount + categoryCount; index++) {
        auto *category = image.recordsAt<FragileCategory>(definitions[index], 1, "a category");
        const char *className = image.textAt(category->className, "a class's name");
        Class extended = objc_lookUpClass(className);
        if (!extended) {
            throw BadImage(std::string("adds to the class ") + className + ", which this process does not have");
        }
        addMethods(image, extended, category->instanceMethods, class_replaceMethod);
        addMethods(image, object_getClass(extended), category->classMethods, class_replaceMethod);
    }
}

} // namespace

void DefineClasses(const macho::DylibFile &file, const MappedImage &image)
{
    const macho::DylibSection *protocols = file.section("__OBJC", "__protocol");
    if (protocols && protocols->size) {
        throw BadImage("has protocol objects, which cannot be made here");
    }
    const macho::DylibSection *section = file.section("__OBJC", "__module_info");
    if (!section) {
        return;
    }
    auto *modules = image.recordsAt<FragileModule>(asWord(image.at(section->address)),
                                                   section->size / sizeof(FragileModule), "the list of modules");
    for (uint32_t index = 0; index < section->size / sizeof(FragileModule); index++) {
        defineModule(image, modules[index]);
    }
}

} // namespace machorun
