#include "design/design.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <utility>

#include "guard/foreign_work.h"
#include "host/loads.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

using What = MissingKind::What;

/// Sends std::cerr into a text while it lives: the library's words on a failed read say less than ours.
class CapturedErrors {
public:
    CapturedErrors() : kept(std::cerr.rdbuf(text.rdbuf())) {}
    CapturedErrors(CapturedErrors const&) = delete;
    CapturedErrors& operator=(CapturedErrors const&) = delete;
    ~CapturedErrors() { std::cerr.rdbuf(kept); }

private:
    std::ostringstream text;
    std::streambuf* kept;
};

template <class T>
void own(Design& design, T* object) {
    design.owner = std::shared_ptr<void>(object, [](void* whole) { vrl::ptr_destroy(static_cast<T*>(whole)); });
}

void hold(Design& design, vrl::BB* block) {
    own(design, block);
    design.block = block;
    design.list = block;
    design.notes = block;
    if (auto* const composite = dynamic_cast<vrl::CBB*>(block)) design.netlist = composite->getAsNetlist();
}

void hold(Design& design, vrl::Netlist* netlist) {
    own(design, netlist);
    design.netlist = netlist;
    design.list = netlist;
    design.notes = netlist;
}

void hold(Design& design, vrl::Attribute* attribute) {
    own(design, attribute);
    design.parameter = attribute;
    design.notes = attribute;
}

void hold(Design& design, vrl::Attributes* list) {
    own(design, list);
    design.list = list;
    design.notes = list;
}

/// The ids of the members of the top object, by which an object of an unknown type shows what it is.
std::set<std::string> memberIds(std::istream& file) {
    vrl::BinaryStreamDeSerialiser reader(file);
    std::set<std::string> ids;
    unsigned count = 0;
    std::string type;
    int version = 0;
    reader.beginCompAttribute(&type, &version, nullptr);
    reader.readNumberAttributes(count);
    std::string id;
    while (count-- > 0 && reader.readSerialisationId(id)) {
        ids.insert(id);
        if (reader.skipAttribute()) break;
    }
    file.clear();
    file.seekg(0);
    return ids;
}

/// An object for a type that no factory has and no class of the library is.
bool standInByMembers(Design& design, StandInReader& reader, std::set<std::string> const& ids) {
    if (ids.count(vrl::BB::getSerId("defaultCS")))
        hold(design, reader.standInForBlock(design.type));
    else if (ids.count(vrl::Netlist::getSerId("BBList")))
        hold(design, reader.standInForNetlist(design.type));
    else if (ids.count(vrl::AttributeWithExpr::getSerId("expr")))
        hold(design, reader.standInForParameter(design.type));
    else
        return false;
    return true;
}

/// The object that the file's type asks for. False if there is no such type.
bool makeObject(Design& design, StandInReader& reader, std::istream& file) {
    std::string const& type = design.type;
    ForeignWork const work(makingText("kind", type));
    if (type == "Netlist")
        hold(design, vrl::Netlist::create(""));
    else if (FactoryLoader<vrl::BB>::factory().find(type))
        hold(design, vrl::BB::create(nullptr, type));
    else if (vrl::Attributes::factory().find(type))
        hold(design, vrl::Attributes::factory().create(type));
    else if (FactoryLoader<vrl::Netlist>::factory().find(type))
        hold(design, vrl::Netlist::create(type));
    else if (type == "Attributes")
        hold(design, new vrl::Attributes);
    else if (type == "Component")
        hold(design, static_cast<vrl::Attributes*>(new vrlEmptyComponent));
    else if (type == "Annotations")
        own(design, design.notes = new vrl::Annotations);
    else if (type == "Foundry::CSInfo")
        own(design, design.choice = new vrl::Foundry::CSInfo(nullptr));
    else if (type == "BB::Port")
        own(design, design.port = new vrl::BB::Port);
    else
        return standInByMembers(design, reader, memberIds(file));
    return design.owner != nullptr;
}

bool read(Design& design, vrl::DeSerialiserBase& reader) {
    if (design.block && design.netlist) return dynamic_cast<vrl::CBB*>(design.block)->read(&reader);
    if (design.block) return design.block->read(&reader);
    if (design.netlist) return design.netlist->read(&reader);
    if (design.parameter) return design.parameter->read(&reader);
    if (design.list) return design.list->read(&reader);
    if (design.notes) return design.notes->read(&reader);
    return design.choice ? design.choice->read(&reader) : design.port->read(&reader);
}

/// A pipe would keep its reader waiting, and a device may never end.
void needRegularFile(std::string const& path) {
    std::error_code error;
    auto const status = std::filesystem::status(path, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw Failure(path, "is not a regular file", "give the path of a saved design");
}

std::ifstream openDesign(std::string const& path) {
    needRegularFile(path);
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path, "cannot be opened", "give the path of a saved design");
    if (file.peek() == std::ifstream::traits_type::eof())
        throw Failure(path, file.bad() ? "cannot be read" : "is empty", "give the path of a saved design");
    return file;
}

[[noreturn]] void failNoDesign(std::string const& path) {
    throw Failure(path, "is not a saved design",
                  "saved designs begin with the bytes 3D 40 and the kind of their object");
}

[[noreturn]] void failDamaged(std::string const& path, std::istream& file, std::string const& where) {
    bool const ended = file.eof();
    file.clear();
    std::string const place = where.empty() ? "" : " in " + printable(where);
    if (ended) throw Failure(path, "ends too early" + place, "the file was cut short: take a whole copy");
    throw Failure(path, "cannot be read: damaged near byte " + std::to_string(file.tellg()) + place,
                  "it may be damaged, or written by another version of a plug-in; 'vrl plugins' shows what is loaded");
}

