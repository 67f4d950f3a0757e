#include "fuzz/harness/fuzz_process.h"

#include <syslog.h>

#include <mutex>
#include <string_view>

#include "framework/log.h"

namespace vl1::fuzz {

void prepare_process()
{
    static std::once_flag once;
    std::call_once(once, [] {
        setlogmask(LOG_UPTO(LOG_WARNING));  // the log writes at LOG_NOTICE
        set_log_capture([](std::string_view) {});
    });
}

}  // namespace vl1::fuzz
