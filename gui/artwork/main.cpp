// hueloom-artwork: draws the editor's pictures at build time into the bundle's Resources,
// so that no binary image lives in the repository, and optionally a contact sheet of them.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

#include "gui/artwork/artwork.h"
#include "gui/artwork/contact_sheet.h"
#include "gui/artwork/paint.h"

namespace {

constexpr int exit_ok = 0;
constexpr int exit_failure = 1;
constexpr int exit_usage = 2;

constexpr std::string_view usage_text =
    "Usage: hueloom-artwork OUT_FOLDER [--sheet SHEET.png]\n"
    "\n"
    "Draws every picture of the editor as PNG into OUT_FOLDER (made if missing), at two\n"
    "pixels per point. With --sheet, also writes a contact sheet of all of them.\n";

namespace fs = std::filesystem;
using namespace vl1::artwork;

surface_ptr draw_picture(const picture& p)
{
    surface_ptr surface = make_surface(p.width_px, p.height_px);
    const context_ptr cr = make_context(surface.get());
    p.draw(cr.get());
    if (cairo_status(cr.get()) != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("drawing " + p.file_name + " failed: " + cairo_status_to_string(cairo_status(cr.get())));
    return surface;
}

int run(int argc, char** argv)
{
    if (argc == 2 && (std::string_view(argv[1]) == "--help" || std::string_view(argv[1]) == "-h")) {
        std::fputs(usage_text.data(), stdout);
        return exit_ok;
    }
    if ((argc != 2 && argc != 4) || (argc == 4 && std::string_view(argv[2]) != "--sheet")) {
        std::fputs(usage_text.data(), stderr);
        return exit_usage;
    }
    const fs::path folder = argv[1];
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw std::runtime_error("cannot make the folder " + folder.string() + ": " + error.message());

    picture_set drawn;
    for (const picture& p : all_pictures()) {
        surface_ptr surface = draw_picture(p);
        write_png(surface.get(), folder / p.file_name);
        drawn.emplace(p.file_name, std::move(surface));
    }
    std::printf("hueloom-artwork: wrote %zu pictures to %s\n", drawn.size(), folder.c_str());
    if (argc == 4) {
        write_contact_sheet(drawn, argv[3]);
        std::printf("hueloom-artwork: contact sheet %s\n", argv[3]);
    }
    return exit_ok;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "hueloom-artwork: %s\n", e.what());
        return exit_failure;
    }
}
