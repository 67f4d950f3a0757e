#include "tools/hueloom_render/param_setting.h"

#include "framework/string_helpers.h"
#include "host/status.h"
#include "ofx/api/ofx_param.h"
#include "tools/hueloom_render/render_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>
#include <set>

namespace vl1::render_tool {

namespace {

struct key_text {
    std::string value;
    double frame = 0.0;
};

render_error usage(const std::string& message) { return render_error(exit_code::usage, message); }

bool is_type(const ofxhost::param& p, const char* type) { return std::strcmp(p.type(), type) == 0; }

std::optional<double> read_number(std::string text)
{
    text = vl1::trim_copy(text);
    if (!text.empty() && text[0] == '+')
        text.erase(0, 1);
    double v = 0.0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || !std::isfinite(v))
        return std::nullopt;
    return v;
}

/// "V@F,V@F" as keys; nothing when some part has no '@' or a frame that isn't a number.
std::optional<std::vector<key_text>> split_keys(const std::string& text)
{
    std::vector<key_text> keys;
    for (const std::string& part : vl1::split(text, ',')) {
        const auto at = part.rfind('@');
        if (at == std::string::npos)
            return std::nullopt;
        const auto frame = read_number(part.substr(at + 1));
        if (!frame)
            return std::nullopt;
        keys.push_back({part.substr(0, at), *frame});
    }
    return keys;
}

std::string show(double v) { return fmt::format("{}", v); }

std::vector<std::string> choice_options(const ofxhost::param& p)
{
    const auto& props = p.properties();
    return props.has(kOfxParamPropChoiceOption) ? props.get_strings(kOfxParamPropChoiceOption)
                                                : std::vector<std::string>{};
}

std::optional<double> read_boolean(const std::string& text)
{
    const std::string t = vl1::lowercase(vl1::trim_copy(text));
    if (t == "1" || t == "true" || t == "on" || t == "yes")
        return 1.0;
    if (t == "0" || t == "false" || t == "off" || t == "no")
        return 0.0;
    return std::nullopt;
}

std::optional<double> read_choice(const ofxhost::param& p, const std::string& text)
{
    const auto options = choice_options(p);
    const std::string wanted = vl1::lowercase(vl1::trim_copy(text));
    for (std::size_t i = 0; i < options.size(); ++i) {
        if (vl1::lowercase(options[i]) == wanted)
            return static_cast<double>(i);
    }
    return read_number(text);
}

// The range limit of component `i`, if the parameter has one that isn't the "no limit" value.
std::optional<double> limit(const ofxhost::param& p, const char* property, int i)
{
    const auto& props = p.properties();
    if (!props.has(property) || props.dimension(property) <= i)
        return std::nullopt;
    const double v = props.type_of(property) == ofxhost::prop_type::integer ? props.get_int(property, i)
                                                                           : props.get_double(property, i);
    return std::isfinite(v) ? std::optional<double>(v) : std::nullopt;
}

void check_range(const ofxhost::param& p, double v, int i)
{
    double low = 0.0, high = 0.0;
    if (is_type(p, kOfxParamTypeBoolean)) {
        low = 0.0, high = 1.0;
    } else if (is_type(p, kOfxParamTypeChoice)) {
        const auto n = choice_options(p).size();
        if (n == 0)
            return;
        low = 0.0, high = static_cast<double>(n - 1);
    } else {
        const auto min = limit(p, kOfxParamPropMin, i);
        const auto max = limit(p, kOfxParamPropMax, i);
        if ((!min || v >= *min) && (!max || v <= *max))
            return;
        low = min.value_or(-HUGE_VAL), high = max.value_or(HUGE_VAL);
    }
    if (v < low || v > high) {
        throw usage(fmt::format("{} is out of range {} .. {} for \"{}\"", show(v), show(low), show(high), p.name()));
    }
}

double read_component(const ofxhost::param& p, const std::string& text, int i)
{
    std::optional<double> v;
    if (is_type(p, kOfxParamTypeBoolean))
        v = read_boolean(text);
    else if (is_type(p, kOfxParamTypeChoice))
        v = read_choice(p, text);
    else
        v = read_number(text);
    if (!v) {
        if (is_type(p, kOfxParamTypeBoolean))
            throw usage(fmt::format("\"{}\" is no boolean (true/false, on/off, 1/0)", text));
        if (is_type(p, kOfxParamTypeChoice)) {
            throw usage(fmt::format("\"{}\" is none of the options of \"{}\": {}", text, p.name(),
                                    fmt::join(choice_options(p), ", ")));
        }
        throw usage(fmt::format("\"{}\" is not a number", text));
    }
    if (p.kind_of().shape == ofxhost::value_shape::integers && *v != std::floor(*v)) {
        throw usage(fmt::format("\"{}\" is not a whole number, which \"{}\" needs", text, p.name()));
    }
    check_range(p, *v, i);
    return *v;
}

std::string format_value(const ofxhost::param& p, const ofxhost::param_value& v)
{
    if (p.kind_of().shape == ofxhost::value_shape::text)
        return v.text;
    if (is_type(p, kOfxParamTypeBoolean))
        return v.numbers[0] != 0.0 ? "true" : "false";
    if (is_type(p, kOfxParamTypeChoice)) {
        const auto options = choice_options(p);
        const auto index = static_cast<long long>(v.numbers[0]);
        if (index >= 0 && static_cast<std::size_t>(index) < options.size())
            return options[index];
    }
    std::vector<std::string> parts;
    for (int i = 0; i < p.kind_of().count; ++i)
        parts.push_back(show(v.numbers[i]));
    return fmt::format("{}", fmt::join(parts, ":"));
}

}  // namespace

