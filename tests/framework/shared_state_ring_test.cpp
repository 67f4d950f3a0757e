// The undo ring's storage: what goes in comes out byte for byte, and equal parts of the
// entries are held once.
#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "framework/shared_state_ring.h"

namespace vl1 {
namespace {

constexpr std::size_t piece = shared_state_ring::piece_size;

/// A blob of 100.5 pieces, so the last piece is a short one, filled from `seed`.
std::vector<uint8_t> blob(uint8_t seed)
{
    std::vector<uint8_t> bytes(100 * piece + piece / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<uint8_t>(i * 31 + seed);
    return bytes;
}

TEST(SharedStateRing, EntriesComeBackExactlyAndShareTheirEqualPieces)
{
    shared_state_ring ring(32);
    const std::vector<uint8_t> theme_a = blob(1), theme_b = blob(2);
    std::vector<std::vector<uint8_t>> stored(32);
    for (std::size_t slot = 0; slot < 32; ++slot) {
        // Two looks taking turns, each entry with a change of its own somewhere, the short
        // last piece included.
        stored[slot] = slot % 4 == 3 ? theme_b : theme_a;
        stored[slot][slot * 3 * piece + slot] ^= 0xff;
        stored[slot].back() = static_cast<uint8_t>(slot);
        ring.store(slot, stored[slot]);
    }
    for (std::size_t slot = 0; slot < 32; ++slot)
        ASSERT_EQ(ring.load(slot), stored[slot]) << slot;
    // Both looks once, plus two pieces of its own for each entry and the tables.
    EXPECT_LT(ring.memory_bytes(), 2 * theme_a.size() + 64 * piece + 32 * 2048);

    // Storing over a slot, shorter or empty, replaces it whole.
    ring.store(5, std::vector<uint8_t>(theme_a.begin(), theme_a.begin() + 10));
    EXPECT_EQ(ring.load(5), std::vector<uint8_t>(theme_a.begin(), theme_a.begin() + 10));
    ring.clear(6);
    EXPECT_TRUE(ring.load(6).empty());
    EXPECT_EQ(ring.load(7), stored[7]);
}

}  // namespace
}  // namespace vl1
