#include "framework/image.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include <tbb/parallel_for.h>

namespace vl1 {

uint32_t bytes_per_pixel(pixel_format format) noexcept
{
    switch (format) {
    case pixel_format::argb8:
    case pixel_format::rgba8:
        return 4;
    case pixel_format::argb16:
    case pixel_format::argb16_alt:
    case pixel_format::rgba16:
        return 8;
    case pixel_format::argb_f32:
    case pixel_format::rgba_f32:
        return 16;
    default:
        return 0;
    }
}

image::image(uint64_t w, uint64_t h, pixel_format f, bool flip)
{
    allocate(w, h, f);
    flipped = flip ? 1 : 0;
}

image::~image()
{
    release();
}

image::image(image&& other) noexcept
    : data(std::exchange(other.data, nullptr)),
      width(std::exchange(other.width, 0)),
      height(std::exchange(other.height, 0)),
      stride(std::exchange(other.stride, 0)),
      format(std::exchange(other.format, pixel_format::empty)),
      flipped(std::exchange(other.flipped, 0)),
      owns_data(std::exchange(other.owns_data, false))
{
}

image& image::operator=(image&& other) noexcept
{
    if (this != &other) {
        release();
        data = std::exchange(other.data, nullptr);
        width = std::exchange(other.width, 0);
        height = std::exchange(other.height, 0);
        stride = std::exchange(other.stride, 0);
        format = std::exchange(other.format, pixel_format::empty);
        flipped = std::exchange(other.flipped, 0);
        owns_data = std::exchange(other.owns_data, false);
    }
    return *this;
}

image image::wrap(uint8_t* d, uint64_t w, uint64_t h, uint64_t s, pixel_format f, bool flip) noexcept
{
    image result;
    result.data = d;
    result.width = w;
    result.height = h;
    result.stride = s;
    result.format = f;
    result.flipped = flip ? 1 : 0;
    result.owns_data = false;
    return result;
}

void image::release() noexcept
{
    // Storage of an unknown format (7 and above) isn't ours to free, whatever the flag says.
    if (owns_data && static_cast<uint32_t>(format) < 7)
        std::free(data);
    data = nullptr;
    owns_data = false;
}

void image::allocate(uint64_t w, uint64_t h, pixel_format f)
{
    const uint64_t row_bytes = w * bytes_per_pixel(f);
    uint8_t* storage = nullptr;
    if (row_bytes > 0 && h > 0) {
        storage = static_cast<uint8_t*>(std::calloc(h, row_bytes));
        if (storage == nullptr)
            throw std::bad_alloc();
    }
    release();
    data = storage;
    width = w;
    height = h;
    stride = row_bytes;
    format = f;
    owns_data = storage != nullptr;
}

void image::copy_from(const image& src)
{
    if (&src == this)
        return;
    flipped = src.flipped;
    const bool reuse = owns_data && data != nullptr && data != src.data && width == src.width &&
                       height == src.height && format == src.format;
    // The old storage goes only after the copy, as src may share it.
    std::unique_ptr<uint8_t, decltype(&std::free)> old(nullptr, &std::free);
    if (!reuse) {
        if (owns_data && static_cast<uint32_t>(format) < 7)
            old.reset(data);
        owns_data = false;
        allocate(src.width, src.height, src.format);
    }
    if (data == nullptr || src.data == nullptr)
        return;
    const uint64_t bytes = stride;
    tbb::parallel_for(uint64_t{0}, height, [&](uint64_t y) { std::memcpy(row(y), src.row(y), bytes); });
}

uint8_t* image::row(uint64_t y) const noexcept
{
    const uint64_t storage_row = flipped != 0 ? height - 1 - y : y;
    return data + storage_row * stride;
}

namespace {

template <typename T>
T load(const uint8_t* p, int index) noexcept
{
    T v;
    std::memcpy(&v, p + index * sizeof(T), sizeof(T));
    return v;
}

template <typename T>
argb_float read_divided(const uint8_t* p, float divisor) noexcept
{
    return {static_cast<float>(load<T>(p, 0)) / divisor, static_cast<float>(load<T>(p, 1)) / divisor,
            static_cast<float>(load<T>(p, 2)) / divisor, static_cast<float>(load<T>(p, 3)) / divisor};
}

// r, g, b, a in storage become a, r, g, b.
template <typename T>
argb_float read_rotated(const uint8_t* p) noexcept
{
    return {static_cast<float>(load<T>(p, 3)), static_cast<float>(load<T>(p, 0)),
            static_cast<float>(load<T>(p, 1)), static_cast<float>(load<T>(p, 2))};
}

}  // namespace

argb_float image::read_pixel(uint64_t x, uint64_t y) const noexcept
{
    const uint8_t* p = row(y) + x * bytes_per_pixel(format);
    switch (format) {
    case pixel_format::argb8:
        return read_divided<uint8_t>(p, 255.0f);
    case pixel_format::argb16:
    case pixel_format::argb16_alt:
        return read_divided<uint16_t>(p, 32767.0f);
    case pixel_format::argb_f32:
        return {load<float>(p, 0), load<float>(p, 1), load<float>(p, 2), load<float>(p, 3)};
    case pixel_format::rgba8:
        return read_rotated<uint8_t>(p);
    case pixel_format::rgba16:
        return read_rotated<uint16_t>(p);
    case pixel_format::rgba_f32:
        return read_rotated<float>(p);
    default:
        return {0.0f, 0.0f, 0.0f, 0.0f};
    }
}

}  // namespace vl1
