#include "validate/elf.h"

#include <elf.h>
#include <link.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>

namespace vrltool::validate {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Dynamic = ElfW(Dyn);
using Symbol = ElfW(Sym);

struct Magic {
    std::string start;
    char const* what;
    char const* cure;
};

/// What is met in the place of a plug-in.
Magic const* otherFormat(std::string const& bytes) {
    static Magic const formats[] = {
        {"MZ", "is a Windows library", "build the plug-in for this system"},
        {"\xCF\xFA\xED\xFE", "is a macOS library", "build the plug-in for this system"},
        {"!<arch>\n", "is a static archive", "build a shared module, such as vrl_add_plugin makes"},
        {"#!", "is a script", "give the plug-in that it makes"}};
    for (Magic const& format : formats)
        if (bytes.compare(0, format.start.size(), format.start) == 0) return &format;
    return nullptr;
}

std::string machineName(unsigned number) {
    struct Name {
        unsigned number;
        char const* text;
    };
    static Name const names[] = {{EM_386, "x86"},         {EM_X86_64, "x86-64"}, {EM_ARM, "ARM"},
                                 {EM_AARCH64, "AArch64"}, {EM_PPC64, "PowerPC"}, {EM_S390, "S/390"},
                                 {EM_RISCV, "RISC-V"},    {EM_MIPS, "MIPS"},     {258, "LoongArch"}};
    for (Name const& name : names)
        if (name.number == number) return name.text;
    return "machine " + std::to_string(number);
}

/// The class, the order of the bytes and the machine, which stand at the same places in every file.
std::string machineOf(std::string const& bytes) {
    bool const bigEndian = bytes[EI_DATA] == ELFDATA2MSB;
    auto const first = static_cast<unsigned char>(bytes[18]);
    auto const second = static_cast<unsigned char>(bytes[19]);
    unsigned const number = bigEndian ? first * 256U + second : second * 256U + first;
    std::string const bits = bytes[EI_CLASS] == ELFCLASS32 ? "32" : "64";
    return machineName(number) + ", " + bits + " bits" + (bigEndian ? ", big-endian" : "");
}

constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
constexpr unsigned char kOwnOrder = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB;

/// The parts of one file; whatever lies outside of it is nothing.
class Parser {
public:
    explicit Parser(std::string const& all) : bytes(all) {}

    template <class T>
    std::optional<T> at(std::uint64_t offset) const {
        if (offset > bytes.size() || bytes.size() - offset < sizeof(T)) return std::nullopt;
        T value;
        std::memcpy(&value, bytes.data() + offset, sizeof value);
        return value;
    }

    /// Reads the segments. False if one lacks bytes of the file.
    bool readSegments(Header const& header) {
        for (unsigned i = 0; i < header.e_phnum; ++i) {
            auto const segment = at<Segment>(header.e_phoff + std::uint64_t{i} * sizeof(Segment));
            if (!segment || segment->p_offset > bytes.size() || segment->p_filesz > bytes.size() - segment->p_offset)
                return false;
            segments.push_back(*segment);
        }
        return true;
    }

    /// Reads the dynamic section. False if there is none, or none that ends.
    bool readDynamic() {
        for (Segment const& segment : segments) {
            if (segment.p_type != PT_DYNAMIC) continue;
            for (std::uint64_t done = 0; done + sizeof(Dynamic) <= segment.p_filesz; done += sizeof(Dynamic)) {
                entries.push_back(*at<Dynamic>(segment.p_offset + done));
                if (entries.back().d_tag == DT_NULL) return true;
            }
        }
        return false;
    }

    std::optional<std::uint64_t> value(std::int64_t tag) const {
        for (Dynamic const& entry : entries)
            if (entry.d_tag == tag) return entry.d_un.d_val;
        return std::nullopt;
    }

    std::vector<std::string> texts(std::int64_t tag) const {
        std::vector<std::string> found;
        for (Dynamic const& entry : entries)
            if (entry.d_tag == tag) found.push_back(text(entry.d_un.d_val));
        return found;
    }

    /// A text of the table of strings; empty if it lies outside of the file.
    std::string text(std::uint64_t index) const {
        auto const table = offsetOf(value(DT_STRTAB).value_or(0));
        if (!table || index > bytes.size() - *table) return {};
        auto const start = static_cast<std::size_t>(*table + index);
        auto const end = bytes.find('\0', start);
        return end == std::string::npos ? std::string() : bytes.substr(start, end - start);
    }

    /// The names that the file defines for others. False if the table of symbols does not fit the file.
    bool exportedNames(std::vector<ElfSymbol>& names) const {
        auto const table = offsetOf(value(DT_SYMTAB).value_or(0));
        auto const count = symbolCount();
        if (!table || !count || *count > bytes.size() / sizeof(Symbol)) return false;
        for (std::uint64_t i = 1; i < *count; ++i) {
            auto const symbol = at<Symbol>(*table + i * sizeof(Symbol));
            if (!symbol) return false;
            if (symbol->st_shndx == SHN_UNDEF || ELF64_ST_BIND(symbol->st_info) == STB_LOCAL) continue;
            if (ELF64_ST_VISIBILITY(symbol->st_other) == STV_HIDDEN) continue;
            unsigned const type = ELF64_ST_TYPE(symbol->st_info);
            names.push_back({text(symbol->st_name), type == STT_FUNC || type == STT_GNU_IFUNC});
        }
        return true;
    }

private:
    /// Where an address of the loaded library stands in the file.
    std::optional<std::uint64_t> offsetOf(std::uint64_t address) const {
        for (Segment const& segment : segments)
            if (segment.p_type == PT_LOAD && address >= segment.p_vaddr && address - segment.p_vaddr < segment.p_filesz)
                return segment.p_offset + (address - segment.p_vaddr);
        return std::nullopt;
    }

