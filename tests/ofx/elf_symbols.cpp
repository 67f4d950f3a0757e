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

std::vector<char> read_elf(const std::filesystem::path& path, Elf64_Ehdr& header)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot open " + path.string());
    std::vector<char> file((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    header = read_at<Elf64_Ehdr>(file, 0);
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64)
        throw std::runtime_error("not a 64-bit ELF file: " + path.string());
    return file;
}

std::string string_at(const std::vector<char>& file, size_t at)
{
    if (at >= file.size())
        throw std::runtime_error("string beyond the end of the file");
    return std::string(file.data() + at, strnlen(file.data() + at, file.size() - at));
}

// Calls `each(file, entry offset, string table offset)` for every entry of the sections of
// `type`, whose entries are `entry_size` bytes.
template <typename F>
void for_each_entry(const std::filesystem::path& path, uint32_t type, size_t entry_size, F each)
{
    Elf64_Ehdr header;
    const std::vector<char> file = read_elf(path, header);
    for (unsigned s = 0; s < header.e_shnum; ++s) {
        const auto section = read_at<Elf64_Shdr>(file, header.e_shoff + size_t(s) * header.e_shentsize);
        if (section.sh_type != type)
            continue;
        const auto strings = read_at<Elf64_Shdr>(file, header.e_shoff + size_t(section.sh_link) * header.e_shentsize);
        for (size_t i = 0; i < section.sh_size / entry_size; ++i)
            each(file, section.sh_offset + i * entry_size, strings.sh_offset);
    }
}

}  // namespace

std::vector<std::string> needed_libraries(const std::filesystem::path& path)
{
    std::vector<std::string> names;
    for_each_entry(path, SHT_DYNAMIC, sizeof(Elf64_Dyn), [&](const std::vector<char>& file, size_t at, size_t strings) {
        const auto entry = read_at<Elf64_Dyn>(file, at);
        if (entry.d_tag == DT_NEEDED)
            names.push_back(string_at(file, strings + entry.d_un.d_val));
    });
    return names;
}

std::vector<std::string> exported_symbols(const std::filesystem::path& path)
{
    std::vector<std::string> names;
    for_each_entry(path, SHT_DYNSYM, sizeof(Elf64_Sym), [&](const std::vector<char>& file, size_t at, size_t strings) {
        const auto symbol = read_at<Elf64_Sym>(file, at);
        const int binding = ELF64_ST_BIND(symbol.st_info);
        if (symbol.st_shndx != SHN_UNDEF && (binding == STB_GLOBAL || binding == STB_WEAK))
            names.push_back(string_at(file, strings + symbol.st_name));
    });
    return names;
}

}  // namespace hueloom_test