bool is_settable(const ofxhost::param& p)
{
    return p.has_value() && !is_type(p, kOfxParamTypeCustom);
}

std::vector<std::string> settable_names(ofxhost::instance& inst)
{
    std::vector<std::string> names;
    for (const auto& p : inst.fx().params().params()) {
        if (is_settable(*p))
            names.push_back(p->name());
    }
    return names;
}

ofxhost::param& find_param(ofxhost::instance& inst, const std::string& name)
{
    const auto& all = inst.fx().params().params();
    ofxhost::param* found = inst.fx().params().find(name);
    const std::string wanted = vl1::lowercase(name);
    for (const char* property : {kOfxPropName, kOfxParamPropScriptName}) {
        if (found != nullptr)
            break;
        std::vector<ofxhost::param*> matches;
        for (const auto& p : all) {
            const auto& props = p->properties();
            const std::string candidate = props.has(property) ? props.get_string(property) : p->name();
            if (vl1::lowercase(candidate) == wanted)
                matches.push_back(p.get());
        }
        if (matches.size() > 1) {
            std::vector<std::string> names;
            for (const auto* m : matches)
                names.push_back(m->name());
            throw usage(fmt::format("parameter name \"{}\" is ambiguous: {}", name, fmt::join(names, ", ")));
        }
        if (matches.size() == 1)
            found = matches.front();
    }
    const auto names = settable_names(inst);
    const std::string known = names.empty() ? "the plug-in has no parameters to set"
                                            : fmt::format("the plug-in has: {}", fmt::join(names, ", "));
    if (found == nullptr)
        throw usage(fmt::format("unknown parameter \"{}\"; {}", name, known));
    if (!is_settable(*found)) {
        throw usage(fmt::format("parameter \"{}\" ({}) holds no value to set{}", found->name(),
                                ofxhost::short_type_name(found->type()),
                                is_type(*found, kOfxParamTypeCustom) ? "; a saved state goes in with --state-in" : ""));
    }
    return *found;
}

ofxhost::param_value parse_value(const ofxhost::param& p, const std::string& text)
{
    ofxhost::param_value value;
    if (p.kind_of().shape == ofxhost::value_shape::text) {
        value.text = text;
        return value;
    }
    const int count = p.kind_of().count;
    std::vector<std::string> parts = count > 1 ? vl1::split(text, ':') : std::vector<std::string>{text};
    if (count > 1 && parts.size() == 1)
        parts = vl1::split(text, ',');
    if (static_cast<int>(parts.size()) != count) {
        throw usage(fmt::format("\"{}\" needs {} numbers separated by ':', not \"{}\"", p.name(), count, text));
    }
    for (int i = 0; i < count; ++i)
        value.numbers[i] = read_component(p, parts[i], i);
    return value;
}

void apply_setting(ofxhost::instance& inst, const std::string& setting)
{
    try {
        const auto eq = setting.find('=');
        if (eq == std::string::npos || eq == 0)
            throw usage("expected NAME=VALUE or NAME=VALUE@FRAME,...");
        ofxhost::param& p = find_param(inst, vl1::trim_copy(setting.substr(0, eq)));
        const std::string text = setting.substr(eq + 1);
        const bool is_text = p.kind_of().shape == ofxhost::value_shape::text;
        std::optional<std::vector<key_text>> keys;
        if (text.find('@') != std::string::npos) {
            keys = split_keys(text);
            if (!keys && !is_text)
                throw usage("keys are written VALUE@FRAME,VALUE@FRAME,... with numbers as frames");
        }
        if (!keys) {
            const ofxhost::param_value value = parse_value(p, text);
            p.delete_all_keys();
            p.set_constant(value);
            return;
        }
        const auto& props = p.properties();
        if (props.has(kOfxParamPropAnimates) && props.get_int(kOfxParamPropAnimates) == 0) {
            throw usage(fmt::format("parameter \"{}\" can't be animated", p.name()));
        }
        std::vector<std::pair<double, ofxhost::param_value>> parsed;
        std::set<double> frames;
        for (const key_text& k : *keys) {
            if (!frames.insert(k.frame).second)
                throw usage(fmt::format("frame {} has two keys", show(k.frame)));
            parsed.emplace_back(k.frame, parse_value(p, k.value));
        }
        p.delete_all_keys();
        for (const auto& [frame, value] : parsed)
            p.set_value_at(frame, value);
    } catch (const render_error& e) {
        throw usage(fmt::format("{}: {}", setting, e.what()));
    } catch (const ofxhost::host_error& e) {
        throw usage(fmt::format("{}: {}", setting, e.what()));
    }
}

std::string format_setting(const ofxhost::param& p)
{
    if (!is_settable(p))
        return {};
    const auto times = p.key_times();
    std::vector<std::string> parts;
    if (times.empty()) {
        parts.push_back(format_value(p, p.value()));
    } else {
        for (const double t : times)
            parts.push_back(format_value(p, p.value_at(t)) + "@" + show(t));
    }
    const std::string value = fmt::format("{}", fmt::join(parts, ","));
    if (value.find('\n') != std::string::npos || value.find('\r') != std::string::npos)
        return {};
    if (p.kind_of().shape == ofxhost::value_shape::text && times.empty() && split_keys(value))
        return {};
    return p.name() + "=" + value;
}

}  // namespace vl1::render_tool
