#include "tools/hueloom_host/describe_command.h"

#include "host/host.h"
#include "host/status.h"

#include <fmt/format.h>
#include <fmt/ostream.h>
#include <fmt/ranges.h>

namespace vl1::host_tool {

namespace {

namespace fs = std::filesystem;

std::string short_components(const std::vector<std::string>& components)
{
    std::vector<std::string> out;
    for (const auto& c : components) {
        const std::string prefix = "OfxImageComponent";
        out.push_back(c.rfind(prefix, 0) == 0 ? c.substr(prefix.size()) : c);
    }
    return out.empty() ? "(none)" : fmt::format("{}", fmt::join(out, ", "));
}

std::string range_text(const std::string& low, const std::string& high)
{
    if (low.empty() && high.empty())
        return {};
    return fmt::format("{} .. {}", low.empty() ? "?" : low, high.empty() ? "?" : high);
}

void print_param(std::ostream& out, const ofxhost::param_info& p)
{
    std::string line = fmt::format("        {:<20} {:<11}", p.name, p.type);
    if (!p.default_value.empty()) line += fmt::format(" default {}", p.default_value);
    if (auto r = range_text(p.min, p.max); !r.empty()) line += fmt::format("  range {}", r);
    if (auto r = range_text(p.display_min, p.display_max); !r.empty()) line += fmt::format("  display {}", r);
    if (!p.options.empty()) line += fmt::format("  options {}", fmt::join(p.options, ", "));
    if (p.label != p.name) line += fmt::format("  label \"{}\"", p.label);
    if (p.script_name != p.name) line += fmt::format("  script \"{}\"", p.script_name);
    if (p.secret)
        line += "  secret";
    fmt::print(out, "{}\n", line);
}

void print_context(std::ostream& out, const ofxhost::context_info& c)
{
    fmt::print(out, "    Context {}\n      Clips:\n", c.context);
    for (const auto& clip : c.clips) {
        fmt::print(out, "        {:<20} {}{}\n", clip.name, short_components(clip.components),
                   clip.optional ? "  optional" : "");
    }
    fmt::print(out, "      Parameters:\n");
    for (const auto& p : c.params)
        print_param(out, p);
}

void print_plugin(std::ostream& out, int index, const ofxhost::plugin_info& info)
{
    fmt::print(out, "  Plug-in {}: {} version {}.{}\n", index, info.identifier, info.version_major,
               info.version_minor);
    fmt::print(out, "    Label: {}\n    Grouping: {}\n", info.label, info.grouping);
    fmt::print(out, "    Contexts: {}\n", fmt::join(info.contexts, ", "));
    fmt::print(out, "    Pixel depths: {}\n", fmt::join(info.pixel_depths, ", "));
    fmt::print(out, "    Render thread safety: {}\n", info.thread_safety);
    for (const auto& c : info.per_context)
        print_context(out, c);
}

// Runs the actions in a host's order, stopping at the first failure; the failure's text or "".
std::string describe_plugin(ofxhost::plugin& p, ofxhost::plugin_info& info)
{
    const std::string who = fmt::format("plug-in {} ({})", p.index(), p.identifier());
    if (OfxStatus st = p.load(); !ofxhost::succeeded(st)) {
        return fmt::format("{}: OfxActionLoad failed with {}", who, ofxhost::status_name(st));
    }
    if (OfxStatus st = p.describe(); !ofxhost::succeeded(st)) {
        return fmt::format("{}: OfxActionDescribe failed with {}", who, ofxhost::status_name(st));
    }
    for (const auto& context : p.info_without_contexts().contexts) {
        if (OfxStatus st = p.describe_in_context(context); !ofxhost::succeeded(st)) {
            return fmt::format("{}: OfxImageEffectActionDescribeInContext {} failed with {}", who, context,
                               ofxhost::status_name(st));
        }
    }
    info = p.info();
    p.unload();
    return {};
}

bool describe_bundle(ofxhost::host& h, const fs::path& bundle, std::ostream& out, std::ostream& err)
{
    fmt::print(out, "Bundle {}\n", bundle.string());
    bool ok = true;
    try {
        const int count = h.plugin_count(bundle);
        for (int i = 0; i < count; ++i) {
            try {
                ofxhost::plugin p = h.load_plugin(bundle, i);
                ofxhost::plugin_info info;
                const std::string failure = describe_plugin(p, info);
                if (!failure.empty()) {
                    fmt::print(err, "hueloom-host: {}: {}\n", bundle.string(), failure);
                    ok = false;
                    continue;
                }
                print_plugin(out, i, info);
            } catch (const std::exception& e) {
                fmt::print(err, "hueloom-host: {}\n", e.what());
                ok = false;
            }
        }
    } catch (const std::exception& e) {
        fmt::print(err, "hueloom-host: {}\n", e.what());
        ok = false;
    }
    return ok;
}

}  // namespace

int describe_bundles(const std::vector<fs::path>& folders, std::ostream& out, std::ostream& err)
{
    const auto bundles = ofxhost::find_bundles(folders);
    if (bundles.empty()) {
        std::vector<std::string> names;
        for (const auto& f : folders)
            names.push_back(f.string());
        fmt::print(err, "hueloom-host: no OFX bundles found in {}\n", fmt::join(names, ":"));
        return 1;
    }
    ofxhost::host h;
    bool ok = true;
    for (const auto& bundle : bundles)
        ok = describe_bundle(h, bundle, out, err) && ok;
    return ok ? 0 : 1;
}

}  // namespace vl1::host_tool
