#include "fuzz/harness/state_checks.h"

#include <string>

#include <fmt/format.h>

#include "fuzz/harness/fuzz_component.h"
#include "fuzz/property_check.h"

namespace vl1::fuzz {

namespace {

// Index of the first differing byte, or the shorter length when one is a prefix.
std::size_t first_difference(const std::vector<uint8_t>& a, const std::vector<uint8_t>& b)
{
    std::size_t i = 0;
    while (i < a.size() && i < b.size() && a[i] == b[i])
        ++i;
    return i;
}

std::string describe_change(const char* what, const std::vector<uint8_t>& before, const std::vector<uint8_t>& after)
{
    return fmt::format("{}: state of {} bytes became {} bytes, first difference at byte {}", what, before.size(),
                       after.size(), first_difference(before, after));
}

}  // namespace

void check_state_load(const char* target, const std::vector<uint8_t>& blob, bool from_host, bool ask_first)
{
    const auto fx = make_effect_component();
    const std::vector<uint8_t> before = fx->get_state();
    std::vector<uint8_t> handed = blob;

    if (ask_first) {
        std::string reason;
        const bool rejected = fx->is_state_rejected(handed, from_host, reason);
        FUZZ_REQUIRE(target, handed == blob, "is_state_rejected changed the blob it was asked about");
        if (rejected) {
            // Each saved state costs megabytes; the component is compared only where the
            // check is the last step.
            const std::vector<uint8_t> checked = fx->get_state();
            FUZZ_REQUIRE(target, checked == before,
                         describe_change("is_state_rejected changed the component", before, checked));
            FUZZ_REQUIRE(target, !reason.empty(), "a rejected state comes without a reason");
            return;
        }
    }

    const bool restored = fx->set_state(handed, from_host);
    const std::vector<uint8_t> after = fx->get_state();
    if (!restored) {
        FUZZ_REQUIRE(target, after == before, describe_change("a refused state changed the component", before, after));
        return;
    }
    FUZZ_REQUIRE(target, after.size() == fx->get_state_size(),
                 fmt::format("get_state gave {} bytes, get_state_size says {}", after.size(), fx->get_state_size()));

    const auto reopened = make_effect_component();
    std::vector<uint8_t> saved = after;
    if (ask_first) {
        std::string reason;
        FUZZ_REQUIRE(target, !reopened->is_state_rejected(saved, from_host, reason),
                     "the component rejects the state it saved itself: " + reason);
    }
    FUZZ_REQUIRE(target, reopened->set_state(saved, from_host), "the component refuses the state it saved itself");
    const std::vector<uint8_t> again = reopened->get_state();
    FUZZ_REQUIRE(target, again == after, describe_change("a saved state opens differently", after, again));
}

}  // namespace vl1::fuzz
