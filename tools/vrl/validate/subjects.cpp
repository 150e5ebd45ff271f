#include "validate/subjects.h"

#include <algorithm>
#include <set>

namespace vrltool::validate {

namespace {

template <class T>
std::shared_ptr<void> owned(T* object) {
    return {object, [](void* whole) { vrl::ptr_destroy(static_cast<T*>(whole)); }};
}

Subject subjectOf(vrl::Attribute* attribute) {
    Subject subject;
    if (!attribute) return subject;
    subject.owner = owned(attribute);
    subject.attribute = attribute;
    subject.tells = attribute->getFactoryName();
    return subject;
}

Subject subjectOf(vrl::BB* block) {
    Subject subject;
    if (!block) return subject;
    subject.owner = owned(block);
    subject.block = block;
    subject.list = block;
    subject.tells = block->getName();
    if (auto* const composite = dynamic_cast<vrl::CBB*>(block)) subject.netlist = composite->getAsNetlist();
    return subject;
}

/// Of the other components, which differ in whether they describe themselves.
template <class T>
Subject subjectOf(T* component) {
    Subject subject;
    if (!component) return subject;
    subject.owner = owned(component);
    subject.list = component;
    subject.tells = component->getName();
    if constexpr (std::is_same_v<T, vrl::Netlist>) subject.netlist = component;
    if constexpr (std::is_same_v<T, vrl::Foundry> || std::is_same_v<T, vrl::CrossSection>)
        subject.described = !component->describe().empty();
    return subject;
}

Subject make(Brings what, std::string const& key) {
    switch (what) {
    case Brings::kAttribute:
        return subjectOf(vrl::Attributes::factory().create(key));
    case Brings::kFoundry:
        return subjectOf(vrl::Foundry::create(key));
    case Brings::kBlock:
        return subjectOf(vrl::BB::create(nullptr, key));
    case Brings::kNetlist:
        return subjectOf(vrl::Netlist::create(key));
    default:
        return {};
    }
}

/// A flow or a cross section of a foundry, which lives as long as this.
template <class Create>
Subject makePart(std::string const& foundry, Create const& create) {
    vrl::shared_ptr<vrl::Foundry> const made(vrl::Foundry::create(foundry));
    return made ? subjectOf(create(*made)) : Subject();
}

void addParts(std::vector<Maker>& makers, std::string const& foundry) {
    vrl::shared_ptr<vrl::Foundry> const made(vrl::Foundry::create(foundry));
    if (!made) return;
    std::string const of = "' of foundry '" + foundry + "'";
    for (auto entry = made->beginFlow(); entry != made->endFlow(); ++entry)
        makers.push_back({entry->first, "flow '" + entry->first + of, [foundry, key = entry->first] {
                              return makePart(foundry, [&](vrl::Foundry& f) { return f.createFlow(key); });
                          }});
    for (auto entry = made->beginCrossSection(); entry != made->endCrossSection(); ++entry)
        makers.push_back({entry->first, "cross section '" + entry->first + of, [foundry, key = entry->first] {
                              return makePart(foundry, [&](vrl::Foundry& f) { return f.createCS(key, 0.5, 0.0); });
                          }});
}

void append(std::vector<Maker>& makers, std::vector<Maker> const& more) {
    makers.insert(makers.end(), more.begin(), more.end());
}

}  // namespace

// Both sides of a composite can save; the whole of it does.
bool Subject::write(vrl::SerialiserBase& serialiser) const {
    if (block && netlist) return dynamic_cast<vrl::CBB&>(*block).write(&serialiser);
    if (block) return block->write(&serialiser);
    return netlist ? netlist->write(&serialiser) : attribute->write(&serialiser);
}

bool Subject::read(vrl::DeSerialiserBase& deserialiser) const {
    if (block && netlist) return dynamic_cast<vrl::CBB&>(*block).read(&deserialiser);
    if (block) return block->read(&deserialiser);
    return netlist ? netlist->read(&deserialiser) : attribute->read(&deserialiser);
}

std::vector<Maker> makersOf(Brings what, Keys const& keys) {
    std::vector<Maker> makers;
    for (std::string const& key : keys[what])
        if (!key.empty())
            makers.push_back(
                {key, std::string(targetOf(what).one) + " '" + key + "'", [what, key] { return make(what, key); }});
    return makers;
}

std::vector<Maker> foundryPartMakers(Keys const& keys) {
    std::vector<Maker> makers;
    for (std::string const& foundry : keys[Brings::kFoundry])
        if (!foundry.empty()) static_cast<void>(thrownBy([&] { addParts(makers, foundry); }));
    return makers;
}

std::vector<Maker> savedMakers(Keys const& keys) {
    std::vector<Maker> makers;
    for (Brings const what : {Brings::kAttribute, Brings::kBlock, Brings::kNetlist})
        append(makers, makersOf(what, keys));
    return makers;
}

std::vector<Maker> allMakers(Keys const& keys) {
    std::vector<Maker> makers = makersOf(Brings::kFoundry, keys);
    append(makers, foundryPartMakers(keys));
    append(makers, savedMakers(keys));
    return makers;
}

Subject madeBy(Maker const& maker, Report& report) {
    report.step("making the " + maker.thing);
    Subject subject;
    static_cast<void>(thrownBy([&] { subject = maker.make(); }));
    return subject;
}

std::vector<std::string> namesOf(vrl::Attributes const& list) {
    std::set<std::string> names;
    for (std::string const& name : list)
        if (list.find(name)) names.insert(name);
    return {names.begin(), names.end()};
}

void forEachSubject(std::vector<Maker> const& makers, Report& report,
                    std::function<void(Maker const&, Subject const&)> const& use) {
    for (Maker const& maker : makers) {
        Subject const subject = madeBy(maker, report);
        if (!subject) continue;
        report.step("using the " + maker.thing);
        std::string const thrown = thrownBy([&] { use(maker, subject); });
        if (!thrown.empty()) report.find(maker.thing, thrown);
    }
}

}  // namespace vrltool::validate
