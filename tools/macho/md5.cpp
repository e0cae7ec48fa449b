#include "tools/macho/md5.h"

#include <cmath>

namespace macho {

namespace {

struct State {
    uint32_t words[4] = {0x67452301, 0xefcdab89, 0x98badcfe, 0x10325476};
    void add(const uint8_t *block);
};

// The table of the standard: the fractions of sines.
const std::array<uint32_t, 64> &sines()
{
    static const std::array<uint32_t, 64> table = [] {
        std::array<uint32_t, 64> made{};
        for (int step = 0; step < 64; step++)
            made[step] = static_cast<uint32_t>(std::floor(std::fabs(std::sin(step + 1.0)) * 4294967296.0));
        return made;
    }();
    return table;
}

void State::add(const uint8_t *block)
{
    static constexpr int rotations[4][4] = {{7, 12, 17, 22}, {5, 9, 14, 20}, {4, 11, 16, 23}, {6, 10, 15, 21}};
    uint32_t a = words[0], b = words[1], c = words[2], d = words[3];
    for (int step = 0; step < 64; step++) {
        uint32_t mixed;
        int word;
        switch (step / 16) {
        case 0:
            mixed = (b & c) | (~b & d);
            word = step;
            break;
        case 1:
            mixed = (d & b) | (~d & c);
            word = (5 * step + 1) % 16;
            break;
        case 2:
            mixed = b ^ c ^ d;
            word = (3 * step + 5) % 16;
            break;
        default:
            mixed = c ^ (b | ~d);
            word = 7 * step % 16;
        }
        uint32_t sum = a + mixed + sines()[step] + load32(block + 4 * word);
        int rotation = rotations[step / 16][step % 4];
        a = d;
        d = c;
        c = b;
        b += sum << rotation | sum >> (32 - rotation);
    }
    words[0] += a;
    words[1] += b;
    words[2] += c;
    words[3] += d;
}

} // namespace

std::array<uint8_t, 16> md5(const Bytes &message)
{
    constexpr size_t blockSize = 64;
    Bytes padded = message;
    padded.push_back(0x80);
    while (padded.size() % blockSize != blockSize - 8)
        padded.push_back(0);
    uint64_t bits = uint64_t{message.size()} * 8;
    for (int byte = 0; byte < 8; byte++)
        padded.push_back(static_cast<uint8_t>(bits >> 8 * byte));

    State state;
    for (size_t offset = 0; offset < padded.size(); offset += blockSize)
        state.add(&padded[offset]);
    std::array<uint8_t, 16> digest{};
    for (int word = 0; word < 4; word++)
        store32(&digest[4 * word], state.words[word]);
    return digest;
}

} // namespace macho
