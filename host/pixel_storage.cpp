#include "host/pixel_storage.h"

#include <sys/mman.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace vl1::ofxhost {

namespace {

constexpr std::size_t large_page = std::size_t{2} << 20;

std::size_t rounded_to_large_pages(std::size_t size)
{
    return (size + large_page - 1) / large_page * large_page;
}

// A mapping of `size` bytes (a multiple of large_page) that starts on a large-page boundary:
// mapped with one large page to spare, whose unaligned head and tail go back at once.
std::uint8_t* map_aligned(std::size_t size)
{
    const std::size_t spare = size + large_page;
    void* mapped = mmap(nullptr, spare, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED)
        throw std::bad_alloc();
    auto* start = static_cast<std::uint8_t*>(mapped);
    const auto address = reinterpret_cast<std::uintptr_t>(start);
    const std::size_t head = (large_page - address % large_page) % large_page;
    if (head > 0)
        munmap(start, head);
    munmap(start + head + size, large_page - head);  // never empty: head < large_page
    // Only a request: without transparent huge pages the mapping keeps small ones.
    madvise(start + head, size, MADV_HUGEPAGE);
    return start + head;
}

}  // namespace

pixel_storage::pixel_storage(std::size_t size) : byte_count(size)
{
    if (size >= large_page) {
        mapped_bytes = rounded_to_large_pages(size);
        bytes = map_aligned(mapped_bytes);  // fresh anonymous pages read as zero
    } else if (size > 0) {
        bytes = static_cast<std::uint8_t*>(std::calloc(size, 1));
        if (bytes == nullptr)
            throw std::bad_alloc();
    }
}

pixel_storage::pixel_storage(const pixel_storage& other) : pixel_storage(other.byte_count)
{
    if (byte_count > 0)
        std::memcpy(bytes, other.bytes, byte_count);
}

pixel_storage& pixel_storage::operator=(const pixel_storage& other)
{
    if (this != &other) {
        pixel_storage copy(other);
        *this = std::move(copy);
    }
    return *this;
}

pixel_storage::pixel_storage(pixel_storage&& other) noexcept
    : bytes(std::exchange(other.bytes, nullptr)),
      byte_count(std::exchange(other.byte_count, 0)),
      mapped_bytes(std::exchange(other.mapped_bytes, 0))
{
}

pixel_storage& pixel_storage::operator=(pixel_storage&& other) noexcept
{
    if (this != &other) {
        release();
        bytes = std::exchange(other.bytes, nullptr);
        byte_count = std::exchange(other.byte_count, 0);
        mapped_bytes = std::exchange(other.mapped_bytes, 0);
    }
    return *this;
}

pixel_storage::~pixel_storage()
{
    release();
}

void pixel_storage::release() noexcept
{
    if (mapped_bytes > 0)
        munmap(bytes, mapped_bytes);
    else
        std::free(bytes);
    bytes = nullptr;
    byte_count = 0;
    mapped_bytes = 0;
}

}  // namespace vl1::ofxhost
