#include "fuzz/harness/scratch_dir.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace vl1::fuzz {

namespace {

class owned_dir {
public:
    owned_dir()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "hueloom-fuzz-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("cannot create a scratch folder below " + pattern);
        path = pattern;
    }
    ~owned_dir()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    owned_dir(const owned_dir&) = delete;
    owned_dir& operator=(const owned_dir&) = delete;

    std::filesystem::path path;
};

struct file_closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

}  // namespace

const std::filesystem::path& scratch_dir()
{
    static const owned_dir dir;
    return dir.path;
}

void write_scratch_file(const std::filesystem::path& path, const uint8_t* data, std::size_t size)
{
    std::unique_ptr<std::FILE, file_closer> file(std::fopen(path.c_str(), "wb"));
    if (!file || (size > 0 && std::fwrite(data, 1, size, file.get()) != size) || std::fflush(file.get()) != 0)
        throw std::runtime_error("cannot write the scratch file " + path.string());
}

}  // namespace vl1::fuzz
