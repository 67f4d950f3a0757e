// Replaces the global operator new and delete of this test program, by malloc and free, so
// that allocation_probe sees every request.
#include "tests/themes/allocation_probe.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool probing = false;
thread_local std::size_t largest = 0;

void* allocate(std::size_t size)
{
    if (probing && size > largest)
        largest = size;
    if (void* memory = std::malloc(size == 0 ? 1 : size))
        return memory;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace vl1::test {

allocation_probe::allocation_probe()
{
    largest = 0;
    probing = true;
}

allocation_probe::~allocation_probe() { probing = false; }

std::size_t allocation_probe::largest_request() const { return largest; }

}  // namespace vl1::test
