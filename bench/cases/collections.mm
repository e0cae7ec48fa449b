// Arrays and Dictionaries from ten elements on, and trees of them.
#include "bench/cases/arguments.h"

#include <vector>

namespace bench {

namespace {

std::vector<long> counts(Extent extent)
{
    if (extent == Extent::Everything)
        return {10, 100, 1000, 10000, 100000, 1000000};
    return {10, 100, 1000};
}

std::string elementText(long i)
{
    return "element " + std::to_string(10000000 + i); // of 16 units
}

NSString *cocoaText(long i)
{
    return [NSString stringWithUTF8String:elementText(i).c_str()];
}

Value hostStrings(long count)
{
    Value array = Value::strings({});
    for (long i = 0; i < count; i++)
        array.append(elementText(i));
    return array;
}

id newStrings(long count)
{
    NSMutableArray *array = [[NSMutableArray alloc] initWithCapacity:NSUInteger(count)];
    for (long i = 0; i < count; i++)
        [array addObject:cocoaText(i)];
    return array;
}

Value hostVariants(long count)
{
    Value array = Value::variants({});
    for (long i = 0; i < count; i++)
        array.append(Value(i));
    return array;
}

id newNumbers(long count)
{
    NSMutableArray *array = [[NSMutableArray alloc] initWithCapacity:NSUInteger(count)];
    for (long i = 0; i < count; i++)
        [array addObject:[NSNumber numberWithInt:int(i)]];
    return array;
}

Value hostDictionary(long count)
{
    Value dictionary = Value::dictionary();
    for (long i = 0; i < count; i++)
        dictionary.put(elementText(i), i);
    return dictionary;
}

id newDictionary(long count)
{
    NSMutableDictionary *dictionary = [[NSMutableDictionary alloc] initWithCapacity:NSUInteger(count)];
    for (long i = 0; i < count; i++)
        [dictionary setObject:[NSNumber numberWithInt:int(i)] forKey:cocoaText(i)];
    return dictionary;
}

// A tree four wide: dictionaries of arrays of dictionaries..., numbers at its leaves.
Value hostTree(long depth)
{
    if (depth == 0)
        return 7;
    Value node = depth % 2 ? Value::dictionary() : Value::variants({});
    for (int i = 0; i < 4; i++) {
        if (depth % 2)
            node.put("branch " + std::to_string(i), hostTree(depth - 1));
        else
            node.append(hostTree(depth - 1));
    }
    return node;
}

id cocoaTree(long depth)
{
    if (depth == 0)
        return @7;
    if (depth % 2 == 0)
        return @[ cocoaTree(depth - 1), cocoaTree(depth - 1), cocoaTree(depth - 1), cocoaTree(depth - 1) ];
    NSMutableDictionary *node = [NSMutableDictionary dictionary];
    for (int i = 0; i < 4; i++)
        [node setObject:cocoaTree(depth - 1) forKey:[NSString stringWithFormat:@"branch %d", i]];
    return node;
}

id newTree(long depth)
{
    return [cocoaTree(depth) retain];
}

struct Sort {
    const char *name;
    Value (*hostValue)(long size);
    id (*newObject)(long size);
    const char *getter, *setter;
};

const Sort kArraysAndDictionaries[] = {
    {"string array", hostStrings, newStrings, "stringArrayForKey(key as string) as string()",
     "setStringArrayValue(key as string, values() as string)"},
    {"Variant array", hostVariants, newNumbers, "arrayForKey(key as string) as variant()",
     "setArrayValue(key as string, values() as variant)"},
    {"Dictionary", hostDictionary, newDictionary, "dictionaryForKey(key as string) as dictionary",
     "setDictionaryValue(key as string, value as dictionary)"},
};

const Sort kTree = {"tree, depth", hostTree, newTree, "variantForKey(key as string) as variant",
                    "setVariantValue(key as string, value as variant)"};

// A collection on both sides. It is made when its case comes and given up after it: the largest fill a process.
struct Collection {
    Value hostValue;
    id stored = nil, ours = nil;
};

void add(Cases &cases, Ground &ground, const Sort &sort, long size)
{
    const std::string name = std::string(sort.name) + " of " + std::to_string(size);
    const Key key("c" + name, 24);
    auto collection = std::make_shared<Collection>();
    auto prepare = [=, &sort] {
        if (collection->stored)
            return;
        void *pool = newPool();
        *collection = {sort.hostValue(size), sort.newObject(size), sort.newObject(size)};
        [standard() setObject:collection->stored forKey:key.cocoa];
        endPool(pool);
    };
    auto tidy = [=] {
        void *pool = newPool();
        forget(key.cocoa);
        [collection->stored release];
        [collection->ours release];
        *collection = Collection();
        endPool(pool);
    };
    const int repeats = size > 2000 ? 1 : size > 100 ? 2 : 10;
    addCall<void *>(cases, ground, sort.getter, key)
        .named("get " + name, size)
        .repeated(repeats)
        .byHand([=] { return [standard() objectForKey:key.cocoa]; })
        .beforeEach(prepare);
    addCall(cases, ground, sort.setter, key, LateValue(collection, &collection->hostValue))
        .named("set " + name, size)
        .repeated(repeats)
        .byHand([=] { [standard() setObject:collection->ours forKey:key.cocoa]; })
        .beforeEach(prepare)
        .atTheEnd(tidy);
}

} // namespace

void addCollections(Cases &cases, Ground &ground, Extent extent)
{
    for (long count : counts(extent))
        for (const Sort &sort : kArraysAndDictionaries)
            add(cases, ground, sort, count);
    for (long depth : {3, 5})
        add(cases, ground, kTree, depth);
}

} // namespace bench
