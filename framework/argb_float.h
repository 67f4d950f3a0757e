// One pixel in the framework's working form. The colour engine adds arithmetic on it; here
// it is only the plain record, so the framework's interfaces can name it.
#pragma once

namespace vl1 {

/// Alpha, red, green, blue as 32-bit floats, in this memory order (16 bytes, no padding);
/// images of pixel format 3 store exactly this.
struct argb_float {
    float a;
    float r;
    float g;
    float b;
};

static_assert(sizeof(argb_float) == 16);

}  // namespace vl1
