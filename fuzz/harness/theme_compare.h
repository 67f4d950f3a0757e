// Comparing two themes field by field, with floats compared by their bits, so that a NaN
// angle or table value that survives a round trip counts as the same and a changed sign of
// zero counts as a difference.
#pragma once

#include <string>

#include "color/hueloom_theme_v1.h"

namespace vl1::fuzz {

struct theme_compare_options {
    /// Theme files and state records keep no alpha: a table built elsewhere may differ there.
    bool compare_alpha = true;
};

/// Empty if `a` and `b` hold the same uid, version, name, background, wheel slots (angle and
/// table, in order) and post-processing table; else the first difference in words.
std::string first_theme_difference(const hueloom_theme_v1& a, const hueloom_theme_v1& b,
                                   theme_compare_options options = {});

}  // namespace vl1::fuzz
