#include "design/design.h"

#include <filesystem>
#include <fstream>
#include <set>

#include "guard/foreign_work.h"
#include "guard/hidden_output.h"
#include "guard/quiet_output.h"
#include "guard/second_try.h"
#include "host/loads.h"
#include "text/failure.h"
#include "text/table.h"

namespace vrltool {

namespace {

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
        design.object = SavedObject(reader.standInForBlock(design.type));
    else if (ids.count(vrl::Netlist::getSerId("BBList")))
        design.object = SavedObject(reader.standInForNetlist(design.type));
    else if (ids.count(vrl::AttributeWithExpr::getSerId("expr")))
        design.object = SavedObject(reader.standInForParameter(design.type));
    return static_cast<bool>(design.object);
}

/// The object that the file's type asks for. False if there is no such type.
bool makeObject(Design& design, StandInReader& reader, std::istream& file) {
    std::string const& type = design.type;
    ForeignWork const work(makingText("kind", type));
    if (type == "Netlist")
        design.object = SavedObject(vrl::Netlist::create(""));
    else if (FactoryLoader<vrl::BB>::factory().find(type))
        design.object = SavedObject(vrl::BB::create(nullptr, type));
    else if (vrl::Attributes::factory().find(type))
        design.object = SavedObject(vrl::Attributes::factory().create(type));
    else if (FactoryLoader<vrl::Netlist>::factory().find(type))
        design.object = SavedObject(vrl::Netlist::create(type));
    else if (type == "Attributes")
        design.object = SavedObject(new vrl::Attributes);
    else if (type == "Component")
        design.object = SavedObject(static_cast<vrl::Attributes*>(new vrlEmptyComponent));
    else if (type == "Annotations")
        design.object = SavedObject(new vrl::Annotations);
    else if (type == "Foundry::CSInfo")
        design.object = SavedObject(new vrl::Foundry::CSInfo(nullptr));
    else if (type == "BB::Port")
        design.object = SavedObject(new vrl::BB::Port);
    else
        return standInByMembers(design, reader, memberIds(file));
    return static_cast<bool>(design.object);
}

/// A pipe would keep its reader waiting, and a device may never end.
void needRegularFile(std::string const& path) {
    std::error_code error;
    auto const status = std::filesystem::status(path, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw Failure(path, "is not a regular file", "give the path of a saved design");
}

[[noreturn]] void failNoDesign(std::string const& path) {
    std::string const ending = std::filesystem::path(path).extension().string();
    bool const netlist = ending == ".yml" || ending == ".yaml" || ending == ".json";
    throw Failure(path, "is not a saved design",
                  netlist ? "'vrl import' makes a design of a netlist"
                          : "saved designs begin with the bytes 3D 40 and the kind of their object");
}

std::ifstream openDesign(std::string const& path) {
    needRegularFile(path);
    std::ifstream file(path, std::ios::binary);
    if (!file) throw Failure(path, "cannot be opened", "give the path of a saved design");
    if (file.peek() == std::ifstream::traits_type::eof())
        throw Failure(path, file.bad() ? "cannot be read" : "is empty", "give the path of a saved design");
    char head[2] = {};
    file.read(head, 2).seekg(0);
    if (head[0] != '=' || head[1] != '@') failNoDesign(path);
    return file;
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

/// Reads a netlist as the library does by itself, which is much faster than with stand-ins. False if anything is wrong,
/// which another reader is to report.
bool readAtOnce(Design& design) {
    std::ifstream file = openDesign(design.path);
    vrl::BinaryStreamDeSerialiser reader(file);
    reader.previewType(design.type);
    if (design.type != "Netlist") return false;
    SecondTry const second;
    if (second.isNow()) return false;
    HiddenOutput const hidden;
    try {
        design.object = SavedObject(vrl::Netlist::create(""));
        if (!design.object.read(reader) || !file) return false;
    } catch (...) {  // of a plug-in, which throws it again
        return false;
    }
    design.bytesAfter = bytesLeft(file);
    return true;
}

Design readWithStandIns(std::string const& path) {
    Design design;
    design.path = path;
    std::ifstream file = openDesign(path);
    Progress progress("reading", "blocks");
    StandInReader reader(file, progress);
    reader.previewType(design.type);
    if (design.type.empty()) failNoDesign(path);
    if (!makeObject(design, reader, file))
        throw Failure(path, "holds a '" + printable(design.type) + "', which no loaded plug-in makes",
                      "load the plug-in that brings it; 'vrl plugins' shows what is loaded");
    HiddenOutput const hidden;  // the library says less of a failed read than we do
    if (!design.object.read(reader) || !file) failDamaged(path, file, reader.where());
    design.missing = reader.missing();
    design.bytesAfter = bytesLeft(file);
    return design;
}

}  // namespace

Design readDesign(std::string const& path) {
    QuietOutput const quiet;  // constructors of plug-ins run
    {
        Design design;
        design.path = path;
        if (readAtOnce(design)) return design;
    }
    return readWithStandIns(path);
}

vrl::Netlist& circuitOf(Design const& design) {
    if (vrl::Netlist* const netlist = design.object.netlist()) return *netlist;
    throw Failure(design.path, "holds a '" + printable(design.type) + "' and no circuit",
                  "'vrl show' shows what it holds");
}

}  // namespace vrltool
