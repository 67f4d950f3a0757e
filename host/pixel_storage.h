// The zeroed bytes behind a host image. Frames of two megabytes and more lie on their own
// mapping, which the kernel is asked to back with 2 MiB pages: a plug-in that renders such a
// frame in tiles starts every tile row on new pages, and with 4 KiB pages the address
// translations of those rows cost about a fifth of the render. Smaller images stay on the heap.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vl1::ofxhost {

class pixel_storage {
public:
    /// `size` zero bytes; throws std::bad_alloc when the memory isn't there.
    explicit pixel_storage(std::size_t size = 0);
    pixel_storage(const pixel_storage& other);
    pixel_storage& operator=(const pixel_storage& other);
    pixel_storage(pixel_storage&& other) noexcept;
    pixel_storage& operator=(pixel_storage&& other) noexcept;
    ~pixel_storage();

    std::uint8_t* data() { return bytes; }
    const std::uint8_t* data() const { return bytes; }
    std::size_t size() const { return byte_count; }

private:
    void release() noexcept;

    std::uint8_t* bytes = nullptr;
    std::size_t byte_count = 0;
    std::size_t mapped_bytes = 0;  // 0 for heap memory
};

}  // namespace vl1::ofxhost
