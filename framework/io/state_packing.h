// The packed form of a state blob, as the state text carries it: the blob's float grids (its
// LUT tables) through fpzip, which predicts each float from its neighbours in the grid and
// stores it losslessly, and the rest of its bytes through zstd. Unpacking gives the blob back
// byte for byte.
//
// Layout, little-endian:
//   u32       state bytes: the size of the blob
//   32 bytes  BLAKE2b digest of everything that follows it
//   u32       grid count
//   per grid  u32 offset, u16 nx, ny, nz, channels, u32 packed bytes (16 bytes)
//   u32       packed bytes of the rest
//   the grids' fpzip streams in grid order, each with its fpzip header, channels as planes
//   one zstd frame: the blob's bytes outside the grids, in blob order
// fpzip's decoder trusts its input, so the digest is checked before any stream is decoded:
// damaged or foreign bytes are refused without reaching it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/istate_layout.h"

namespace vl1 {

/// `blob` packed. Grids out of order, overlapping or reaching past the blob, and grids that
/// fpzip can't store, go with the rest as plain bytes.
std::vector<uint8_t> pack_state(const std::vector<uint8_t>& blob, const std::vector<state_float_grid>& grids);

/// The blob in `packed`. Empty, with `error` saying why, for a claimed size above
/// `max_state_bytes`, a wrong digest, a layout that doesn't add up, or a stream that decodes
/// to another size than it claims; nothing larger than `max_state_bytes` is ever allocated.
std::vector<uint8_t> unpack_state(const uint8_t* packed, std::size_t size, std::size_t max_state_bytes,
                                  std::string& error);

}  // namespace vl1
