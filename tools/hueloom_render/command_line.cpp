#include "tools/hueloom_render/command_line.h"

#include <fmt/format.h>

#include <charconv>
#include <map>

namespace vl1::render_tool {

const char* const render_usage =
    "usage: hueloom-render -i INPUT -o OUTPUT [options]\n"
    "       hueloom-render --export-lut OUT.cube|OUT.3dl [options]\n"
    "       hueloom-render --list-params [options]\n"
    "\n"
    "Grades images through the Hueloom OFX plug-in, loaded as a host loads it.\n"
    "\n"
    "Images and sequences:\n"
    "  -i, --input FILE        image to grade: EXR, TIFF, PNG, JPEG, DPX and what else OpenImageIO reads;\n"
    "                          a sequence as shot.####.exr or shot.%04d.exr\n"
    "  -o, --output FILE       where the graded image goes; a pattern for a sequence. A still input with a\n"
    "                          pattern output renders the still once per frame\n"
    "  --frames LIST           frames to render: 1-100, 1-100x2, 1,5,7-9 (default: every input frame\n"
    "                          found on disk; a still renders at frame 1)\n"
    "  --depth D               output depth 8, 16, half or float (default: the input's)\n"
    "\n"
    "Look:\n"
    "  --set NAME=VALUE        set a parameter by the name the plug-in gives it (any case); keys as\n"
    "                          NAME=VALUE@FRAME,VALUE@FRAME,... are interpolated by the host. Several\n"
    "                          numbers (colours) are separated by ':'\n"
    "  --state-in FILE         start from a saved state: the \"binaryStateParam\" text on the first line,\n"
    "                          optionally followed by NAME=VALUE lines (applied before any --set)\n"
    "  --state-out FILE        save the state and the parameter values in that form after rendering\n"
    "  --theme UID|NAME|FILE.hlt  grade through a theme\n"
    "  --preset FILE.json      apply a preset\n"
    "  --export-lut FILE       write the look as a 3D LUT (.cube or .3dl) instead of or besides images;\n"
    "                          the look at the first frame of --frames (frame 1 without it)\n"
    "  --lut-size N            points per axis of --export-lut: 17 (default, four decimals), or 33 or 65\n"
    "                          in full float precision (.cube only)\n"
    "  --list-params           list the parameters the plug-in describes and stop\n"
    "\n"
    "Running:\n"
    "  --plugin-path PATH      ':'-separated folders or bundles to search for the plug-in (default:\n"
    "                          $OFX_PLUGIN_PATH, the build's OFX/Plugins, /usr/OFX/Plugins)\n"
    "  --plugin-id ID          the plug-in to load (default com.varnlight.hueloomofx)\n"
    "  --threads N             use at most N threads\n"
    "  -q, --quiet             print nothing but errors\n"
    "  -v, --verbose           print details, the host's messages and the plug-in's log lines\n"
    "  -h, --help              this text\n"
    "\n"
    "Exit codes: 0 done, 1 a frame failed, 2 usage or parameter error, 3 unreadable input,\n"
    "4 plug-in not loadable, 5 output not writable, 130 interrupted (SIGINT), 143 terminated (SIGTERM).\n"
    "Outputs are written under a temporary name and renamed when complete.\n";

const char* const look_usage =
    "usage: hueloom-look -i IMAGE [-o OUT] [--set NAME=VALUE]... [--theme ...] [--preset ...]\n"
    "                    [--state-in F] [--state-out F] [--export-lut F] [options]\n"
    "\n"
    "Opens the Hueloom editor on a picture, without an OFX host: the plug-in is loaded as a host\n"
    "loads it, the options set the starting look, and \"Open GUI\" is pressed with the picture as\n"
    "the frame at hand. When the editor closes, the look it left is what -o (the graded picture),\n"
    "--state-out and --export-lut write. The options mean what they mean in hueloom-render\n"
    "(see hueloom-render --help). Needs an X display (DISPLAY).\n";

namespace {

enum class arg_kind { text, list, number, flag };

struct option_rule {
    arg_kind kind;
    std::string render_options::*text = nullptr;
    std::vector<std::string> render_options::*list = nullptr;
    int render_options::*number = nullptr;
    bool render_options::*flag = nullptr;
};

const std::map<std::string, option_rule>& option_table()
{
    using o = render_options;
    static const std::map<std::string, option_rule> table = {
        {"-i", {arg_kind::text, &o::input}},
        {"--input", {arg_kind::text, &o::input}},
        {"-o", {arg_kind::text, &o::output}},
        {"--output", {arg_kind::text, &o::output}},
        {"--frames", {arg_kind::text, &o::frames}},
        {"--set", {arg_kind::list, nullptr, &o::settings}},
        {"--state-in", {arg_kind::text, &o::state_in}},
        {"--state-out", {arg_kind::text, &o::state_out}},
        {"--theme", {arg_kind::text, &o::theme}},
        {"--preset", {arg_kind::text, &o::preset}},
        {"--export-lut", {arg_kind::text, &o::export_lut}},
        {"--depth", {arg_kind::text, &o::depth}},
        {"--plugin-path", {arg_kind::text, &o::plugin_path}},
        {"--plugin-id", {arg_kind::text, &o::plugin_id}},
        {"--threads", {arg_kind::number, nullptr, nullptr, &o::threads}},
        {"--lut-size", {arg_kind::number, nullptr, nullptr, &o::lut_size}},
        {"-q", {arg_kind::flag, nullptr, nullptr, nullptr, &o::quiet}},
        {"--quiet", {arg_kind::flag, nullptr, nullptr, nullptr, &o::quiet}},
        {"-v", {arg_kind::flag, nullptr, nullptr, nullptr, &o::verbose}},
        {"--verbose", {arg_kind::flag, nullptr, nullptr, nullptr, &o::verbose}},
        {"--list-params", {arg_kind::flag, nullptr, nullptr, nullptr, &o::list_params}},
        {"-h", {arg_kind::flag, nullptr, nullptr, nullptr, &o::help}},
        {"--help", {arg_kind::flag, nullptr, nullptr, nullptr, &o::help}},
    };
    return table;
}

// Stores one option's value; the error text or "".
std::string store(render_options& o, const std::string& name, const option_rule& rule, const std::string& value)
{
    switch (rule.kind) {
    case arg_kind::text:
        if (value.empty())
            return fmt::format("{} needs a non-empty value", name);
        o.*rule.text = value;
        return {};
    case arg_kind::list:
        (o.*rule.list).push_back(value);
        return {};
    case arg_kind::number: {
        int n = 0;
        const auto [end, ec] = std::from_chars(value.data(), value.data() + value.size(), n);
        if (ec != std::errc() || end != value.data() + value.size() || n < 1 || n > 1024) {
            return fmt::format("{} wants a whole number from 1 to 1024, not \"{}\"", name, value);
        }
        o.*rule.number = n;
        return {};
    }
    case arg_kind::flag: o.*rule.flag = true; return {};
    }
    return {};
}

std::string check_consistency(const render_options& o)
{
    if (o.help)
        return {};
    if (o.quiet && o.verbose)
        return "--quiet and --verbose exclude each other";
    if (!o.depth.empty() && o.depth != "8" && o.depth != "16" && o.depth != "half" && o.depth != "float") {
        return fmt::format("--depth wants 8, 16, half or float, not \"{}\"", o.depth);
    }
    if (o.lut_size != 17 && o.lut_size != 33 && o.lut_size != 65)
        return fmt::format("--lut-size wants 17, 33 or 65, not {}", o.lut_size);
    if (o.list_params)
        return {};
    if (o.open_editor)
        return o.input.empty() ? "the editor needs a picture: -i FILE" : std::string();
    if (o.input.empty() != o.output.empty())
        return o.input.empty() ? "-o needs an input: -i FILE" : "-i needs an output: -o FILE";
    if (o.input.empty() && o.export_lut.empty())
        return "nothing to do: give -i INPUT -o OUTPUT, --export-lut FILE or --list-params";
    return {};
}

}  // namespace

parsed_command parse_command_line(const std::vector<std::string>& args)
{
    parsed_command result;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string name = args[i];
        std::string value;
        bool inline_value = false;
        if (const auto eq = name.find('='); name.rfind("--", 0) == 0 && eq != std::string::npos) {
            value = name.substr(eq + 1);
            name = name.substr(0, eq);
            inline_value = true;
        }
        const auto found = option_table().find(name);
        if (found == option_table().end()) {
            result.error = fmt::format("unknown option \"{}\"", args[i]);
            return result;
        }
        const option_rule& rule = found->second;
        if (rule.kind == arg_kind::flag) {
            if (inline_value) {
                result.error = fmt::format("{} takes no value", name);
                return result;
            }
        } else if (!inline_value) {
            if (i + 1 >= args.size()) {
                result.error = fmt::format("{} needs a value", name);
                return result;
            }
            value = args[++i];
        }
        if (std::string problem = store(result.options, name, rule, value); !problem.empty()) {
            result.error = problem;
            return result;
        }
    }
    result.error = check_consistency(result.options);
    return result;
}

}  // namespace vl1::render_tool
