#include <random>
#include <sstream>

#include "text/table.h"
#include "validate/subjects.h"

// What is saved of the objects of a plug-in, and what reading does to them.

namespace vrltool::validate {

namespace {

constexpr std::size_t kTruncations = 4096;  // all of a usual block; of a longer one this many
constexpr unsigned kMutations = 200;
constexpr unsigned kRandomStreams = 50;

template <class T>
std::optional<std::string> bytesOf(T& object) {
    std::ostringstream stream(std::ios::binary);
    vrl::BinaryStreamSerialiser writer(stream);
    return object.write(writer) ? std::optional<std::string>(stream.str()) : std::nullopt;
}

/// A netlist with one block of each kind, in order of the kinds.
std::unique_ptr<Subject> netlistOfAll(Keys const& keys) {
    auto whole = std::make_unique<Subject>();
    auto* const netlist = vrl::Netlist::create("");
    whole->netlist = netlist;
    whole->owner =
        std::shared_ptr<void>(netlist, [](void* all) { vrl::Netlist::destroy(static_cast<vrl::Netlist*>(all)); });
    for (std::string const& key : keys[Brings::kBlock]) {
        vrl::BB* const block = key.empty() ? nullptr : vrl::BB::create(nullptr, key);
        std::string const element = netlist->addBB(block);
        for (auto port = block ? block->beginPort() : vrl::BB::port_iterator(); block && port != block->endPort();
             ++port)
            if (!port->getName().getName().empty()) netlist->addNode(element, port->getName().getName());
    }
    return whole;
}

Maker makerOfAll(Keys const& keys) {
    return {"Netlist", "netlist of all its blocks", [keys] { return *netlistOfAll(keys); }};
}

Maker makerOfEmptyNetlist() {
    return {"Netlist", "netlist of all its blocks", [] { return *netlistOfAll({}); }};
}

/// Other values than those of the constructor, so that what is not saved shows.
void changeNumbers(Subject const& subject) {
    if (subject.attribute) subject.attribute->setStringValue("0.75");
    if (!subject.list) return;
    for (std::string const& name : namesOf(*subject.list)) {
        vrl::Attribute& attribute = *subject.list->get(name);
        std::string const type = attribute.getType();
        if (type == "Int" || type == "Double") attribute.setStringValue("12");
        if (type == "Complex") attribute.setStringValue("12+I3");
    }
}

/// The values of parameters, whose classes may keep more than they save.
std::vector<std::string> valuesOf(Subject const& subject) {
    std::vector<std::string> values;
    if (subject.attribute) values.push_back(subject.attribute->getStringValue());
    if (!subject.list) return values;
    for (std::string const& name : namesOf(*subject.list)) values.push_back(subject.list->get(name)->getStringValue());
    return values;
}

/// Saves, reads into a new object and saves that.
void findWrongBytes(Maker const& maker, Subject const& subject, Maker const& again, Report& report) {
    changeNumbers(subject);
    auto const bytes = bytesOf(subject);
    if (!bytes) return report.find(maker.thing, "cannot be saved");
    if (bytesOf(subject) != bytes) return report.find(maker.thing, "is saved in other bytes the second time");
    Subject const copy = again.make();
    std::istringstream stream(*bytes, std::ios::binary);
    vrl::BinaryStreamDeSerialiser reader(stream);
    if (!copy || !copy.read(reader)) return report.find(maker.thing, "does not read back what it saved");
    if (static_cast<std::size_t>(stream.tellg()) != bytes->size())
        return report.find(maker.thing, "leaves a rest of what it saved");
    if (valuesOf(copy) != valuesOf(subject) || bytesOf(copy) != bytes)
        report.find(maker.thing, "reads back other values than it saved");
}

/// A container makes its elements by the type that is saved with them.
void findWrongType(Maker const& maker, Subject const& subject, Report& report) {
    auto const bytes = bytesOf(subject);
    if (!bytes) return;
    std::istringstream stream(*bytes, std::ios::binary);
    std::string type;
    vrl::BinaryStreamDeSerialiser(stream).previewType(type);
    if (type != maker.key) report.find(maker.thing, "is saved as '" + type + "', by which nobody finds its kind again");
}

void readInto(Maker const& maker, std::string const& bytes, std::string const& what, Report& report) {
    Subject const subject = maker.make();
    if (!subject) return;
    std::istringstream stream(bytes, std::ios::binary);
    vrl::BinaryStreamDeSerialiser reader(stream);
    std::string const thrown = thrownBy([&] {
        subject.read(reader);
        bytesOf(subject);
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
        readInto(target, bytes.substr(0, size), "a stream cut behind byte " + std::to_string(size), report);
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
    forEachSubject(makers, report, [&](Maker const& maker, Subject const& subject) {
        findWrongType(maker, subject, report);
        findWrongBytes(maker, subject, maker, report);
    });
    Maker const all = makerOfAll(*keys);
    forEachSubject({all}, report, [&](Maker const& maker, Subject const& subject) {
        findWrongBytes(maker, subject, makerOfEmptyNetlist(), report);
    });
    report.note(counted(makers.size(), "kind"));
}

void checkRandomBytes(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto makers = savedMakers(*keys);
    if (makers.empty()) return report.notRun("it brings nothing that is saved");
    for (Maker const& maker : makers) {
        Subject const subject = madeBy(maker, report);
        if (auto const bytes = subject ? bytesOf(subject) : std::nullopt) feedDamaged(maker, *bytes, report);
    }
    if (auto const bytes = bytesOf(*netlistOfAll(*keys))) feedDamaged(makerOfEmptyNetlist(), *bytes, report);
    report.note(counted(makers.size(), "kind"));
}

}  // namespace vrltool::validate