    // The number of symbols stands in neither table of symbols nor dynamic section: the table for looking names up
    // tells.
    std::optional<std::uint64_t> symbolCount() const {
        if (auto const address = value(DT_HASH))
            if (auto const table = offsetOf(*address))
                if (auto const chains = at<std::uint32_t>(*table + 4)) return *chains;
        auto const address = value(DT_GNU_HASH);
        auto const table = address ? offsetOf(*address) : std::nullopt;
        return table ? lastHashed(*table) : std::nullopt;
    }

    /// Head (buckets, first symbol, words of the filter, shift), filter, buckets, chains; the last of a chain is odd.
    std::optional<std::uint64_t> lastHashed(std::uint64_t table) const {
        auto const buckets = at<std::uint32_t>(table);
        auto const firstHashed = at<std::uint32_t>(table + 4);
        auto const words = at<std::uint32_t>(table + 8);
        if (!buckets || !firstHashed || !words) return std::nullopt;
        std::uint64_t const bucketTable = table + 16 + std::uint64_t{*words} * sizeof(ElfW(Addr));
        std::uint64_t last = 0;
        for (std::uint64_t i = 0; i < *buckets; ++i) {
            auto const start = at<std::uint32_t>(bucketTable + i * 4);
            if (!start) return std::nullopt;
            last = std::max<std::uint64_t>(last, *start);
        }
        if (last < *firstHashed) return *firstHashed;
        std::uint64_t const chains = bucketTable + std::uint64_t{*buckets} * 4;
        for (;; ++last) {
            auto const hash = at<std::uint32_t>(chains + (last - *firstHashed) * 4);
            if (!hash) return std::nullopt;
            if (*hash & 1U) return last + 1;
        }
    }

    std::string const& bytes;
    std::vector<Segment> segments;
    std::vector<Dynamic> entries;
};

std::vector<std::string> foldersOf(Parser const& parser) {
    std::vector<std::string> folders;
    auto lists = parser.texts(DT_RUNPATH);
    if (lists.empty()) lists = parser.texts(DT_RPATH);
    for (std::string const& list : lists)
        for (std::size_t start = 0; start <= list.size();) {
            auto const end = std::min(list.find(':', start), list.size());
            if (end > start) folders.push_back(list.substr(start, end - start));
            start = end + 1;
        }
    return folders;
}

ElfFile& fail(ElfFile& file, std::string const& error, std::string const& cure) {
    file.error = error;
    file.cure = cure;
    return file;
}

ElfFile& failTooShort(ElfFile& file) {
    return fail(file, "is cut short: parts that its headers name are missing", "take a whole copy, or build it again");
}

char const* otherType(unsigned type) {
    return type == ET_REL ? "is an object file" : type == ET_EXEC ? "is a program" : "is no shared library";
}

void readTables(ElfFile& file, std::string const& bytes, Header const& header) {
    Parser parser(bytes);
    if (!parser.readSegments(header)) return static_cast<void>(failTooShort(file));
    if (!parser.readDynamic() || !parser.exportedNames(file.exported))
        return static_cast<void>(fail(file, "has no table of the names that it exports", "build it again"));
    auto const names = parser.texts(DT_SONAME);
    file.soname = names.empty() ? "" : names.front();
    file.needed = parser.texts(DT_NEEDED);
    file.folders = foldersOf(parser);
    std::sort(file.exported.begin(), file.exported.end(),
              [](ElfSymbol const& a, ElfSymbol const& b) { return a.name < b.name; });
}

}  // namespace

ElfFile parseElf(std::string const& bytes) {
    ElfFile file;
    if (Magic const* other = otherFormat(bytes)) return fail(file, other->what, other->cure);
    if (bytes.compare(0, SELFMAG, ELFMAG) != 0)
        return fail(file, "is no shared library", "give the file that the linker wrote, lib_wn_NAME.so.VERSION");
    if (bytes.size() < 20) return failTooShort(file);
    file.machine = machineOf(bytes);
    if (bytes[EI_CLASS] != kOwnClass || bytes[EI_DATA] != kOwnOrder) return file;
    auto const header = Parser(bytes).at<Header>(0);
    if (!header) return failTooShort(file);
    if (header->e_type != ET_DYN)
        return fail(file, otherType(header->e_type), "build a shared module, such as vrl_add_plugin makes");
    if (header->e_phentsize != sizeof(Segment))
        return fail(file, "has a table of its parts that cannot be read", "build it again");
    readTables(file, bytes, *header);
    return file;
}

ElfFile readElf(std::string const& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return parseElf(bytes.str());
}

}  // namespace vrltool::validate
