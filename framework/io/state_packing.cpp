#include "framework/io/state_packing.h"

#include <fpzip.h>
#include <sodium.h>
#include <tbb/parallel_for.h>
#include <zstd.h>

#include <cstring>
#include <memory>
#include <stdexcept>

#include <fmt/format.h>

namespace vl1 {

namespace {

constexpr std::size_t digest_bytes = 32;
constexpr std::size_t digest_at = 4;
constexpr std::size_t grid_count_at = digest_at + digest_bytes;
constexpr std::size_t grid_entry_bytes = 16;
// Compression level of the rest: mostly zero slots and small headers, where higher levels
// gain nothing but time.
// The grids are packed and unpacked in parallel: each fpzip stream has a coder of its own, and
// fpzip's one process-wide variable is its error code fpzip_errno, which is never read here.
constexpr int rest_level = 3;

void put_u16(std::vector<uint8_t>& out, uint16_t v)
{
    out.push_back(uint8_t(v));
    out.push_back(uint8_t(v >> 8));
}

void put_u32(std::vector<uint8_t>& out, uint32_t v)
{
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(uint8_t(v >> shift));
}

/// Reads little-endian numbers in order; past the end every read gives 0 and `ok` turns false.
struct reader {
    const uint8_t* data;
    std::size_t size;
    std::size_t at = 0;
    bool ok = true;

    uint32_t u(int bytes)
    {
        if (at > size || size - at < std::size_t(bytes)) {
            ok = false;
            return 0;
        }
        uint32_t v = 0;
        for (int i = 0; i < bytes; ++i)
            v |= uint32_t(data[at + i]) << (8 * i);
        at += bytes;
        return v;
    }
};

/// The grids as given, as long as each lies inside the blob after the one before it.
std::vector<state_float_grid> usable_grids(const std::vector<state_float_grid>& grids, std::size_t blob_size)
{
    std::vector<state_float_grid> usable;
    std::size_t end = 0;
    for (const state_float_grid& g : grids) {
        if (g.bytes() == 0 || g.offset < end || g.offset > blob_size || blob_size - g.offset < g.bytes() ||
            g.offset > UINT32_MAX)
            continue;
        usable.push_back(g);
        end = g.offset + g.bytes();
    }
    return usable;
}

FPZ* describe(FPZ* fpz, const state_float_grid& g)
{
    fpz->type = FPZIP_TYPE_FLOAT;
    fpz->prec = 0;  // all 32 bits: lossless
    fpz->nx = g.nx;
    fpz->ny = g.ny;
    fpz->nz = g.nz;
    fpz->nf = g.channels;
    return fpz;
}

/// The grid's fpzip stream, channels as planes; empty if fpzip can't store it.
std::vector<uint8_t> pack_grid(const uint8_t* cells, const state_float_grid& g)
{
    const std::size_t count = std::size_t(g.nx) * g.ny * g.nz;
    const auto planes = std::make_unique_for_overwrite<float[]>(count * g.channels);
    for (std::size_t c = 0; c < g.channels; ++c)
        for (std::size_t i = 0; i < count; ++i)
            std::memcpy(&planes[c * count + i], cells + (i * g.channels + c) * 4, 4);
    // Floats that defy prediction cost a little more than their 4 bytes.
    const std::size_t room = g.bytes() + g.bytes() / 4 + 1024;
    const auto out = std::make_unique_for_overwrite<uint8_t[]>(room);
    std::unique_ptr<FPZ, void (*)(FPZ*)> fpz(fpzip_write_to_buffer(out.get(), room), fpzip_write_close);
    if (!fpz)
        return {};
    const std::size_t written = fpzip_write(describe(fpz.get(), g), planes.get());
    return std::vector<uint8_t>(out.get(), out.get() + written);
}

bool unpack_grid(const uint8_t* stream, std::size_t stream_size, const state_float_grid& g, uint8_t* cells)
{
    const std::size_t count = std::size_t(g.nx) * g.ny * g.nz;
    const auto planes = std::make_unique_for_overwrite<float[]>(count * g.channels);
    std::unique_ptr<FPZ, void (*)(FPZ*)> fpz(fpzip_read_from_buffer(stream), fpzip_read_close);
    if (!fpz)
        return false;
    const std::size_t read = fpzip_read(describe(fpz.get(), g), planes.get());
    if (read == 0 || read > stream_size)
        return false;
    for (std::size_t c = 0; c < g.channels; ++c)
        for (std::size_t i = 0; i < count; ++i)
            std::memcpy(cells + (i * g.channels + c) * 4, &planes[c * count + i], 4);
    return true;
}

void digest_of(const uint8_t* data, std::size_t size, uint8_t* out)
{
    crypto_generichash(out, digest_bytes, data, size, nullptr, 0);
}

}  // namespace

std::vector<uint8_t> pack_state(const std::vector<uint8_t>& blob, const std::vector<state_float_grid>& grids)
{
    const std::vector<state_float_grid> usable = usable_grids(grids, blob.size());
    std::vector<std::vector<uint8_t>> packed_grids(usable.size());
    tbb::parallel_for(std::size_t(0), usable.size(),
                      [&](std::size_t i) { packed_grids[i] = pack_grid(blob.data() + usable[i].offset, usable[i]); });

    std::vector<state_float_grid> stored;
    std::vector<std::vector<uint8_t>> streams;
    std::vector<uint8_t> rest;
    std::size_t at = 0;
    for (std::size_t i = 0; i < usable.size(); ++i) {
        const state_float_grid& g = usable[i];
        if (packed_grids[i].empty() || packed_grids[i].size() > UINT32_MAX)
            continue;  // these bytes go with the rest
        rest.insert(rest.end(), blob.begin() + at, blob.begin() + g.offset);
        at = g.offset + g.bytes();
        stored.push_back(g);
        streams.push_back(std::move(packed_grids[i]));
    }
    rest.insert(rest.end(), blob.begin() + at, blob.end());
    std::vector<uint8_t> rest_frame(ZSTD_compressBound(rest.size()));
    const std::size_t rest_size = ZSTD_compress(rest_frame.data(), rest_frame.size(), rest.data(), rest.size(), rest_level);
    if (ZSTD_isError(rest_size))
        throw std::runtime_error(std::string("zstd: ") + ZSTD_getErrorName(rest_size));
    rest_frame.resize(rest_size);

    std::vector<uint8_t> out;
    put_u32(out, uint32_t(blob.size()));
    out.resize(out.size() + digest_bytes);
    put_u32(out, uint32_t(stored.size()));
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const state_float_grid& g = stored[i];
        put_u32(out, uint32_t(g.offset));
        for (uint16_t v : {g.nx, g.ny, g.nz, g.channels})
            put_u16(out, v);
        put_u32(out, uint32_t(streams[i].size()));
    }
    put_u32(out, uint32_t(rest_frame.size()));
    for (const auto& s : streams)
        out.insert(out.end(), s.begin(), s.end());
    out.insert(out.end(), rest_frame.begin(), rest_frame.end());
    digest_of(out.data() + grid_count_at, out.size() - grid_count_at, out.data() + digest_at);
    return out;
}