std::size_t bytesLeft(std::istream& file) {
    auto const here = file.tellg();
    file.seekg(0, std::ios::end);
    return static_cast<std::size_t>(file.tellg() - here);
}

/// What stands in for a block of a missing kind is a composite, whatever the block was; it is shown as one only if it
/// has an inside.
void printBlock(std::ostream& os, vrl::BB const& block, vrl::Netlist const* inside) {
    block.vrl::BB::operator<<(os);
    if (inside && (!isStandIn(block) || inside->beginElements() != inside->endElements()))
        inside->vrl::Netlist::operator<<(os);
}

void printNotes(std::ostream& os, vrl::Annotations const& notes) {
    for (auto note = notes.beginAnnotation(); note != notes.endAnnotation(); ++note)
        os << note->first << " = " << note->second << '\n';
}

void printChoice(std::ostream& os, vrl::Foundry::CSInfo const& choice) {
    os << "cross section: " << choice.getCSName() << "\nprocess flow: " << choice.getFlowName() << '\n';
}

/// The one foundry of a name; null for an unknown one. They live as long as the process, since blocks refer to them.
vrl::Foundry* foundryOf(std::string const& name) {
    static auto* const foundries = new std::map<std::string, vrl::Foundry*>;
    auto const found = foundries->find(name);
    if (found != foundries->end()) return found->second;
    return foundries->emplace(name, vrl::Foundry::create(name)).first->second;
}

char const* word(What what) {
    switch (what) {
    case What::kBlock:
        return "block";
    case What::kParameter:
        return "parameter type";
    case What::kNetlist:
        return "netlist";
    }
    return "";
}

void writeMissing(std::ostream& os, Design const& design) {
    for (MissingKind const& kind : design.missing)
        os << "vrl: " << design.path << ": no loaded plug-in has the " << word(kind.what) << " '"
           << printable(kind.name) << "' (" << counted(kind.count, "use") << "); something stands in for it\n";
}

/// The system's words begin with the path as often as not.
void writeFailedLibraries(std::ostream& os) {
    auto const failed = failedLibraries();
    for (FailedLibrary const& library : failed) {
        std::string const head = library.path + ": ";
        bool const named = library.reason.compare(0, head.size(), head) == 0;
        os << "  not loaded: " << (named ? "" : head) << library.reason << '\n';
    }
    if (failed.empty()) os << "  'vrl plugins' shows what is loaded\n";
}

}  // namespace

// Notes and choices have no printed form in the library, and a saved port has no name.
void Design::print(std::ostream& os) const {
    if (netlist && !block)
        netlist->operator<<(os);
    else if (block)
        printBlock(os, *block, netlist);
    else if (parameter)
        parameter->operator<<(os) << '\n';
    else if (list)
        list->operator<<(os);
    else if (notes)
        printNotes(os, *notes);
    else if (choice)
        printChoice(os, *choice);
    else if (port)
        printChoice(os, port->getCS());
}

bool Design::write(vrl::SerialiserBase& serialiser) const {
    if (block && netlist) return dynamic_cast<vrl::CBB*>(block)->write(&serialiser);
    if (block) return block->write(&serialiser);
    if (netlist) return netlist->write(&serialiser);
    if (parameter) return parameter->write(&serialiser);
    if (list) return list->write(&serialiser);
    if (notes) return notes->write(&serialiser);
    return choice ? choice->write(&serialiser) : port->write(&serialiser);
}

Design readDesign(std::string const& path) {
    Design design;
    design.path = path;
    std::ifstream file = openDesign(path);
    char head[2] = {};
    file.read(head, 2).seekg(0);
    if (head[0] != '=' || head[1] != '@') failNoDesign(path);

    Progress progress("reading", "blocks");
    StandInReader reader(file, progress);
    reader.previewType(design.type);
    if (design.type.empty()) failNoDesign(path);
    if (!makeObject(design, reader, file))
        throw Failure(path, "holds a '" + printable(design.type) + "', which no loaded plug-in makes",
                      "load the plug-in that brings it; 'vrl plugins' shows what is loaded");
    CapturedErrors const quiet;
    if (!read(design, reader) || !file) failDamaged(path, file, reader.where());
    design.missing = reader.missing();
    design.bytesBehind = bytesLeft(file);
    return design;
}

vrl::Netlist& circuitOf(Design const& design) {
    if (design.netlist) return *design.netlist;
    throw Failure(design.path, "holds a '" + printable(design.type) + "' and no circuit",
                  "'vrl show' shows what it holds");
}

void attachFoundry(vrl::BB& block) {
    std::string const name = block.getFoundryName();
    if (!name.empty()) block.setFoundry(foundryOf(name));
}

void prepareWhole(vrl::Netlist& netlist) {
    for (auto entry = netlist.beginElements(); entry != netlist.endElements(); ++entry) {
        vrl::BB* const block = entry->second.get();
        if (!block) continue;
        attachFoundry(*block);
        if (auto* const composite = dynamic_cast<vrl::CBB*>(block)) prepareWhole(*composite->getAsNetlist());
    }
}

std::string missingText(Design const& design) {
    std::ostringstream text;
    writeMissing(text, design);
    if (!design.missing.empty()) writeFailedLibraries(text);
    return text.str();
}

std::string missingText(Design const& a, Design const& b) {
    std::ostringstream text;
    writeMissing(text, a);
    writeMissing(text, b);
    if (!a.missing.empty() || !b.missing.empty()) writeFailedLibraries(text);
    return text.str();
}

}  // namespace vrltool
