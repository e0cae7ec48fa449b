// Elements of host arrays: the host answers, for one array, the procedure that reads or inserts.
#include "hostapi/services.h"
#include "tests/support/fake_host.h"
#include "tests/support/service_probe.h"

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using service_probe::Service;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::StrEq;

namespace {

constexpr char kInsert[] = "RuntimeArrayDirectGetInsertProc";
constexpr char kGet[] = "RuntimeArrayDirectGetGetProc";

const std::vector<Service> &services()
{
    static const std::vector<Service> rows = {
        SERVICE(REALInsertArrayValueString, kInsert, void(REALarray, int32_t, REALstring)),
        SERVICE(REALInsertArrayValueObject, kInsert, void(REALarray, int32_t, REALobject)),
        SERVICE(REALGetArrayValueInt32, kGet, int32_t(REALarray, int32_t)),
        SERVICE(REALGetArrayValueInt64, kGet, int64_t(REALarray, int32_t)),
        SERVICE(REALGetArrayValueUInt8, kGet, uint8_t(REALarray, int32_t)),
        SERVICE(REALGetArrayValueSingle, kGet, float(REALarray, int32_t)),
        SERVICE(REALGetArrayValueDouble, kGet, double(REALarray, int32_t)),
        SERVICE(REALGetArrayValueString, kGet, REALstring(REALarray, int32_t)),
        SERVICE(REALGetArrayValueObject, kGet, REALobject(REALarray, int32_t)),
    };
    return rows;
}

std::vector<REALarray> arraysAskedFor;
void *procedure;

void *procedureFor(REALarray array)
{
    arraysAskedFor.push_back(array);
    return procedure;
}

class ArrayService : public ::testing::TestWithParam<Service> {
protected:
    void SetUp() override
    {
        fake_host::install();
        procedure = GetParam().hostFunction;
    }
    const REALarray array = service_probe::sample<REALarray>(0);
};

TEST_P(ArrayService, GivesTheNeutralResultWhileTheHostHasNoneAndAsksEachTime)
{
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    EXPECT_THAT(fake_host::asked, ElementsAre(GetParam().entryPoint, GetParam().entryPoint));
}

TEST_P(ArrayService, GivesTheNeutralResultForAnArrayWithoutAProcedure)
{
    fake_host::offer(GetParam().entryPoint, procedureFor);
    procedure = nullptr;
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    EXPECT_EQ(GetParam().seen(), "");
    EXPECT_THAT(arraysAskedFor, ElementsAre(array));
}

TEST_P(ArrayService, HandsArgumentsAndResultOnUnchanged)
{
    fake_host::offer(GetParam().entryPoint, procedureFor);
    EXPECT_EQ(GetParam().call(), GetParam().answer);
    EXPECT_EQ(GetParam().seen(), GetParam().samples);
}

TEST_P(ArrayService, AsksForTheProcedureOnEveryCallAndForTheEntryPointOnce)
{
    fake_host::offer(GetParam().entryPoint, procedureFor);
    EXPECT_EQ(GetParam().call(), GetParam().answer);
    procedure = nullptr;
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    EXPECT_THAT(arraysAskedFor, ElementsAre(array, array));
    EXPECT_THAT(fake_host::asked, ElementsAre(GetParam().entryPoint));
}

TEST_P(ArrayService, IsUsedOnceTheHostProvidesIt)
{
    EXPECT_EQ(GetParam().call(), GetParam().neutral);
    fake_host::offer(GetParam().entryPoint, procedureFor);
    EXPECT_EQ(GetParam().call(), GetParam().answer);
    EXPECT_EQ(fake_host::asked.size(), 2u);
}

TEST_P(ArrayService, HasACacheOfItsOwn)
{
    fake_host::offer(GetParam().entryPoint, procedureFor);
    GetParam().call();
    size_t others = 0;
    for (const Service &other : services()) {
        if (&other == &GetParam() || strcmp(other.wrapper, GetParam().wrapper) == 0 ||
            strcmp(other.entryPoint, GetParam().entryPoint) != 0)
            continue;
        procedure = other.hostFunction;
        EXPECT_EQ(other.call(), other.answer);
        others++;
    }
    EXPECT_EQ(fake_host::asked.size(), 1 + others) << "each service asks once for itself";
    EXPECT_THAT(fake_host::asked, Each(StrEq(GetParam().entryPoint)));
}

INSTANTIATE_TEST_SUITE_P(All, ArrayService, ::testing::ValuesIn(services()),
                         [](const auto &info) { return info.param.wrapper; });

} // namespace
