// Random values of every kind that a property list can hold go from a host program through Cocoa to disk, and from
// there to another host program, and come back as docs/reference/conversions.md says.
#include "tests/roundtrip/tree.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/wait.h>

namespace {

const int kBatches = 5;
const int kTreesInABatch = 500;
const uint64_t kFirstSeed = 20121120;

uint64_t firstSeed()
{
    const char *wanted = getenv("ROUNDTRIP_SEED");
    return wanted ? strtoull(wanted, nullptr, 10) : kFirstSeed;
}

struct Result {
    int status;
    std::string output;
};

Result runProcess(const std::string &what, uint64_t seed, int count)
{
    const std::string command = std::string(ROUNDTRIP_PROCESS) + " " + what + " " + std::to_string(seed) + " " +
                                std::to_string(count) + " 2>/dev/null"; // Cocoa's log lines about what cannot be stored
    Result run = {-1, ""};
    FILE *pipe = popen(command.c_str(), "r");
    if (!pipe)
        return run;
    char part[4096];
    while (size_t size = fread(part, 1, sizeof part, pipe))
        run.output.append(part, size);
    run.status = pclose(pipe);
    return run;
}

class RoundTrip : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Batch, RoundTrip, testing::Range(0, kBatches));

} // namespace

TEST_P(RoundTrip, ValuesComeBackToAnotherProcessAsTheTablesSay)
{
    const uint64_t seed = firstSeed() + uint64_t(GetParam());
    printf("seed %llu (ROUNDTRIP_SEED sets the first batch's)\n", static_cast<unsigned long long>(seed));
    const Result written = runProcess("write", seed, kTreesInABatch);
    ASSERT_EQ(written.status, 0) << written.output;
    const Result read = runProcess("read", seed, kTreesInABatch);
    EXPECT_EQ(read.status, 0) << read.output;
    EXPECT_EQ(read.output, written.output) << "as many are found as were stored";
    EXPECT_GT(atoi(written.output.c_str()), kTreesInABatch * 9 / 10) << "most trees can be stored";
}

// The trees are worth their name: a batch has every kind, and some that cannot be stored.
TEST(RoundTripTrees, ABatchHasEveryKind)
{
    roundtrip::Generator generator(firstSeed());
    std::set<roundtrip::Kind> kinds;
    std::set<host::ElementType> elementTypes;
    int storable = 0;
    size_t longestData = 0;
    auto look = [&](auto &self, const roundtrip::Tree &tree) -> void {
        kinds.insert(tree.kind);
        if (tree.kind == roundtrip::Kind::Array)
            elementTypes.insert(tree.elementType);
        if (tree.kind == roundtrip::Kind::Bytes)
            longestData = std::max(longestData, tree.text.size());
        for (const roundtrip::Tree &element : tree.elements)
            self(self, element);
    };
    for (int i = 0; i < kTreesInABatch; i++) {
        const roundtrip::Tree tree = generator.tree();
        look(look, tree);
        storable += tree.isStorable();
    }
    EXPECT_EQ(kinds.size(), 16u);
    EXPECT_GE(elementTypes.size(), 9u);
    EXPECT_EQ(longestData, 65536u);
    EXPECT_LT(storable, kTreesInABatch);
}
