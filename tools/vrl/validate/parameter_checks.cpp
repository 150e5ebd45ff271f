#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <map>
#include <set>
#include <sstream>

#include "validate/parameter_findings.h"
#include "validate/subjects.h"

// What the objects of a plug-in hold: ports and parameters, and the forms in which these are written and copied.

namespace vrltool::validate {

namespace {

/// The objects with a parameter list.
template <class Find>
void forEachList(Job const& job, Report& report, Find const& find) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachSubject(allMakers(*keys), report, [&](Maker const& maker, Subject const& subject) {
        if (subject.list) find(maker.thing, *subject.list);
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

/// A text of another value, by the type of the library that a parameter has; empty for the types of others.
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
    static_cast<void>(thrownBy([&] { to.setValue(nullptr); }));
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
        std::string const thrown = thrownBy([&] { findWrongCopy(parameter, *from.get(name), *to.get(name), report); });
        if (!thrown.empty()) report.find(parameter, "setValue " + thrown);
    }
}

/// A copy of a list goes on with its parameters when the object is gone, and so does that of a netlist.
void useCopiesOfTheGone(Maker const& maker, Report& report) {
    Subject subject = madeBy(maker, report);
    if (!subject || !subject.list) return;
    vrl::Attributes const list(*subject.list);
    std::unique_ptr<vrl::Netlist> const inside(subject.netlist ? new vrl::Netlist(*subject.netlist) : nullptr);
    subject = Subject();
    report.step("using a copy of the parameters of the " + maker.thing + ", which is gone");
    std::ostringstream text;
    list.operator<<(text);
    if (inside) inside->operator<<(text);
}

}  // namespace

void checkNames(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachSubject(allMakers(*keys), report, [&](Maker const& maker, Subject const& subject) {
        if (subject.block) findWrongPorts(maker.thing, *subject.block, report);
        if (subject.list) findWrongNames(maker.thing, *subject.list, report);
    });
}

void checkDescribed(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachSubject(allMakers(*keys), report, [&](Maker const& maker, Subject const& subject) {
        if (!subject.described) report.find(maker.thing, "describe() gives nothing", "say in one line what it is");
        if (subject.list) findUndescribed(maker.thing, *subject.list, report);
    });
}

void checkDefaultsInRange(Job const& job, Report& report) {
    forEachList(job, report,
                [&](std::string const& thing, vrl::Attributes& list) { findWrongDefaults(thing, list, report); });
}

void checkTextForms(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    forEachSubject(allMakers(*keys), report, [&](Maker const& maker, Subject const& subject) {
        if (subject.attribute) findWrongTexts(maker.thing, *subject.attribute, report);
        if (!subject.list) return;
        for (std::string const& name : namesOf(*subject.list))
            findWrongTexts(maker.thing + ", parameter '" + name + "'", *subject.list->get(name), report);
    });
}

void checkCopies(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const makers = allMakers(*keys);
    forEachSubject(makers, report, [&](Maker const& maker, Subject const& subject) {
        Subject const other = maker.make();
        if (subject.attribute && other) findWrongCopy(maker.thing, *subject.attribute, *other.attribute, report);
        if (subject.list && other) findWrongCopies(maker.thing, *subject.list, *other.list, report);
    });
    for (Maker const& maker : makers) useCopiesOfTheGone(maker, report);
}

}  // namespace vrltool::validate
