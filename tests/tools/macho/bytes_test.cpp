#include "tools/macho/bytes.h"

#include <gtest/gtest.h>

#include "tests/tools/macho/compiled_object.h"
#include "tools/macho/version.h"

namespace macho {
namespace {

TEST(Bytes, VariableLengthNumbersComeBack)
{
    for (uint32_t value : {0u, 1u, 127u, 128u, 300u, 0x12345678u, 0x80000000u, 0xffffffffu}) {
        ByteWriter out;
        out.uleb(value);
        out.sleb(static_cast<int32_t>(value));
        ByteView in("f", out.bytes.data(), out.size());
        uint64_t at = 0;
        EXPECT_EQ(in.uleb(at, "x"), value);
        EXPECT_EQ(in.sleb(at, "x"), static_cast<int32_t>(value));
        EXPECT_EQ(at, out.size());
    }
}

TEST(Bytes, VariableLengthNumbersAreAsShortAsTheFormatSays)
{
    ByteWriter out;
    out.uleb(127);
    out.uleb(128);
    out.sleb(63);
    out.sleb(64);
    out.sleb(-64);
    out.sleb(-65);
    EXPECT_EQ(out.bytes, (Bytes{0x7f, 0x80, 0x01, 0x3f, 0xc0, 0x00, 0x40, 0xbf, 0x7f}));
}

std::string failureOf(const Bytes &bytes, void (*body)(const ByteView &))
{
    return test::failureOf([&] { body(ByteView("f.o", bytes.data(), bytes.size())); });
}

TEST(Bytes, ReadingPastTheEndNamesTheFile)
{
    EXPECT_EQ(failureOf({1, 2, 3}, [](const ByteView &view) { view.u32(0, "a word"); }),
              "f.o: the file is cut off or damaged: a word reaches past its end");
    EXPECT_EQ(failureOf({1, 2, 3}, [](const ByteView &view) { view.slice(UINT64_MAX, 2, "a part"); }),
              "f.o: the file is cut off or damaged: a part reaches past its end");
    EXPECT_EQ(failureOf({1, 2, 3}, [](const ByteView &view) { view.record<uint16_t>(1, "a word"); }), "none");
}

TEST(Bytes, NumbersOfMoreThan32BitsAreRefused)
{
    auto uleb = [](const ByteView &view) {
        uint64_t at = 0;
        view.uleb(at, "a number");
    };
    EXPECT_EQ(failureOf({0xff, 0xff, 0xff, 0xff, 0x0f}, uleb), "none");
    EXPECT_EQ(failureOf({0xff, 0xff, 0xff, 0xff, 0x1f}, uleb),
              "f.o: damaged: a number holds a number of more than 32 bits");
    EXPECT_EQ(failureOf({0xff, 0xff, 0xff, 0xff, 0x8f, 0x00}, uleb),
              "f.o: damaged: a number holds a number of more than 32 bits");
}

TEST(Bytes, TextWithoutAnEndIsRefused)
{
    EXPECT_EQ(failureOf({'a', 'b'}, [](const ByteView &view) { view.text(0, 100, "a name"); }),
              "f.o: damaged: a name holds a text without an end, or one of more than 100 bytes");
    EXPECT_EQ(failureOf({'a', 'b', 'c', 0}, [](const ByteView &view) { view.text(0, 3, "a name"); }),
              "f.o: damaged: a name holds a text without an end, or one of more than 3 bytes");
}

TEST(Messages, StayOnOneLine)
{
    EXPECT_EQ(printable("a\nb\x7f\x01"), "a?b??");
}

TEST(Versions, ArePackedAndShown)
{
    EXPECT_EQ(parseVersion("10.4"), 0x000a0400u);
    EXPECT_EQ(parseVersion("1.2.3"), 0x00010203u);
    EXPECT_EQ(parseVersion("65535.255.255"), 0xffffffffu);
    EXPECT_EQ(versionText(0x000a0400), "10.4.0");
}

TEST(Versions, AnythingElseIsRefused)
{
    for (const char *text : {"", ".", "1.", "1..2", "1.2.3.4", "65536", "1.256", "1.2.256", "a", "1.x", "-1", "1 "})
        EXPECT_FALSE(parseVersion(text)) << text;
}

TEST(Versions, CompatibilityFollowsFromTheVersion)
{
    const std::pair<const char *, const char *> cases[] = {{"1.0.0", "1.0.0"}, {"1.4.2", "1.0.0"}, {"12.3", "12.0.0"},
                                                           {"0.1.0", "0.1.0"}, {"0.3.7", "0.3.0"}, {"0.0.5", "0.0.5"},
                                                           {"0", "0.0.0"}};
    for (const auto &[version, compatibility] : cases)
        EXPECT_EQ(versionText(compatibilityVersionOf(*parseVersion(version))), compatibility) << version;
}

} // namespace
} // namespace macho
