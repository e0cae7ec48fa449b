#include "hostapi/services.h"

// clang-format off

// Array access takes two steps: the host's entry point answers, for one array, the procedure that reads
// or inserts its elements. That procedure depends on the array and is never kept.
static HostEntry<void *(REALarray)> insertString{"RuntimeArrayDirectGetInsertProc"};
static HostEntry<void *(REALarray)> insertObject{"RuntimeArrayDirectGetInsertProc"};
static HostEntry<void *(REALarray)> getInt32{"RuntimeArrayDirectGetGetProc"};
static HostEntry<void *(REALarray)> getInt64{"RuntimeArrayDirectGetGetProc"};
static HostEntry<void *(REALarray)> getUInt8{"RuntimeArrayDirectGetGetProc"};
static HostEntry<void *(REALarray)> getSingle{"RuntimeArrayDirectGetGetProc"};
static HostEntry<void *(REALarray)> getDouble{"RuntimeArrayDirectGetGetProc"};
static HostEntry<void *(REALarray)> getString{"RuntimeArrayDirectGetGetProc"};
static HostEntry<void *(REALarray)> getObject{"RuntimeArrayDirectGetGetProc"};

// clang-format on

template <typename Value>
static void Insert(HostEntry<void *(REALarray)> &insertProcedure, REALarray array, int32_t index, Value value)
{
    if (void *insert = insertProcedure(array))
        reinterpret_cast<void (*)(REALarray, int32_t, Value)>(insert)(array, index, value);
}

template <typename Value>
static Value Read(HostEntry<void *(REALarray)> &readProcedure, REALarray array, int32_t index)
{
    void *read = readProcedure(array);
    return read ? reinterpret_cast<Value (*)(REALarray, int32_t)>(read)(array, index) : Value();
}

// clang-format off

void REALInsertArrayValueString(REALarray array, int32_t index, REALstring value) { Insert(insertString, array, index, value); }
void REALInsertArrayValueObject(REALarray array, int32_t index, REALobject value) { Insert(insertObject, array, index, value); }

int32_t    REALGetArrayValueInt32(REALarray array, int32_t index)  { return Read<int32_t>(getInt32, array, index); }
int64_t    REALGetArrayValueInt64(REALarray array, int32_t index)  { return Read<int64_t>(getInt64, array, index); }
uint8_t    REALGetArrayValueUInt8(REALarray array, int32_t index)  { return Read<uint8_t>(getUInt8, array, index); }
float      REALGetArrayValueSingle(REALarray array, int32_t index) { return Read<float>(getSingle, array, index); }
double     REALGetArrayValueDouble(REALarray array, int32_t index) { return Read<double>(getDouble, array, index); }
REALstring REALGetArrayValueString(REALarray array, int32_t index) { return Read<REALstring>(getString, array, index); }
REALobject REALGetArrayValueObject(REALarray array, int32_t index) { return Read<REALobject>(getObject, array, index); }

// clang-format on

void *REALLoadFrameworkMethod(const char *declaration)
{
    static HostEntry<void *(void *module, const char *declaration)> load{"REALLoadGlobalMethod"};
    return load(nullptr, declaration);
}
