// Watches the allocations of the calling thread, to prove that a reader allocates nothing
// beyond what its input holds.
#pragma once

#include <cstddef>

namespace vl1::test {

/// While it lives, records the largest single request to operator new of this thread.
class allocation_probe {
public:
    allocation_probe();
    ~allocation_probe();
    allocation_probe(const allocation_probe&) = delete;
    allocation_probe& operator=(const allocation_probe&) = delete;

    std::size_t largest_request() const;
};

}  // namespace vl1::test