std::vector<uint8_t> unpack_state(const uint8_t* packed, std::size_t size, std::size_t max_state_bytes,
                                  std::string& error)
{
    reader in{packed, size};
    const std::size_t state_bytes = in.u(4);
    in.at = grid_count_at;
    const std::size_t grid_count = in.u(4);
    if (!in.ok) {
        error = fmt::format("the packed state has only {0} bytes", size);
        return {};
    }
    if (state_bytes > max_state_bytes) {
        error = fmt::format("the packed state claims {0} bytes, more than the {1} bytes of a state", state_bytes,
                            max_state_bytes);
        return {};
    }
    uint8_t digest[digest_bytes];
    digest_of(packed + grid_count_at, size - grid_count_at, digest);
    if (sodium_memcmp(digest, packed + digest_at, digest_bytes) != 0) {
        error = "the packed state is damaged: its digest doesn't match";
        return {};
    }
    if (grid_count > (size - in.at) / grid_entry_bytes) {
        error = fmt::format("the packed state claims {0} grids, more than it has room for", grid_count);
        return {};
    }

    std::vector<state_float_grid> grids(grid_count);
    std::vector<std::size_t> stream_sizes(grid_count);
    std::size_t end = 0, grid_bytes = 0, streams_bytes = 0;
    for (std::size_t i = 0; i < grid_count; ++i) {
        state_float_grid& g = grids[i];
        g.offset = in.u(4);
        g.nx = uint16_t(in.u(2));
        g.ny = uint16_t(in.u(2));
        g.nz = uint16_t(in.u(2));
        g.channels = uint16_t(in.u(2));
        stream_sizes[i] = in.u(4);
        if (g.bytes() == 0 || g.offset < end || g.offset > state_bytes || state_bytes - g.offset < g.bytes()) {
            error = fmt::format("grid {0} of the packed state doesn't fit a state of {1} bytes", i, state_bytes);
            return {};
        }
        end = g.offset + g.bytes();
        grid_bytes += g.bytes();
        streams_bytes += stream_sizes[i];
    }
    const std::size_t rest_frame_size = in.u(4);
    if (!in.ok || size - in.at != streams_bytes + rest_frame_size) {
        error = "the packed state's streams don't add up to its size";
        return {};
    }

    const uint8_t* rest_frame = packed + in.at + streams_bytes;
    const std::size_t rest_bytes = state_bytes - grid_bytes;
    // A frame that declares no size, or another size, could expand past the state.
    if (ZSTD_getFrameContentSize(rest_frame, rest_frame_size) != rest_bytes) {
        error = fmt::format("the packed state's rest claims another size than its {0} bytes", rest_bytes);
        return {};
    }
    std::vector<uint8_t> rest(rest_bytes);
    const std::size_t unpacked = ZSTD_decompress(rest.data(), rest.size(), rest_frame, rest_frame_size);
    if (ZSTD_isError(unpacked) || unpacked != rest_bytes) {
        error = "the packed state's rest doesn't decode to its size";
        return {};
    }

    std::vector<uint8_t> blob(state_bytes);
    std::vector<std::size_t> stream_starts(grid_count);
    std::size_t blob_at = 0, rest_at = 0, stream_at = in.at;
    for (std::size_t i = 0; i < grid_count; ++i) {
        const state_float_grid& g = grids[i];
        if (g.offset > blob_at)
            std::memcpy(blob.data() + blob_at, rest.data() + rest_at, g.offset - blob_at);
        rest_at += g.offset - blob_at;
        stream_starts[i] = stream_at;
        stream_at += stream_sizes[i];
        blob_at = g.offset + g.bytes();
    }
    // An empty rest has no storage; memcpy from null is undefined even for no bytes.
    if (state_bytes > blob_at)
        std::memcpy(blob.data() + blob_at, rest.data() + rest_at, state_bytes - blob_at);
    std::vector<char> decoded(grid_count, 0);
    tbb::parallel_for(std::size_t(0), grid_count, [&](std::size_t i) {
        decoded[i] = unpack_grid(packed + stream_starts[i], stream_sizes[i], grids[i], blob.data() + grids[i].offset);
    });
    for (std::size_t i = 0; i < grid_count; ++i) {
        if (!decoded[i]) {
            error = fmt::format("grid {0} of the packed state doesn't decode", i);
            return {};
        }
    }
    return blob;
}

}  // namespace vl1
