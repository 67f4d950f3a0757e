#include "host/failure_injection.h"

namespace ofxhost {

void failure_table::omit_suite(const std::string& suite_name)
{
    std::lock_guard lock(mutex_);
    omitted_suites_.insert(suite_name);
}

bool failure_table::suite_omitted(const std::string& suite_name) const
{
    std::lock_guard lock(mutex_);
    return omitted_suites_.count(suite_name) != 0;
}

void failure_table::add(injected_failure failure)
{
    std::lock_guard lock(mutex_);
    entries_.push_back({std::move(failure), 0});
    armed_ = true;
}

void failure_table::clear()
{
    std::lock_guard lock(mutex_);
    entries_.clear();
    omitted_suites_.clear();
    armed_ = false;
}

std::optional<OfxStatus> failure_table::check(const char* function, const char* argument)
{
    if (!armed_) return std::nullopt;
    std::lock_guard lock(mutex_);
    std::optional<OfxStatus> result;
    for (auto& e : entries_) {
        if (e.failure.function != function) continue;
        if (!e.failure.argument.empty() && (argument == nullptr || e.failure.argument != argument)) continue;
        ++e.seen;
        if (!result && (e.failure.nth_call == 0 || e.failure.nth_call == e.seen)) result = e.failure.status;
    }
    return result;
}

}  // namespace ofxhost
