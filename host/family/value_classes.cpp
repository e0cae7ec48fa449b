// Host objects for Cocoa's small structs. The fields lie in the instance data in Cocoa's order, 32 bits each.
#include "host/family/class_record.h"

namespace family {

namespace {

template <class T, int Word>
T getField(void *object)
{
    return dataOf<T>(object)[Word];
}

template <class T, int Word>
void setField(void *object, T value)
{
    dataOf<T>(object)[Word] = value;
}

template <class T>
void construct2(void *object, T first, T second)
{
    dataOf<T>(object)[0] = first;
    dataOf<T>(object)[1] = second;
}

void constructRect(void *object, float x, float y, float width, float height)
{
    construct2(object, x, y);
    setField<float, 2>(object, width);
    setField<float, 3>(object, height);
}

template <class T, int Word>
Method field(const char *declaration)
{
    return {declaration, pointer(getField<T, Word>), pointer(setField<T, Word>)};
}

Method constructor(const char *declaration, void *function)
{
    return {declaration, function};
}

} // namespace

void addValueClasses()
{
    addClass({"NSRectKTZ", nullptr, 16},
             {constructor("Constructor(x as single, y as single, width as single, height as single)",
                          pointer(constructRect)),
              field<float, 0>("x as single"), field<float, 1>("y as single"), field<float, 2>("width as single"),
              field<float, 3>("height as single")});
    addClass({"NSSizeKTZ", nullptr, 8},
             {constructor("Constructor(width as single, height as single)", pointer(construct2<float>)),
              field<float, 0>("width as single"), field<float, 1>("height as single")});
    addClass({"NSPointKTZ", nullptr, 8},
             {constructor("Constructor(x as single, y as single)", pointer(construct2<float>)),
              field<float, 0>("x as single"), field<float, 1>("y as single")});
    addClass({"NSRangeKTZ", nullptr, 8},
             {constructor("Constructor(location as uint32, length as uint32)", pointer(construct2<uint32_t>)),
              field<uint32_t, 0>("location as uint32"), field<uint32_t, 1>("length as uint32")});
}

} // namespace family
