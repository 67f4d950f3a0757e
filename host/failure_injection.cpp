#include "host/failure_injection.h"

namespace vl1::ofxhost {

void failure_table::omit_suite(const std::string& suite_name)
{
    std::lock_guard lock(entries_mutex);
    omitted_suites.insert(suite_name);
}

bool failure_table::suite_omitted(const std::string& suite_name) const
{
    std::lock_guard lock(entries_mutex);
    return omitted_suites.count(suite_name) != 0;
}

void failure_table::add(injected_failure failure)
{
    std::lock_guard lock(entries_mutex);
    entries.push_back({std::move(failure), 0});
    armed = true;
}

void failure_table::clear()
{
    std::lock_guard lock(entries_mutex);
    entries.clear();
    omitted_suites.clear();
    armed = false;
}

std::optional<OfxStatus> failure_table::check(const char* function, const char* argument)
{
    if (!armed)
        return std::nullopt;
    std::lock_guard lock(entries_mutex);
    std::optional<OfxStatus> result;
    for (auto& e : entries) {
        if (e.failure.function != function)
            continue;
        if (!e.failure.argument.empty() && (argument == nullptr || e.failure.argument != argument))
            continue;
        ++e.seen;
        if (!result && (e.failure.nth_call == 0 || e.failure.nth_call == e.seen))
            result = e.failure.status;
    }
    return result;
}

}  // namespace vl1::ofxhost
