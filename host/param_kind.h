// The parameter types the host knows, with the shape of their values, how their keys
// interpolate, and the properties a new descriptor of that type starts with.
#pragma once

#include "host/property_set.h"

#include <string>

namespace vl1::ofxhost {

enum class value_shape { none, reals, integers, text };
enum class interpolation { none, linear, linear_rounded, step };

struct param_kind {
    const char* type;  // the OFX type name, "OfxParamTypeDouble"
    value_shape shape;
    int count;  // numbers per value: 1, 2, 3 or 4 (r, g, b, a); 0 for text and none
    interpolation interp;
};

/// The kind for an OFX type name, or null for a type the host doesn't support.
const param_kind* find_param_kind(const char* type);

/// "Double" for "OfxParamTypeDouble": the type name without its prefix, for listings.
std::string short_type_name(const char* type);

/// Fills a new parameter descriptor's property set with the host's defaults for the kind.
void define_param_properties(property_set& props, const param_kind& kind, const std::string& name);

}  // namespace vl1::ofxhost
