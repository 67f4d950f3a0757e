#include "tests/ofx/elf_symbols.h"

#include <elf.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace hueloom_test {

namespace {

template <typename T>
T read_at(const std::vector<char>& file, size_t offset)
{
    if (offset + sizeof(T) > file.size())
        throw std::runtime_error("ELF structure lies beyond the end of the file");
    T value;
    std::memcpy(&value, file.data() + offset, sizeof(T));
    return value;
}

}  // namespace

std::vector<std::string> exported_symbols(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot open " + path.string());
    const std::vector<char> file((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());

    const auto header = read_at<Elf64_Ehdr>(file, 0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64)
        throw std::runtime_error("not a 64-bit ELF file: " + path.string());

    std::vector<std::string> names;
    for (unsigned s = 0; s < header.e_shnum; ++s) {
        const auto section = read_at<Elf64_Shdr>(file, header.e_shoff + size_t(s) * header.e_shentsize);
        if (section.sh_type != SHT_DYNSYM)
            continue;
        const auto strings = read_at<Elf64_Shdr>(file, header.e_shoff + size_t(section.sh_link) * header.e_shentsize);
        const size_t count = section.sh_size / sizeof(Elf64_Sym);
        for (size_t i = 0; i < count; ++i) {
            const auto symbol = read_at<Elf64_Sym>(file, section.sh_offset + i * sizeof(Elf64_Sym));
            const int binding = ELF64_ST_BIND(symbol.st_info);
            if (symbol.st_shndx == SHN_UNDEF || (binding != STB_GLOBAL && binding != STB_WEAK))
                continue;
            const size_t name_at = strings.sh_offset + symbol.st_name;
            if (name_at >= file.size())
                throw std::runtime_error("symbol name beyond the end of the file");
            names.emplace_back(file.data() + name_at, strnlen(file.data() + name_at, file.size() - name_at));
        }
    }
    return names;
}

}  // namespace hueloom_test
