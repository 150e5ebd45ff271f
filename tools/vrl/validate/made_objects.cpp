#include "validate/made_objects.h"

#include <algorithm>
#include <set>

namespace vrltool::validate {

namespace {

MadeObject madeOf(vrl::Attribute* attribute) {
    return attribute ? MadeObject{SavedObject(attribute), attribute->getFactoryName()} : MadeObject();
}

template <class T>
MadeObject madeOf(T* component) {
    MadeObject made{SavedObject(component)};
    if (!component) return made;
    made.name = component->getName();
    if constexpr (std::is_same_v<T, vrl::Foundry> || std::is_same_v<T, vrl::CrossSection>)
        made.hasDescription = !component->describe().empty();
    return made;
}

MadeObject make(Target what, std::string const& key) {
    switch (what) {
    case kAttribute:
        return madeOf(vrl::Attributes::factory().create(key));
    case kFoundry:
        return madeOf(vrl::Foundry::create(key));
    case kBlock:
        return madeOf(vrl::BB::create(nullptr, key));
    case kNetlist:
        return madeOf(vrl::Netlist::create(key));
    default:
        return {};
    }
}

/// A flow or a cross section of a foundry, which lives as long as this.
template <class Create>
MadeObject makePart(std::string const& foundry, Create const& create) {
    vrl::shared_ptr<vrl::Foundry> const made(vrl::Foundry::create(foundry));
    return made ? madeOf(create(*made)) : MadeObject();
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

std::vector<Maker> makersOf(Target what, Keys const& keys) {
    std::vector<Maker> makers;
    for (std::string const& key : keys[what])
        if (!key.empty())
            makers.push_back({key, keyText(kTargets[what], key), [what, key] { return make(what, key); }});
    return makers;
}

std::vector<Maker> foundryPartMakers(Keys const& keys) {
    std::vector<Maker> makers;
    for (std::string const& foundry : keys[kFoundry])
        if (!foundry.empty()) static_cast<void>(throwsText([&] { addParts(makers, foundry); }));
    return makers;
}

std::vector<Maker> savedMakers(Keys const& keys) {
    std::vector<Maker> makers;
    for (Target const what : {kAttribute, kBlock, kNetlist}) append(makers, makersOf(what, keys));
    return makers;
}

std::vector<Maker> allMakers(Keys const& keys) {
    std::vector<Maker> makers = makersOf(kFoundry, keys);
    append(makers, foundryPartMakers(keys));
    append(makers, savedMakers(keys));
    return makers;
}

char const* const kMakingHint = "mend the constructor: a debugger shows where it is";
char const* const kDestroyingHint =
    "mend the destructor: it frees what the object itself owns, and that once; a debugger shows where it is";

// What cannot be made is left to the checks that are about making; the others leave it out.
MadeObject madeBy(Maker const& maker, Report& report) {
    report.step("making the " + maker.thing, maker.thing, kMakingHint);
    MadeObject made;
    static_cast<void>(throwsText([&] { made = maker.make(); }));
    return made;
}

void destroyMade(Maker const& maker, MadeObject& made, Report& report) {
    report.step("destroying the " + maker.thing, maker.thing, kDestroyingHint);
    made = MadeObject();
}

std::vector<std::string> namesOf(vrl::Attributes const& list) {
    std::set<std::string> names;
    for (std::string const& name : list)
        if (list.find(name)) names.insert(name);
    return {names.begin(), names.end()};
}

void forEachMade(std::vector<Maker> const& makers, Report& report,
                 std::function<void(Maker const&, MadeObject const&)> const& use) {
    for (Maker const& maker : makers) {
        MadeObject made = madeBy(maker, report);
        if (!made) continue;
        report.step("using the " + maker.thing, maker.thing);
        std::string const thrown = throwsText([&] { use(maker, made); });
        if (!thrown.empty()) report.find(maker.thing, thrown);
        destroyMade(maker, made, report);
    }
}

}  // namespace vrltool::validate
