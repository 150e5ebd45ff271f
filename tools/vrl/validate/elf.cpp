#include "validate/elf.h"

#include <elf.h>
#include <gelf.h>
#include <libelf.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace vrltool::validate {

namespace {

struct Magic {
    std::string start;
    char const* what;
    char const* hint;
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

/// The class, the order of the bytes and the machine, which are at the same offsets in every file.
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

/// A file in memory, opened with libelf, which checks every offset against its end.
class Elf {
public:
    explicit Elf(std::string const& bytes) : copy(bytes) {
        elf_version(EV_CURRENT);
        handle.reset(elf_memory(copy.data(), copy.size()));
    }

    bool isRead() const { return handle && elf_kind(handle.get()) == ELF_K_ELF && gelf_getehdr(handle.get(), &head); }
    GElf_Ehdr const& header() const { return head; }

    /// Whether the file contains every segment whole.
    bool hasSegments() const {
        std::size_t count = 0;
        if (elf_getphdrnum(handle.get(), &count) != 0) return false;
        for (std::size_t i = 0; i < count; ++i) {
            GElf_Phdr segment;
            if (!gelf_getphdr(handle.get(), static_cast<int>(i), &segment)) return false;
            if (segment.p_offset > copy.size() || segment.p_filesz > copy.size() - segment.p_offset) return false;
        }
        return true;
    }

    /// The first section of a type, with the size of its entries; null without one.
    Elf_Scn* section(unsigned type, GElf_Shdr& found) const {
        Elf_Scn* at = nullptr;
        while ((at = elf_nextscn(handle.get(), at)))
            if (gelf_getshdr(at, &found) && found.sh_type == type && found.sh_entsize != 0) return at;
        return nullptr;
    }

    /// A string of the table that a section refers to; empty if it is outside of it.
    std::string string(GElf_Shdr const& section, std::size_t offset) const {
        char const* const text = elf_strptr(handle.get(), section.sh_link, offset);
        return text ? text : "";
    }

private:
    struct End {
        void operator()(::Elf* elf) const { elf_end(elf); }
    };
    std::string copy;  // libelf may write into it
    std::unique_ptr<::Elf, End> handle;
    mutable GElf_Ehdr head{};
};

/// The names that the file defines for others. False if it has no table of them.
bool readExported(Elf const& elf, std::vector<ElfSymbol>& names) {
    GElf_Shdr header;
    Elf_Scn* const section = elf.section(SHT_DYNSYM, header);
    Elf_Data* const data = section ? elf_getdata(section, nullptr) : nullptr;
    if (!data) return false;
    for (int i = 1; static_cast<GElf_Xword>(i) < header.sh_size / header.sh_entsize; ++i) {
        GElf_Sym symbol;
        if (!gelf_getsym(data, i, &symbol)) return false;
        if (symbol.st_shndx == SHN_UNDEF || GELF_ST_BIND(symbol.st_info) == STB_LOCAL) continue;
        if (GELF_ST_VISIBILITY(symbol.st_other) == STV_HIDDEN) continue;
        unsigned const type = GELF_ST_TYPE(symbol.st_info);
        names.push_back({elf.string(header, symbol.st_name), type == STT_FUNC || type == STT_GNU_IFUNC});
    }
    return true;
}

/// What the dynamic section names under a tag.
using DynamicStrings = std::multimap<GElf_Sxword, std::string>;

/// False if there is no dynamic section, or none that ends.
bool readDynamic(Elf const& elf, DynamicStrings& strings) {
    GElf_Shdr header;
    Elf_Scn* const section = elf.section(SHT_DYNAMIC, header);
    Elf_Data* const data = section ? elf_getdata(section, nullptr) : nullptr;
    GElf_Dyn entry;
    for (int i = 0; data && gelf_getdyn(data, i, &entry); ++i) {
        if (entry.d_tag == DT_NULL) return true;
        if (entry.d_tag == DT_NEEDED || entry.d_tag == DT_SONAME || entry.d_tag == DT_RPATH ||
            entry.d_tag == DT_RUNPATH)
            strings.emplace(entry.d_tag, elf.string(header, entry.d_un.d_val));
    }
    return false;
}

std::vector<std::string> stringsOf(DynamicStrings const& strings, GElf_Sxword tag) {
    std::vector<std::string> found;
    auto const range = strings.equal_range(tag);
    for (auto at = range.first; at != range.second; ++at) found.push_back(at->second);
    return found;
}

std::vector<std::string> foldersOf(DynamicStrings const& strings) {
    std::vector<std::string> folders;
    auto lists = stringsOf(strings, DT_RUNPATH);
    if (lists.empty()) lists = stringsOf(strings, DT_RPATH);
    for (std::string const& list : lists) {
        std::istringstream parts(list);
        for (std::string folder; std::getline(parts, folder, ':');)
            if (!folder.empty()) folders.push_back(folder);
    }
    return folders;
}

ElfFile& fail(ElfFile& file, std::string const& error, std::string const& hint) {
    file.error = error;
    file.hint = hint;
    return file;
}

ElfFile& failTooShort(ElfFile& file) {
    return fail(file, "is cut short: parts that its headers name are missing", "take a whole copy, or build it again");
}

char const* otherType(unsigned type) {
    return type == ET_REL ? "is an object file" : type == ET_EXEC ? "is a program" : "is no shared library";
}

void readTables(ElfFile& file, Elf const& elf) {
    DynamicStrings strings;
    if (!elf.hasSegments()) return static_cast<void>(failTooShort(file));
    if (!readDynamic(elf, strings) || !readExported(elf, file.exported))
        return static_cast<void>(fail(file, "has no table of the names that it exports", "build it again"));
    auto const names = stringsOf(strings, DT_SONAME);
    file.soname = names.empty() ? "" : names.front();
    file.needed = stringsOf(strings, DT_NEEDED);
    file.folders = foldersOf(strings);
    std::sort(file.exported.begin(), file.exported.end(),
              [](ElfSymbol const& a, ElfSymbol const& b) { return a.name < b.name; });
}

}  // namespace

ElfFile parseElf(std::string const& bytes) {
    ElfFile file;
    if (Magic const* other = otherFormat(bytes)) return fail(file, other->what, other->hint);
    if (bytes.compare(0, SELFMAG, ELFMAG) != 0)
        return fail(file, "is no shared library", "give the file that the linker wrote, lib_wn_NAME.so.VERSION");
    if (bytes.size() < 20) return failTooShort(file);
    file.machine = machineOf(bytes);
    if (bytes[EI_CLASS] != kOwnClass || bytes[EI_DATA] != kOwnOrder) return file;
    Elf const elf(bytes);
    if (!elf.isRead()) return failTooShort(file);
    if (elf.header().e_type != ET_DYN)
        return fail(file, otherType(elf.header().e_type), "build a shared module, such as vrl_add_plugin makes");
    readTables(file, elf);
    return file;
}

ElfFile readElf(std::string const& path) {
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return parseElf(bytes.str());
}

}  // namespace vrltool::validate
