#include "framework/window.h"

#include <atomic>

namespace vl1 {
namespace {

std::atomic<window_factory*> installed_factory{nullptr};

}  // namespace

window_factory* window_factory::get_instance(const std::string& icon_name)
{
    window_factory* factory = installed_factory.load();
    if (factory != nullptr)
        factory->set_icon_name(icon_name);
    return factory;
}

void window_factory::install(window_factory* factory)
{
    installed_factory.store(factory);
}

}  // namespace vl1
