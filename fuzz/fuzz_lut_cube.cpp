// .cube files come from users, in theme folders and as the LUTs they import.
#include "fuzz/fuzz_targets.h"
#include "fuzz/harness/fuzz_process.h"
#include "fuzz/harness/lut_checks.h"

namespace vl1::fuzz {

int fuzz_lut_cube(const uint8_t* data, std::size_t size)
{
    prepare_process();
    check_lut_text("lut_cube", std::string_view(reinterpret_cast<const char*>(data), size), lut_file_type::cube);
    return 0;
}

}  // namespace vl1::fuzz
