#include "framework/shared_state_ring.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>

namespace vl1 {

namespace {

/// What a shared piece costs beyond its bytes: the vector and the shared control block.
constexpr std::size_t piece_overhead = sizeof(std::vector<uint8_t>) + 2 * sizeof(long) + 2 * sizeof(void*);

}  // namespace

shared_state_ring::shared_state_ring(std::size_t slots) : entries(slots) {}

shared_state_ring::piece shared_state_ring::find_or_copy(std::size_t slot, std::size_t index, const uint8_t* bytes,
                                                         std::size_t length) const
{
    // The slot's own old content first (a refresh after a gesture changes little), then the
    // newest entry, then the rest. Pieces already found unequal are not compared again.
    std::vector<const std::vector<uint8_t>*> unequal;
    const auto matches = [&](std::size_t e) -> bool {
        const entry& candidate = entries[e];
        if (index >= candidate.pieces.size())
            return false;
        const std::vector<uint8_t>* p = candidate.pieces[index].get();
        if (std::find(unequal.begin(), unequal.end(), p) != unequal.end())
            return false;
        if (p->size() == length && std::memcmp(p->data(), bytes, length) == 0)
            return true;
        unequal.push_back(p);
        return false;
    };
    if (matches(slot))
        return entries[slot].pieces[index];
    if (matches(last_stored))
        return entries[last_stored].pieces[index];
    for (std::size_t e = 0; e < entries.size(); ++e)
        if (e != slot && e != last_stored && matches(e))
            return entries[e].pieces[index];
    return std::make_shared<const std::vector<uint8_t>>(bytes, bytes + length);
}

void shared_state_ring::store(std::size_t slot, const std::vector<uint8_t>& bytes)
{
    entry fresh;
    fresh.size = bytes.size();
    fresh.pieces.reserve((bytes.size() + piece_size - 1) / piece_size);
    for (std::size_t offset = 0, index = 0; offset < bytes.size(); offset += piece_size, ++index) {
        const std::size_t length = std::min(piece_size, bytes.size() - offset);
        fresh.pieces.push_back(find_or_copy(slot, index, bytes.data() + offset, length));
    }
    entries[slot] = std::move(fresh);
    last_stored = slot;
}

std::vector<uint8_t> shared_state_ring::load(std::size_t slot) const
{
    const entry& e = entries[slot];
    std::vector<uint8_t> bytes;
    bytes.reserve(e.size);
    for (const piece& p : e.pieces)
        bytes.insert(bytes.end(), p->begin(), p->end());
    return bytes;
}

void shared_state_ring::clear(std::size_t slot)
{
    entries[slot] = {};
}

std::size_t shared_state_ring::memory_bytes() const
{
    std::unordered_set<const void*> counted;
    std::size_t total = entries.capacity() * sizeof(entry);
    for (const entry& e : entries) {
        total += e.pieces.capacity() * sizeof(piece);
        for (const piece& p : e.pieces)
            if (counted.insert(p.get()).second)
                total += p->capacity() + piece_overhead;
    }
    return total;
}

}  // namespace vl1
