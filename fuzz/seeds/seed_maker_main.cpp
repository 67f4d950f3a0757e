// hueloom-fuzz-seeds OUT_DIR [TARGET...]: writes the made seeds of each target (all targets
// without a list) into OUT_DIR/<target>/, one file per seed.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "fuzz/harness/private_home.h"
#include "fuzz/seeds/seed_catalog.h"

namespace {

bool wanted(std::string_view target, int argc, char** argv)
{
    if (argc <= 2)
        return true;
    for (int i = 2; i < argc; ++i)
        if (std::string(argv[i]) == target)
            return true;
    return false;
}

int write_seeds(const std::filesystem::path& out_dir, int argc, char** argv)
{
    for (const std::string_view target : vl1::fuzz::targets_with_generated_seeds()) {
        if (!wanted(target, argc, argv))
            continue;
        const std::filesystem::path dir = out_dir / target;
        std::filesystem::create_directories(dir);
        for (const vl1::fuzz::named_seed& seed : vl1::fuzz::generated_seeds(target)) {
            std::ofstream file(dir / seed.name, std::ios::binary | std::ios::trunc);
            file.write(reinterpret_cast<const char*>(seed.bytes.data()), static_cast<std::streamsize>(seed.bytes.size()));
            if (!file) {
                std::fprintf(stderr, "cannot write %s\n", (dir / seed.name).c_str());
                return 1;
            }
        }
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: hueloom-fuzz-seeds OUT_DIR [TARGET...]\n");
        return 2;
    }
    if (!vl1::fuzz::use_private_home()) {
        std::fprintf(stderr, "cannot make a private HOME\n");
        return 1;
    }
    try {
        return write_seeds(argv[1], argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "hueloom-fuzz-seeds: %s\n", e.what());
        return 1;
    }
}
