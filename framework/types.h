// Small value types that travel between host, component and view.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace vl1 {

enum class language_id : int32_t {
    en = 0,
    de = 1,
};

/// A size in points, not a position.
struct rect {
    int32_t width = 0;
    int32_t height = 0;
};

/// What get_version reports: major, minor, then two words that stay 0.
struct version_record {
    uint32_t major_version = 0;
    uint32_t minor_version = 0;
    uint32_t reserved1 = 0;
    uint32_t reserved2 = 0;

    friend constexpr bool operator==(const version_record&, const version_record&) = default;
};

/// What ihost_v1::get_project_info reports; the default host gives 0 and 24.
struct project_info {
    uint64_t word0 = 0;
    uint64_t word1 = 0;

    friend constexpr bool operator==(const project_info&, const project_info&) = default;
};

/// The kind of program a host object stands for.
enum class host_id : uint32_t {
    standalone = 0,  // the default host, chost_v1
    ofx = 6,
};

/// Names of the known host kinds 0..3. Kept for completeness; nothing acts on kinds 1..3.
inline constexpr std::array<std::string_view, 4> known_host_names{
    "Standalone", "After Effects", "Premiere", "FCP"};

}  // namespace vl1
