#include "vrllib/model/building_block.h"

#include <memory>
#include <new>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Fab;
using sample::Kinds;
using sample::Mmi;
using sample::Pad;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl_test::thrownText;

/// Frees a block as its users do.
struct Destroy {
    void operator()(BB* block) const { BB::destroy(block); }
};
using Block = std::unique_ptr<BB, Destroy>;

TEST(BB, IsMadeByKindForAFoundry) {
    Kinds const kinds;
    Fab const fab("Fabrikat");
    Block const block(BB::create(&fab, "mmi"));
    Block const without(BB::create(nullptr, "mmi"));

    ASSERT_NE(dynamic_cast<Mmi*>(block.get()), nullptr);
    EXPECT_EQ(block->getFoundry(), &fab);
    EXPECT_EQ(block->getFoundryName(), "Fabrikat");
    ASSERT_NE(without, nullptr);
    EXPECT_EQ(without->getFoundry(), nullptr);
}

TEST(BB, IsNotMadeForAnUnknownKind) {
    vrlCoutReset();

    EXPECT_EQ(BB::create(nullptr, "nowhere"), nullptr);
    EXPECT_EQ(vrlGetCoutMsg(), "");
}

TEST(BB, RefusesAnEmptyKind) {
    EXPECT_EQ(thrownText([] { BB::create(nullptr, ""); }), "Sorry - use a proper key");
}

TEST(BB, HasNoDefaultUnlessTheHostSetsOne) {
    FactoryLoader<BB>::setDefault(shared_ptr<BB>());

    EXPECT_EQ(thrownText([] { FactoryLoader<BB>::getDefault(); }), "Can not create a default BB");
}

TEST(BB, RunsTheCallbacksOfItsFactory) {
    Kinds const kinds;
    std::vector<std::string> events;
    Listener<BB> const listener(
        [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    BB* const block = BB::create(nullptr, "mmi");
    FactoryLoader<BB>::factory().OnChange(block);
    BB::destroy(block);

    EXPECT_THAT(events, ElementsAre("create mmi", "change mmi", "destroy mmi"));
}

TEST(BB, RunsTheDestroyCallbacksAlsoForNull) {
    std::vector<std::string> events;
    Listener<BB> const listener(
        [&](std::string const& event, BB* block) { events.push_back(event + (block ? "" : " null")); });
    BB::destroy(nullptr);

    EXPECT_THAT(events, ElementsAre("destroy null"));
}

TEST(BB, IsDestroyedThroughItsFactoryWithItsLastHandle) {
    std::vector<std::string> events;
    Listener<BB> const listener(
        [&](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    {
        shared_ptr<BB> const first(new Pad);
        shared_ptr<BB> const second(first);
    }
    EXPECT_THAT(events, ElementsAre("destroy pad"));
}

/// A kind that is never made: its allocation returns no memory.
class Unmade : public BB {
public:
    explicit Unmade(Foundry const* foundry) : BB(foundry) {}
    ~Unmade() override = default;
    static void* operator new(std::size_t) noexcept { return nullptr; }
    static void operator delete(void*) {}
};

/// The kinds that have a port in a domain.
std::vector<std::string> listed(EnumList::Domain const& domain) {
    std::vector<std::string>::const_iterator first;
    std::vector<std::string>::const_iterator last;
    BB::list(domain, &first, &last);
    return {first, last};
}

TEST(BB, ListsTheKindsThatHaveAPortInADomain) {
    Kinds const kinds;
    auto const another = sample::registered<Mmi>(FactoryLoader<BB>::factory(), "amplifier");

    EXPECT_THAT(listed(EnumList::Optics), ElementsAre("amplifier", "mmi"));
    EXPECT_THAT(listed(EnumList::DC), ElementsAre("pad"));
}

TEST(BB, ListsNothingForADomainThatNoKindUses) {
    Kinds const kinds;
    std::vector<std::string>::const_iterator first;
    std::vector<std::string>::const_iterator last;
    BB::list(EnumList::Fluidics, &first, &last);

    EXPECT_EQ(first, last);
}

TEST(BB, EmptiesTheListOnEachCall) {
    Kinds const kinds;
    listed(EnumList::Optics);

    EXPECT_THAT(listed(EnumList::DC), ElementsAre("pad"));
    EXPECT_THAT(listed(EnumList::DC), ElementsAre("pad"));
    EXPECT_THAT(listed(EnumList::Acoustic), IsEmpty());
}

/// A kind whose constructor takes the kind "pad" away.
class Greedy : public BB {
public:
    explicit Greedy(Foundry const* foundry) : BB(foundry) {
        addPort("dc0", EnumList::DC);
        FactoryLoader<BB>::factory().UnRegister("pad");
    }
    ~Greedy() override = default;
    std::string getName() const override { return "greedy"; }
};

/// A kind whose constructor takes itself away.
class Fleeting : public BB {
public:
    explicit Fleeting(Foundry const* foundry) : BB(foundry) {
        addPort("dc0", EnumList::DC);
        FactoryLoader<BB>::factory().UnRegister("fleeting");
    }
    ~Fleeting() override = default;
};

TEST(BB, ListsKindsWhoseConstructorsTakeKindsAway) {
    Kinds const kinds;
    auto const greedy = sample::registered<Greedy>(FactoryLoader<BB>::factory(), "greedy");
    auto const fleeting = sample::registered<Fleeting>(FactoryLoader<BB>::factory(), "fleeting");

    EXPECT_THAT(listed(EnumList::DC), ElementsAre("fleeting", "greedy"));
    EXPECT_THAT(listed(EnumList::DC), ElementsAre("greedy"));
}

TEST(BB, MakesAndDestroysOneBlockOfEachKindForAList) {
    Kinds const kinds;
    auto const unmade = sample::registered<Unmade>(FactoryLoader<BB>::factory(), "n");
    std::vector<std::string> events;
    Listener<BB> const listener([&](std::string const& event, BB* block) {
        events.push_back(event + " " + (block ? block->getName() + "@" + block->getFoundryName() : "null"));
    });

    EXPECT_THAT(listed(EnumList::DC), ElementsAre("pad"));
    EXPECT_THAT(events, ElementsAre("create mmi@", "destroy mmi@", "create null", "create pad@", "destroy pad@"));
}

}  // namespace
