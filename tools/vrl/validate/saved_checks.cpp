#include <random>
#include <sstream>

#include "text/table.h"
#include "validate/made_objects.h"

// What is saved of the objects of a plug-in, and what reading does to them.

namespace vrltool::validate {

namespace {

constexpr std::size_t kTruncations = 4096;  // all of a usual block; of a longer one this many
constexpr unsigned kMutations = 200;
constexpr unsigned kRandomStreams = 50;

std::optional<std::string> bytesOf(MadeObject const& made) {
    std::ostringstream stream(std::ios::binary);
    vrl::BinaryStreamSerialiser writer(stream);
    return made.object.write(writer) ? std::optional<std::string>(stream.str()) : std::nullopt;
}

/// A netlist with one block of each kind, in order of the kinds.
MadeObject netlistOfAll(Keys const& keys) {
    auto* const netlist = vrl::Netlist::create("");
    MadeObject whole{SavedObject(netlist), netlist->getName()};
    for (std::string const& key : keys[kBlock]) {
        vrl::BB* const block = key.empty() ? nullptr : vrl::BB::create(nullptr, key);
        std::string const element = netlist->addBB(block);
        for (auto port = block ? block->beginPort() : vrl::BB::port_iterator(); block && port != block->endPort();
             ++port)
            if (!port->getName().getName().empty()) netlist->addNode(element, port->getName().getName());
    }
    return whole;
}

Maker makerOfAll(Keys const& keys) {
    return {"Netlist", "netlist of all its blocks", [keys] { return netlistOfAll(keys); }};
}

Maker makerOfEmptyNetlist() {
    return {"Netlist", "netlist of all its blocks", [] { return netlistOfAll({}); }};
}

/// Other values than those of the constructor, so that what is not saved shows.
void changeNumbers(MadeObject const& made) {
    if (vrl::Attribute* const parameter = made.object.parameter()) parameter->setStringValue("0.75");
    vrl::Attributes* const list = made.object.list();
    if (!list) return;
    for (std::string const& name : namesOf(*list)) {
        vrl::Attribute& attribute = *list->get(name);
        std::string const type = attribute.getType();
        if (type == "Int" || type == "Double") attribute.setStringValue("12");
        if (type == "Complex") attribute.setStringValue("12+I3");
    }
}

/// The values of parameters, whose classes may keep more than they save.
std::vector<std::string> valuesOf(MadeObject const& made) {
    std::vector<std::string> values;
    if (vrl::Attribute* const parameter = made.object.parameter()) values.push_back(parameter->getStringValue());
    vrl::Attributes* const list = made.object.list();
    if (!list) return values;
    for (std::string const& name : namesOf(*list)) values.push_back(list->get(name)->getStringValue());
    return values;
}

/// Saves, reads into a new object and saves that.
void findWrongBytes(Maker const& maker, MadeObject const& made, Maker const& again, Report& report) {
    changeNumbers(made);
    auto const bytes = bytesOf(made);
    if (!bytes) return report.find(maker.thing, "cannot be saved");
    if (bytesOf(made) != bytes) return report.find(maker.thing, "is saved in other bytes the second time");
    MadeObject const copy = again.make();
    std::istringstream stream(*bytes, std::ios::binary);
    vrl::BinaryStreamDeSerialiser reader(stream);
    if (!copy || !copy.object.read(reader)) return report.find(maker.thing, "does not read back what it saved");
    if (static_cast<std::size_t>(stream.tellg()) != bytes->size())
        return report.find(maker.thing, "does not read all that it saved");
    if (valuesOf(copy) != valuesOf(made) || bytesOf(copy) != bytes)
        report.find(maker.thing, "reads back other values than it saved");
}

/// A container makes its elements by the type that is saved with them. Netlists are in no container, and a kind of them
/// that saves no more than a plain netlist may be saved as one.
void findWrongType(Maker const& maker, MadeObject const& made, Report& report) {
    auto const bytes = bytesOf(made);
    if (!bytes) return;
    bool const isNetlist = made.object.netlist() && !made.object.block();
    std::istringstream stream(*bytes, std::ios::binary);
    std::string type;
    vrl::BinaryStreamDeSerialiser(stream).previewType(type);
    if (type != maker.key && !(isNetlist && type == "Netlist"))
        report.find(maker.thing, "is saved as '" + type + "', by which nobody finds its kind again");
}

void readInto(Maker const& maker, std::string const& bytes, std::string const& what, Report& report) {
    MadeObject const made = maker.make();
    if (!made) return;
    std::istringstream stream(bytes, std::ios::binary);
    vrl::BinaryStreamDeSerialiser reader(stream);
    std::string const thrown = throwsText([&] {
        made.object.read(reader);
        bytesOf(made);
    });
    if (!thrown.empty()) report.find(maker.thing, thrown + " for " + what);
}

std::string mutated(std::string bytes, std::mt19937& random) {
    unsigned const changes = 1 + random() % 8;
    for (unsigned i = 0; i < changes && !bytes.empty(); ++i)
        bytes[random() % bytes.size()] = static_cast<char>(random() % 256);
    return bytes;
}

std::string randomStream(std::mt19937& random) {
    std::string bytes(random() % 512, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random() % 256);
    return bytes;
}

void feedDamaged(Maker const& target, std::string const& bytes, Report& report) {
    report.step("reading cut streams into the " + target.thing);
    std::size_t const stride = bytes.size() / kTruncations + 1;
    for (std::size_t size = 0; size < bytes.size() && report.clean(); size += stride)
        readInto(target, bytes.substr(0, size), "a stream cut after byte " + std::to_string(size), report);
    std::mt19937 random(2111);  // the same for everybody, so that a finding can be found again
    for (unsigned i = 1; i <= kMutations && report.clean(); ++i) {
        report.step("reading the changed stream " + std::to_string(i) + " into the " + target.thing);
        readInto(target, mutated(bytes, random), "the changed stream " + std::to_string(i), report);
    }
    for (unsigned i = 1; i <= kRandomStreams && report.clean(); ++i) {
        report.step("reading the random stream " + std::to_string(i) + " into the " + target.thing);
        readInto(target, randomStream(random), "the random stream " + std::to_string(i), report);
    }
}

}  // namespace

void checkSaved(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const makers = savedMakers(*keys);
    if (makers.empty()) return report.notRun("it brings nothing that is saved");
    forEachMade(makers, report, [&](Maker const& maker, MadeObject const& made) {
        unsigned const before = report.findingCount();
        findWrongBytes(maker, made, maker, report);
        if (report.findingCount() == before) findWrongType(maker, made, report);
    });
    report.note(counted(makers.size(), "kind"));
    if (!report.clean()) return;  // what is wrong with one kind is wrong with all of them together
    Maker const all = makerOfAll(*keys);
    forEachMade({all}, report, [&](Maker const& maker, MadeObject const& made) {
        findWrongBytes(maker, made, makerOfEmptyNetlist(), report);
    });
}

void checkRandomBytes(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto makers = savedMakers(*keys);
    if (makers.empty()) return report.notRun("it brings nothing that is saved");
    for (Maker const& maker : makers) {
        MadeObject const made = madeBy(maker, report);
        if (auto const bytes = made ? bytesOf(made) : std::nullopt) feedDamaged(maker, *bytes, report);
    }
    if (auto const bytes = bytesOf(netlistOfAll(*keys))) feedDamaged(makerOfEmptyNetlist(), *bytes, report);
    report.note(counted(makers.size(), "kind"));
}

}  // namespace vrltool::validate
