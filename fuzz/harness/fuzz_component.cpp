#include "fuzz/harness/fuzz_component.h"

#include <mutex>

#include "framework/chost.h"
#include "fuzz/harness/fuzz_themes.h"
#include "themes/hueloom_vault.h"

namespace vl1::fuzz {

std::shared_ptr<hueloom> make_effect_component()
{
    static std::once_flag once;
    std::call_once(once, [] {
        auto theme = std::make_shared<hueloom_theme_v1>(sample_theme(collection_theme_uid, "in the collection", 3, true));
        hueloom::get_vault()->get_theme_collection()->add_or_replace_theme(std::move(theme));
    });
    auto fx = std::make_shared<hueloom>();
    fx->initialize(std::make_shared<chost_v1>(fx));
    return fx;
}

}  // namespace vl1::fuzz
