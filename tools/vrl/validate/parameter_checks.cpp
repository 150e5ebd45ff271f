#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <map>
#include <set>
#include <sstream>

#include "validate/made_objects.h"
#include "validate/parameter_findings.h"

// What the objects of a plug-in hold: ports and parameters, and the forms in which these are written and copied.

namespace vrltool::validate {

namespace {

/// The objects with a parameter list.
template <class Find>
void forEachList(Job const& job, Report& report, Find const& find) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachMade(allMakers(*keys), report, [&](Maker const& maker, MadeObject const& made) {
        if (made.object.list()) find(maker.thing, *made.object.list());
    });
}

void findWrongPorts(std::string const& thing, vrl::BB const& block, Report& report) {
    std::map<std::string, unsigned> uses;
    for (auto port = block.beginPort(); port != block.endPort(); ++port) ++uses[port->getName().getName()];
    for (auto const& [name, count] : uses) {
        if (name.empty()) report.find(thing, "has a port without a name");
        if (count > 1) report.find(thing, "has the port '" + name + "' twice, of which only the first is found");
    }
}

/// A document that is written into memory.
class MemoryDocument {
public:
    MemoryDocument() : file(memfd_create("document", MFD_CLOEXEC)) {}
    MemoryDocument(MemoryDocument const&) = delete;
    MemoryDocument& operator=(MemoryDocument const&) = delete;
    ~MemoryDocument() { close(file); }

    /// Whether the parameter writes anything.
    bool takes(vrl::Attribute const& attribute) {
        texstream tex(("/proc/self/fd/" + std::to_string(file)).c_str(), false);
        attribute.toTex(tex);
        tex.close(false);
        return lseek(file, 0, SEEK_END) > 0;
    }

private:
    int file;
};

/// The string of another value, by the type of the library that a parameter has; empty for the types of others.
std::string otherText(vrl::Attribute const& attribute) {
    static std::map<std::string, std::vector<std::string>> const texts{{"bool", {"true", "false"}},
                                                                       {"Int", {"7", "8"}},
                                                                       {"Double", {"0.25", "0.5"}},
                                                                       {"Complex", {"1+I2", "2+I1"}},
                                                                       {"String", {"text", "other"}}};
    auto const found = texts.find(attribute.getType());
    if (found == texts.end()) return {};
    return found->second[attribute.getStringValue() == found->second[0] ? 1 : 0];
}

void findWrongTexts(std::string const& thing, vrl::Attribute& attribute, Report& report) {
    std::string const value = attribute.getStringValue();
    std::ostringstream source;
    attribute.toCpp(source, "x");
    if (source.str().empty()) report.find(thing, "toCpp writes nothing");
    if (!MemoryDocument().takes(attribute) && !value.empty()) report.find(thing, "toTex writes nothing");
    for (std::string const& text : {value, otherText(attribute), value}) {
        if (text.empty()) continue;
        attribute.setStringValue(text);
        std::string const back = attribute.getStringValue();
        if (back != text) return report.find(thing, "was set to '" + text + "' and reads back '" + back + "'");
    }
}

void findWrongCopy(std::string const& thing, vrl::Attribute& from, vrl::Attribute& to, Report& report) {
    std::string const name = to.getName();
    std::string const other = otherText(from);
    if (!other.empty()) from.setStringValue(other);
    static_cast<void>(throwsText([&] { to.setValue(nullptr); }));
    to.setValue(&from);
    if (to.getStringValue() != from.getStringValue())
        report.find(thing, "copies '" + from.getStringValue() + "' as '" + to.getStringValue() + "'");
    if (to.getName() != name) report.find(thing, "takes over the name with the value");
}

/// The parameters that two objects of one kind have in common.
void findWrongCopies(std::string const& thing, vrl::Attributes& from, vrl::Attributes& to, Report& report) {
    for (std::string const& name : namesOf(from)) {
        if (!to.find(name)) continue;
        std::string const parameter = thing + ", parameter '" + name + "'";
        std::string const thrown =
            throwsText([&] { findWrongCopy(parameter, *from.get(name), *to.get(name), report); });
        if (!thrown.empty()) report.find(parameter, "setValue " + thrown);
    }
}

/// A copy of a list goes on with its parameters when the object is gone, and so does that of a netlist.
void useCopiesOfTheGone(Maker const& maker, Report& report) {
    MadeObject made = madeBy(maker, report);
    if (!made || !made.object.list()) return;
    vrl::Attributes const list(*made.object.list());
    std::unique_ptr<vrl::Netlist> const inside(made.object.netlist() ? new vrl::Netlist(*made.object.netlist())
                                                                     : nullptr);
    made = MadeObject();
    report.step("using a copy of the parameters of the " + maker.thing + ", which is gone");
    std::ostringstream text;
    list.operator<<(text);
    if (inside) inside->operator<<(text);
}

}  // namespace

void checkNames(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachMade(allMakers(*keys), report, [&](Maker const& maker, MadeObject const& made) {
        if (made.object.block()) findWrongPorts(maker.thing, *made.object.block(), report);
        if (made.object.list()) findWrongNames(maker.thing, *made.object.list(), report);
    });
}

void checkDescribed(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachMade(allMakers(*keys), report, [&](Maker const& maker, MadeObject const& made) {
        if (!made.hasDescription) report.find(maker.thing, "describe() returns nothing", "say in one line what it is");
        if (made.object.list()) findUndescribed(maker.thing, *made.object.list(), report);
    });
}

void checkDefaultsInRange(Job const& job, Report& report) {
    forEachList(job, report,
                [&](std::string const& thing, vrl::Attributes& list) { findWrongDefaults(thing, list, report); });
}

void checkTextForms(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachMade(allMakers(*keys), report, [&](Maker const& maker, MadeObject const& made) {
        if (made.object.parameter()) findWrongTexts(maker.thing, *made.object.parameter(), report);
        if (!made.object.list()) return;
        for (std::string const& name : namesOf(*made.object.list()))
            findWrongTexts(maker.thing + ", parameter '" + name + "'", *made.object.list()->get(name), report);
    });
}

void checkCopies(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const makers = allMakers(*keys);
    forEachMade(makers, report, [&](Maker const& maker, MadeObject const& made) {
        MadeObject const other = maker.make();
        if (made.object.parameter() && other)
            findWrongCopy(maker.thing, *made.object.parameter(), *other.object.parameter(), report);
        if (made.object.list() && other)
            findWrongCopies(maker.thing, *made.object.list(), *other.object.list(), report);
    });
    for (Maker const& maker : makers) useCopiesOfTheGone(maker, report);
}

}  // namespace vrltool::validate
