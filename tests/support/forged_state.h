// A packed state as a forging host, or a writer of a later version, might hand it over.
#pragma once

#include <sodium.h>
#include <zstd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

namespace hueloom_test {

/// Packed state bytes (without the "hlz1:" text form) that claim `state_bytes` and hold, under
/// a digest that matches, no grids and a zstd frame of `zeros` zero bytes as the rest; the
/// frame declares its size only with `declare_size`.
inline std::vector<uint8_t> forged_packed_state(uint32_t state_bytes, std::size_t zeros, bool declare_size)
{
    const std::vector<uint8_t> data(zeros, 0);
    std::vector<uint8_t> frame(ZSTD_compressBound(zeros));
    ZSTD_CCtx* cctx = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(cctx, ZSTD_c_contentSizeFlag, declare_size ? 1 : 0);
    frame.resize(ZSTD_compress2(cctx, frame.data(), frame.size(), data.data(), data.size()));
    ZSTD_freeCCtx(cctx);
    // State bytes, digest, no grids, the frame's size, the frame.
    std::vector<uint8_t> packed(44 + frame.size(), 0);
    std::memcpy(packed.data(), &state_bytes, 4);
    const auto frame_size = static_cast<uint32_t>(frame.size());
    std::memcpy(packed.data() + 40, &frame_size, 4);
    std::copy(frame.begin(), frame.end(), packed.begin() + 44);
    crypto_generichash(packed.data() + 4, 32, packed.data() + 36, packed.size() - 36, nullptr, 0);
    return packed;
}

}  // namespace hueloom_test
