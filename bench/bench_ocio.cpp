#include "bench/bench_ocio.h"

#include <OpenColorIO/OpenColorIO.h>

namespace OCIO = OCIO_NAMESPACE;

namespace vl1::bench {

struct ocio_lut_processor::impl {
    OCIO::ConstCPUProcessorRcPtr cpu;
};

ocio_lut_processor::ocio_lut_processor(const lut_argb<32>& table) : p(std::make_unique<impl>())
{
    auto transform = OCIO::Lut3DTransform::Create(32);
    transform->setInterpolation(OCIO::INTERP_LINEAR);
    for (unsigned long r = 0; r < 32; ++r)
        for (unsigned long g = 0; g < 32; ++g)
            for (unsigned long b = 0; b < 32; ++b) {
                const argb_float& e = table.data[lut_index(32, r, g, b)];
                transform->setValue(r, g, b, e.r, e.g, e.b);
            }
    const auto config = OCIO::Config::CreateRaw();
    p->cpu = config->getProcessor(transform)->getDefaultCPUProcessor();
}

ocio_lut_processor::~ocio_lut_processor() = default;

void ocio_lut_processor::apply(const rgba_float_frame& source, rgba_float_frame& result, int first_row,
                               int rows) const
{
    const std::size_t offset = static_cast<std::size_t>(first_row) * source.width * 4;
    // OpenColorIO's image descriptions take non-const pixels even for the source.
    const OCIO::PackedImageDesc in(const_cast<float*>(source.pixels.data() + offset), source.width, rows, 4);
    OCIO::PackedImageDesc out(result.pixels.data() + offset, result.width, rows, 4);
    p->cpu->apply(in, out);
}

}  // namespace vl1::bench
