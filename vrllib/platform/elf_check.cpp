#include "vrllib/platform/elf_check.h"

#include <algorithm>
#include <cstring>

#include <elf.h>
#include <link.h>

#include "vrllib/platform/posix_file.h"

namespace Vorlane_v1_0::platform {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Section = ElfW(Shdr);
using Dynamic = ElfW(Dyn);

constexpr std::uint64_t kMostDynamic = 65536;  // entries; real tables have a few dozen
constexpr std::uint64_t kLongestName = 4096;

/// A run of bytes in a file of a given size.
bool isWithin(std::uint64_t offset, std::uint64_t length, std::uint64_t size) {
    return offset <= size && length <= size - offset;
}

/// Reads one library file; each step returns whether the file is sound so far.
class ElfReader {
public:
    ElfReader(File const& opened, std::uint64_t fileSize) : file(opened), size(fileSize) {}

    bool isLibraryOfThisMachine();
    bool hasItsSegments();
    bool hasRoomForSections() const;
    bool hasNamesOfSections() const;
    bool hasItsDynamicTable();
    void readNames(ElfCheck& result) const;

private:
    /// Where an address of the mapped library is in the file, with the bytes that follow there; false if nowhere.
    bool locate(std::uint64_t address, std::uint64_t length, std::uint64_t& offset) const;
    std::uint64_t value(std::int64_t tag) const;
    bool hasTable(std::int64_t addressTag, std::int64_t sizeTag) const;
    std::string nameAt(std::uint64_t offset) const;

    File const& file;
    std::uint64_t size;
    Header header{};
    std::vector<Segment> segments;
    std::vector<Dynamic> dynamic;
};

bool ElfReader::isLibraryOfThisMachine() {
    constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    return file.readAt(0, &header, sizeof header) && std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == kClass && header.e_phentsize == sizeof(Segment) && header.e_type == ET_DYN;
}

bool ElfReader::hasItsSegments() {
    segments.resize(header.e_phnum);
    if (!file.readAt(header.e_phoff, segments.data(), segments.size() * sizeof(Segment))) return false;
    return std::all_of(segments.begin(), segments.end(), [&](Segment const& segment) {
        return segment.p_type != PT_LOAD || isWithin(segment.p_offset, segment.p_filesz, size);
    });
}

bool ElfReader::hasRoomForSections() const {
    return isWithin(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize, size);
}

// The first section header is all zeros in a sound file; that of the names, mostly the last one, never is.
bool ElfReader::hasNamesOfSections() const {
    if (header.e_shnum == 0 || header.e_shentsize != sizeof(Section)) return true;
    if (header.e_shstrndx == SHN_UNDEF || header.e_shstrndx >= header.e_shnum) return true;
    Section names;
    return file.readAt(header.e_shoff + header.e_shstrndx * sizeof names, &names, sizeof names) &&
           names.sh_type == SHT_STRTAB;
}

bool ElfReader::hasItsDynamicTable() {
    auto const segment = std::find_if(segments.begin(), segments.end(),
                                      [](Segment const& candidate) { return candidate.p_type == PT_DYNAMIC; });
    if (segment == segments.end()) return true;  // the system says that it is no dynamic file
    std::uint64_t const count = segment->p_filesz / sizeof(Dynamic);
    if (!isWithin(segment->p_offset, segment->p_filesz, size) || count > kMostDynamic) return false;
    dynamic.resize(count);
    if (!file.readAt(segment->p_offset, dynamic.data(), count * sizeof(Dynamic))) return false;
    auto const end =
        std::find_if(dynamic.begin(), dynamic.end(), [](Dynamic const& entry) { return entry.d_tag == DT_NULL; });
    if (end == dynamic.end()) return false;
    dynamic.erase(end, dynamic.end());
    return hasTable(DT_STRTAB, DT_STRSZ) && hasTable(DT_SYMTAB, DT_SYMENT) &&
           (!value(DT_RELA) || hasTable(DT_RELA, DT_RELASZ)) && (!value(DT_REL) || hasTable(DT_REL, DT_RELSZ)) &&
           (!value(DT_JMPREL) || hasTable(DT_JMPREL, DT_PLTRELSZ)) &&
           (!value(DT_INIT_ARRAY) || hasTable(DT_INIT_ARRAY, DT_INIT_ARRAYSZ));
}

std::uint64_t ElfReader::value(std::int64_t tag) const {
    auto const found = std::find_if(dynamic.begin(), dynamic.end(),
                                    [tag](Dynamic const& entry) { return std::int64_t{entry.d_tag} == tag; });
    return found == dynamic.end() ? 0 : found->d_un.d_val;
}

bool ElfReader::hasTable(std::int64_t addressTag, std::int64_t sizeTag) const {
    std::uint64_t offset = 0;
    return value(addressTag) != 0 && locate(value(addressTag), value(sizeTag), offset);
}

bool ElfReader::locate(std::uint64_t address, std::uint64_t length, std::uint64_t& offset) const {
    for (Segment const& segment : segments) {
        if (segment.p_type != PT_LOAD || address < segment.p_vaddr) continue;
        std::uint64_t const distance = address - segment.p_vaddr;
        if (!isWithin(distance, length, segment.p_filesz)) continue;
        offset = segment.p_offset + distance;
        return true;
    }
    return false;
}

std::string ElfReader::nameAt(std::uint64_t offset) const {
    std::uint64_t const table = value(DT_STRTAB), tableSize = value(DT_STRSZ);
    std::uint64_t place = 0;
    if (offset >= tableSize || !locate(table, tableSize, place)) return {};
    std::string name(std::min(kLongestName, tableSize - offset), '\0');
    if (!file.readAt(place + offset, &name[0], name.size())) return {};
    name.resize(std::min(name.size(), name.find('\0')));
    return name;
}

void ElfReader::readNames(ElfCheck& result) const {
    for (Dynamic const& entry : dynamic) {
        if (entry.d_tag == DT_NEEDED) result.needed.push_back(nameAt(entry.d_un.d_val));
        if (entry.d_tag != DT_RUNPATH && entry.d_tag != DT_RPATH) continue;
        std::string const folders = nameAt(entry.d_un.d_val) + ":";
        for (std::size_t begin = 0, end = 0; (end = folders.find(':', begin)) != std::string::npos; begin = end + 1)
            if (end > begin) result.folders.push_back(folders.substr(begin, end - begin));
    }
}

}  // namespace

ElfCheck checkElf(File const& file, std::uint64_t size) {
    ElfCheck result;
    ElfReader reader(file, size);
    if (!reader.isLibraryOfThisMachine()) return result;  // the system refuses it by itself, and says why
    if (!reader.hasItsSegments() || !reader.hasRoomForSections())
        result.damage = "file too short";
    else if (!reader.hasNamesOfSections() || !reader.hasItsDynamicTable())
        result.damage = "file damaged";
    else
        reader.readNames(result);
    return result;
}

}  // namespace Vorlane_v1_0::platform
