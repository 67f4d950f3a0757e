#include "presets/preset_writer.h"

#include <cmath>
#include <iterator>
#include <memory>

#include <fmt/format.h>

#include "framework/iparameter.h"
#include "framework/lut_exporter.h"

namespace vl1 {

namespace {

using text_out = std::back_insert_iterator<std::string>;

// Names are written between quotes as they come (UTF-8 passes unchanged); only what would
// break the JSON text is escaped, so that a name with a quote still gives a readable file.
void append_json_string_body(std::string& out, const std::string& text)
{
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte < 0x20) {
            fmt::format_to(text_out(out), "\\u{:04x}", static_cast<unsigned>(byte));
        } else {
            out += c;
        }
    }
}

// Six decimals, as "%f" gives them. A value that isn't finite has no JSON form; it is written
// as 0 so that the rest of the file stays readable.
void append_float(std::string& out, float v)
{
    fmt::format_to(text_out(out), "{:f}", std::isfinite(v) ? v : 0.0f);
}

void append_parameter_value(std::string& out, iparameter_v1& param)
{
    const param_value v = param.get_param_value();
    switch (param.get_type()) {
    case param_type::continuous:
        out += "\t\t\"param_type\":\"continuous\",\n\t\t\"param_value\":";
        append_float(out, v.value.f);
        out += "\n";
        break;
    case param_type::integral:
        out += "\t\t\"param_type\":\"integral\",\n\t\t\"param_value\":";
        fmt::format_to(text_out(out), "{}\n", v.value.i);
        break;
    case param_type::boolean:
        out += "\t\t\"param_type\":\"boolean\",\n\t\t\"param_value\":";
        out += v.value.b != 0 ? "true\n" : "false\n";
        break;
    case param_type::color:
        out += "\t\t\"param_type\":\"color\",\n\t\t\"param_value\":[";
        append_float(out, v.value.argb.a);
        out += ", ";
        append_float(out, v.value.argb.r);
        out += ", ";
        append_float(out, v.value.argb.g);
        out += ", ";
        append_float(out, v.value.argb.b);
        out += "]\n";
        break;
    default:
        // Not strict JSON: a file with such a parameter can't be read back. No parameter
        // class of the framework has another type.
        out += "\t\t// NOTE: Not yet supported\n\t\t\"param_type\":\"custom\",\n\t\t\"param_value\":null\n";
        break;
    }
}

void append_parameters(std::string& out, icomponent_v1& component)
{
    const int count = component.get_parameter_count();
    fmt::format_to(text_out(out), "\t\"parameter_count\":{},\n", count);
    out += "\t\"parameters\":[\n";
    for (int index = 0; index < count; ++index) {
        const auto param = component.get_parameter(index);
        if (!param)
            continue;
        out += "\t{\n\t\t\"param_name\":\"";
        append_json_string_body(out, param->get_name());
        fmt::format_to(text_out(out), "\",\n\t\t\"param_id\":{},\n", param->get_uid().value);
        append_parameter_value(out, *param);
        out += index + 1 < count ? "\t},\n" : "\t}\n";
    }
    out += "\t],\n";
}

void append_state(std::string& out, const std::vector<uint8_t>& state)
{
    fmt::format_to(text_out(out), "\t\"plugin_state_size\":{},\n", state.size());
    out += "\t\"plugin_state\":[";
    // About four characters per byte; the blob of an effect runs to millions of bytes.
    out.reserve(out.size() + state.size() * 4 + 64);
    for (std::size_t i = 0; i < state.size(); ++i) {
        if (i > 0)
            out += ',';
        fmt::format_to(text_out(out), "{}", static_cast<unsigned>(state[i]));
    }
    out += "]";
}

void append_exported_lut(std::string& out, icomponent_v1& component)
{
    iobject* found = nullptr;
    if (!component.query_interface("lut_exporter", &found) || found == nullptr)
        return;
    auto* exporter = dynamic_cast<lut_exporter*>(found);
    if (exporter == nullptr)
        return;
    lut_argb_variable lut;
    if (!exporter->get_lut(&lut) || lut.edge == 0)
        return;
    fmt::format_to(text_out(out), ",\n\t\"lut_edge_length\":{},\n\t\"lut_points\":[", lut.edge);
    out.reserve(out.size() + lut.data.size() * 3 * 10);
    for (std::size_t i = 0; i < lut.data.size(); ++i) {
        if (i > 0)
            out += ',';
        append_float(out, lut.data[i].r);
        out += ',';
        append_float(out, lut.data[i].g);
        out += ',';
        append_float(out, lut.data[i].b);
    }
    out += "]";
}

}  // namespace

std::string build_preset_text(icomponent_v1& component)
{
    std::string out = "{\n\t\"plugin_name\":\"";
    append_json_string_body(out, component.get_name());
    const version_record version = component.get_version();
    // The version record's third word stands for the patch level.
    fmt::format_to(text_out(out), "\",\n\t\"plugin_version\":\"{}.{}.{}\",\n", version.major_version,
                   version.minor_version, version.reserved1);
    append_parameters(out, component);
    append_state(out, component.get_state());
    append_exported_lut(out, component);
    out += "\n}";
    return out;
}

}  // namespace vl1
