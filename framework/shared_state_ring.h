// The storage of the undo ring. A state blob is kept as pieces of piece_size bytes, and a
// piece equal to the one at the same offset of another entry is shared instead of copied.
// Whole states are still what goes in and comes out; only their memory is shared. An effect
// whose blob carries a large, rarely changing part (a theme) thus pays for that part once,
// however many entries hold it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vl1 {

class shared_state_ring {
public:
    /// Pieces are compared and shared at this granularity (bytes).
    static constexpr std::size_t piece_size = 4096;

    explicit shared_state_ring(std::size_t slots);

    std::size_t size() const { return entries.size(); }
    /// Replaces the content of `slot` with a copy of `bytes`.
    void store(std::size_t slot, const std::vector<uint8_t>& bytes);
    /// The bytes last stored in `slot`; empty if none.
    std::vector<uint8_t> load(std::size_t slot) const;
    void clear(std::size_t slot);

    /// Heap bytes held by the ring: each distinct piece once, plus every entry's piece table.
    std::size_t memory_bytes() const;

private:
    using piece = std::shared_ptr<const std::vector<uint8_t>>;
    struct entry {
        std::size_t size = 0;
        std::vector<piece> pieces;
    };

    /// An equal piece at `index` of another entry (or of `slot`'s old content), else a new one.
    piece find_or_copy(std::size_t slot, std::size_t index, const uint8_t* bytes, std::size_t length) const;

    std::vector<entry> entries;
    std::size_t last_stored = 0;
};

}  // namespace vl1
