#include "vrllib/model/building_block.h"

#include <iterator>
#include <memory>
#include <new>
#include <sstream>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"
#include "tests/model/listener.h"
#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"
#include "tests/support/thrown.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Fab;
using sample::Kinds;
using sample::Mmi;
using sample::Pad;
using sample::printed;
using sample::saved;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl_test::slotsOf;
using vrl_test::thrownText;
using CSInfo = Foundry::CSInfo;
using Port = BB::Port;

CSInfo named(std::string const& csName, std::string const& flowName = "") {
    CSInfo info(nullptr);
    info.setCS(csName);
    info.setFlow(flowName);
    return info;
}

/// Frees a block as its users do.
struct Destroy {
    void operator()(BB* block) const { BB::destroy(block); }
};
using Block = std::unique_ptr<BB, Destroy>;

/// The ports as "name:domain".
std::vector<std::string> portsOf(BB const& block) {
    std::vector<std::string> ports;
    for (auto port = block.beginPort(); port != block.endPort(); ++port)
        ports.push_back(port->getName().getName() + ":" + EnumList::getName(port->getDomain()));
    return ports;
}

/// Opens the protected operations of a port.
struct OpenPort : Port {
    using Port::getSerDoc;
    using Port::getSerTypeName;
    using Port::getSerVerNo;
    using Port::Port;
    static auto table() {
        return slotsOf(&OpenPort::getSerTypeName, &OpenPort::getSerVerNo, &OpenPort::getSerDoc,
                       &OpenPort::getSerRegister);
    }
};

TEST(Port, HasNoNameDomainOrBlockByDefault) {
    Port const port;

    EXPECT_EQ(port.getName().getName(), "-none-");
    EXPECT_EQ(port.getDomain(), EnumList::Unknown);
    EXPECT_EQ(static_cast<int>(port.getDomain()), 0);
    EXPECT_EQ(port.getObject(), nullptr);
    EXPECT_EQ(port.getCS().getFoundry(), nullptr);
    EXPECT_TRUE(port == Port());
    EXPECT_FALSE(port != Port());
}

TEST(Port, StoresItsNameBlockAndDomainAndStartsWithAnEmptyChoice) {
    Fab fab;
    fab.setCS("wg");
    Mmi const block(&fab);
    Port const port("in0", &block, EnumList::Optics);

    EXPECT_EQ(port.getName().getName(), "in0");
    EXPECT_EQ(port.getDomain(), EnumList::Optics);
    EXPECT_EQ(port.getObject(), &block);
    EXPECT_EQ(port.getCS().getCSName(), "");
    EXPECT_EQ(port.getCS().getFlowName(), "");
    EXPECT_EQ(port.getCS().getFoundry(), nullptr);
}

TEST(Port, SetsItsChoice) {
    Port port;
    port.setCS(named("wg", "strip"));
    Port const& constant = port;

    EXPECT_TRUE(constant.getCS() == named("wg", "strip"));
    port.getCS().setCS("rib");
    EXPECT_EQ(constant.getCS().getCSName(), "rib");
}

TEST(Port, ComparesNothingButTheName) {
    Pad const block;
    Port const port("dc", &block, EnumList::DC);

    EXPECT_TRUE(port == Port("dc", nullptr, EnumList::RF));
    EXPECT_FALSE(port != Port("dc", nullptr, EnumList::RF));
    EXPECT_FALSE(port == Port("dc0", &block, EnumList::DC));
    EXPECT_TRUE(port != Port("dc0", &block, EnumList::DC));
}

TEST(Port, CopiesAndAssignsEverythingAndGoesOnNamingTheSourcesBlock) {
    Pad const block;
    Port source("dc", &block, EnumList::DC);
    source.setCS(named("wg"));
    Port const copy(source);
    Port target;

    EXPECT_EQ(&(target = source), &target);
    for (Port const* const port : {&copy, &std::as_const(target)}) {
        EXPECT_EQ(port->getName().getName(), "dc");
        EXPECT_EQ(port->getDomain(), EnumList::DC);
        EXPECT_EQ(port->getObject(), &block);
        EXPECT_EQ(port->getCS().getCSName(), "wg");
    }
}

TEST(Port, CopiesAndAssignsTheRegisterAsItStands) {
    Port source;
    source.setCS(named("source"));
    std::string const before = saved(source);
    Port copy(source);
    Port target;
    target = source;
    copy.setCS(named("copy"));
    target.setCS(named("target"));

    EXPECT_EQ(saved(copy), before);
    EXPECT_EQ(saved(target), before);
}

TEST(Port, StartsWithAFreshRegisterWhenMoved) {
    Pad const block;
    Port source("dc", &block, EnumList::DC);
    source.setCS(named("source"));
    std::string const before = saved(source);
    Port moved(std::move(source));

    EXPECT_EQ(moved.getName().getName(), "dc");
    EXPECT_EQ(moved.getDomain(), EnumList::DC);
    EXPECT_EQ(moved.getObject(), &block);
    EXPECT_EQ(saved(moved), before);
    moved.getCS().setCS("moved");
    EXPECT_NE(saved(moved), before);

    Port other;
    other.setCS(named("other"));
    saved(other);
    Port target(other);  // saves what `other` has
    target = std::move(moved);
    EXPECT_EQ(target.getName().getName(), "dc");
    EXPECT_EQ(target.getObject(), &block);
    EXPECT_EQ(target.getCS().getCSName(), "moved");
    EXPECT_NE(saved(target), saved(other));
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Port>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<Port>);
}

TEST(Port, PrintsItsName) {
    Port const port("in_$0", nullptr, EnumList::Optics);
    std::ostringstream os;

    EXPECT_EQ(&port.operator<<(os), &os);
    EXPECT_EQ(os.str(), "in_$0");
}

TEST(Port, DocumentsItsNameWithoutEscaping) {
    Port const port("in_$0", nullptr, EnumList::Optics);

    EXPECT_EQ(texWrittenBy([&](texstream& tex) { EXPECT_EQ(&port.toTex(tex), &tex); }), "in_$0");
}

TEST(Port, HasItsOperationsInOrderBehindTheDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Port>);
    EXPECT_EQ(OpenPort::table(), (std::vector<std::size_t>{2, 3, 4, 5}));
}

TEST(Port, SavesItselfUnderItsFullNameWithItsNameAsTheComment) {
    OpenPort port("in0", nullptr, EnumList::Optics);

    EXPECT_EQ(port.getSerTypeName(), "BB::Port");
    EXPECT_EQ(port.getSerVerNo(), 1);
    EXPECT_EQ(port.getSerDoc(), "in0");
}

/// Opens the protected operations of a block.
struct OpenBlock : BB {
    using BB::getSerDoc;
    using BB::getSerTypeName;
    using BB::getSerVerNo;

    /// The bytes of the register that the component part has for itself.
    std::string savedAsComponent() {
        std::ostringstream stream;
        BinaryStreamSerialiser writer(stream);
        Component::getSerRegister()->write(&writer);
        return stream.str();
    }
};

TEST(BB, IsFreedOnlyThroughDestroy) {
    EXPECT_FALSE(std::is_abstract_v<BB>);
    EXPECT_FALSE(std::is_destructible_v<BB>);
    EXPECT_TRUE((std::is_convertible_v<BB*, Component*>));
}

TEST(BB, HasItsOperationsInOrder) {
    auto const table = slotsOf(&BB::getName, &BB::isAllowed, static_cast<CSInfo& (BB::*)(Port const&)>(&BB::getCS),
                               static_cast<CSInfo const& (BB::*)(Port const&) const>(&BB::getCS));

    EXPECT_EQ(table[1], table[0] + 1);
    EXPECT_EQ(table[2], table[0] + 2);
    EXPECT_EQ(table[3], table[0] + 3);
}

TEST(BB, SavesItselfUnderItsKind) {
    OpenBlock block;

    EXPECT_EQ(block.getSerTypeName(), "X");
    EXPECT_EQ(block.getSerVerNo(), 1);
    EXPECT_EQ(block.getSerDoc(), "");
}

TEST(BB, IsOfTheKindXWithNothingInIt) {
    Block const block(new BB);

    EXPECT_EQ(block->getName(), "X");
    EXPECT_EQ(block->beginPort(), block->endPort());
    EXPECT_EQ(block->getCS().getCSName(), "");
    EXPECT_EQ(block->getCS().getFlowName(), "");
    EXPECT_EQ(block->getFoundry(), nullptr);
    EXPECT_EQ(block->getFoundryName(), "");
    EXPECT_EQ(block->size(), 0U);
}

TEST(BB, IsAsByDefaultWithANullFoundry) {
    Block const block(new BB(nullptr));

    EXPECT_EQ(block->getFoundry(), nullptr);
    EXPECT_EQ(block->getFoundryName(), "");
    EXPECT_EQ(block->getCS().getCSName(), "");
}

TEST(BB, TakesOverTheChoiceAndTheNameOfItsFoundryAtThatMoment) {
    Fab fab("Fabrikat");
    fab.setCS("wg");
    fab.setFlow("strip");
    Block const block(new BB(&fab));
    fab.setCS("rib");
    fab.setFlow("other");

    EXPECT_EQ(block->getFoundry(), &fab);
    EXPECT_EQ(block->getFoundryName(), "Fabrikat");
    EXPECT_EQ(block->getCS().getCSName(), "wg");
    EXPECT_EQ(block->getCS().getFlowName(), "strip");
}

TEST(BB, TakesTheFoundryThatTheChoiceNames) {
    Fab const source("source");
    Fab const copy(source);
    Block const block(new BB(&copy));

    EXPECT_EQ(block->getFoundry(), &source);
}

TEST(BB, AllowsEveryChoice) {
    Block const block(new BB);

    EXPECT_TRUE(block->isAllowed(named("wg")));
    EXPECT_TRUE(block->isAllowed(CSInfo(nullptr)));
}

TEST(BB, GivesItsOwnChoiceForEveryPort) {
    Mmi block;
    block.setCS(named("block"));
    Port& port = *block.getPort("in0");
    port.setCS(named("port"));
    BB const& constant = block;

    EXPECT_EQ(&block.getCS(port), &block.getCS());
    EXPECT_EQ(&constant.getCS(port), &constant.getCS());
    EXPECT_EQ(block.getCS(port).getCSName(), "block");
    EXPECT_EQ(&block.getCS(Port()), &block.getCS());
}

TEST(BB, SetsItsChoice) {
    Fab const fab;
    Block const block(new BB);
    CSInfo cs(&fab);
    cs.setCS("wg");
    block->setCS(cs);

    EXPECT_EQ(block->getCS().getCSName(), "wg");
    EXPECT_EQ(block->getFoundry(), &fab);
    EXPECT_EQ(block->getFoundryName(), "");
}

TEST(BB, MakesACrossSectionByItsChoice) {
    Fab fab;
    fab.crossSections.Register<sample::Section>("wg");
    fab.setCS("wg");
    Block const block(new BB(&fab));
    std::unique_ptr<CrossSection> const cs(std::as_const(*block).createCS(2.5, 10.0));

    ASSERT_NE(cs, nullptr);
    EXPECT_EQ(cs->getName(), "wg");
    EXPECT_EQ(cs->getWidth(), 2.5);
    EXPECT_EQ(cs->getRadius(), 10.0);
}

TEST(BB, SetsTheFoundryOfItsChoiceAndNothingElse) {
    Fab const fab("first");
    Fab const other("other");
    Mmi block(&fab);
    CSInfo cs(&fab);
    cs.setCS("port");
    block.getPort("in0")->setCS(cs);
    block.setFoundry(&other);

    EXPECT_EQ(block.getFoundry(), &other);
    EXPECT_EQ(block.getCS().getFoundry(), &other);
    EXPECT_EQ(block.getFoundryName(), "first");
    EXPECT_EQ(block.getPort("in0")->getCS().getFoundry(), &fab);
    EXPECT_EQ(std::next(block.beginPort())->getCS().getFoundry(), nullptr);
    block.setFoundry(nullptr);
    EXPECT_EQ(block.getFoundry(), nullptr);
    EXPECT_EQ(block.getFoundryName(), "first");
}

TEST(BB, PinsInputsThenOutputs) {
    Block const block(new BB);
    block->pin(2, 1);

    EXPECT_THAT(portsOf(*block), ElementsAre("in0:Optics", "in1:Optics", "out0:Optics"));
    EXPECT_TRUE(block->chkDomain(EnumList::Optics));
    EXPECT_FALSE(block->chkDomain(EnumList::DC));
    EXPECT_EQ(block->beginPort()->getObject(), block.get());
}

TEST(BB, PinsNothingForCountsOfZero) {
    Block const block(new BB);
    block->pin(0, 0);
    EXPECT_THAT(portsOf(*block), IsEmpty());

    block->pin(0, 1);
    EXPECT_THAT(portsOf(*block), ElementsAre("out0:Optics"));
}

TEST(BB, PinsTheSameNamesAgainAndFindsTheFirst) {
    Block const block(new BB);
    block->pin(1, 0);
    block->pin(1, 1);

    EXPECT_THAT(portsOf(*block), ElementsAre("in0:Optics", "in0:Optics", "out0:Optics"));
    EXPECT_EQ(block->getPort("in0"), &*block->beginPort());
}

TEST(BB, NumbersItsPinsInDecimal) {
    Block const block(new BB);
    block->pin(11, 0);

    EXPECT_EQ(std::prev(block->endPort())->getName().getName(), "in10");
}

TEST(BB, AddsPortsOfAnyDomainInOrder) {
    Block const block(new BB);
    block->addPort("dc", EnumList::DC);
    block->addPort("in0", EnumList::Optics);

    EXPECT_THAT(portsOf(*block), ElementsAre("dc:DC", "in0:Optics"));
    EXPECT_TRUE(block->chkDomain(EnumList::DC));
    EXPECT_FALSE(block->chkDomain(EnumList::RF));
}

TEST(BB, KeepsTwoPortsOfOneNameAndFindsTheFirst) {
    Block const block(new BB);
    block->addPort("p", EnumList::DC);
    block->addPort("p", EnumList::RF);

    EXPECT_THAT(portsOf(*block), ElementsAre("p:DC", "p:RF"));
    EXPECT_EQ(block->getPort("p")->getDomain(), EnumList::DC);
}

TEST(BB, AddsAPortForEachNameOfAList) {
    Block const block(new BB);
    block->addPorts(EnumList::RF, "a", "b", "c", static_cast<char const*>(nullptr));

    EXPECT_THAT(portsOf(*block), ElementsAre("a:RF", "b:RF", "c:RF"));
}

TEST(BB, AddsNothingForAListWithoutNames) {
    Block const block(new BB);
    block->addPorts(EnumList::RF, nullptr);

    EXPECT_THAT(portsOf(*block), IsEmpty());
}

TEST(BB, FindsAPortByItsWholeNameOrYieldsNull) {
    Mmi block;

    EXPECT_EQ(block.getPort("out0"), &*std::next(block.beginPort()));
    EXPECT_EQ(block.getPort("out"), nullptr);
    EXPECT_EQ(block.getPort("OUT0"), nullptr);
    EXPECT_EQ(block.getPort(""), nullptr);
}

TEST(BB, LetsItsPortsBeChangedThroughTheirIterators) {
    Mmi block;
    block.beginPort()->setCS(named("wg"));

    EXPECT_EQ(std::as_const(block).beginPort()->getCS().getCSName(), "wg");
    EXPECT_EQ(std::distance(std::as_const(block).beginPort(), std::as_const(block).endPort()), 2);
}

TEST(BB, HasNoDomainWithoutPorts) {
    Block const block(new BB);

    EXPECT_FALSE(block->chkDomain(EnumList::Unknown));
    EXPECT_FALSE(block->chkDomain(EnumList::Optics));
}

TEST(BB, KeepsTheDataOfSavedPortsWhenItGetsMore) {
    Block const block(new BB);
    block->addPort("first", EnumList::DC);
    block->getPort("first")->setCS(named("before"));
    std::string const before = saved(*block->getPort("first"));
    for (int i = 0; i < 100; ++i) block->addPort("more", EnumList::DC);

    EXPECT_EQ(saved(*block->getPort("first")), before);
    block->getPort("first")->getCS().setCS("after");
    EXPECT_NE(saved(*block->getPort("first")), before);
}

TEST(BB, CopiesTheChoiceAndTheFoundrysNameAndLeavesPortsParametersAndViews) {
    Fab fab("Fabrikat");
    fab.setCS("wg");
    Block const source(new BB(&fab));
    source->pin(2, 1);
    source->addDouble("x", 1.0);
    source->addAnnotation("note", "of the source");
    sample::PlainNote note(source.get(), "tool");
    Block const copy(new BB(*source));

    EXPECT_EQ(copy->getFoundryName(), "Fabrikat");
    EXPECT_EQ(copy->getFoundry(), &fab);
    EXPECT_EQ(copy->getCS().getCSName(), "wg");
    EXPECT_EQ(copy->beginPort(), copy->endPort());
    EXPECT_EQ(copy->size(), 0U);
    EXPECT_FALSE(copy->find("x"));
    EXPECT_EQ(copy->getAnnotation("note", false), "");
    EXPECT_EQ(copy->getVersionInfo().get(), 0);
    EXPECT_EQ(copy->beginView(), copy->endView());
}

TEST(BB, CopiesParametersAndViewsWhereItsClassDoes) {
    Mmi source;
    sample::PlainNote note(&source, "tool");
    Mmi copy(source);  // a copy that the class leaves to the compiler copies the virtual bases

    EXPECT_EQ(copy.getAttribute("length"), source.getAttribute("length"));
    EXPECT_EQ(copy.getView("tool"), &note);
    EXPECT_EQ(copy.beginPort(), copy.endPort());
}

TEST(BB, StartsWithAFreshRegisterAsACopy) {
    Block const source(new BB);
    std::string const before = saved(*source);
    Block const copy(new BB(*source));
    copy->addAnnotation("note", "of the copy");
    std::string const ofCopy = saved(*copy);
    source->addAnnotation("note", "of the copy");

    EXPECT_NE(ofCopy, before);
    EXPECT_EQ(ofCopy, saved(*source));
}

TEST(BB, CopiesTheRegisterOfItsChoiceAsItStands) {
    Block const source(new BB);
    source->getCS().setCS("source");
    std::string const before = saved(*source);
    Block const copy(new BB(*source));
    copy->getCS().setCS("copy");

    EXPECT_EQ(saved(*copy), before);
}

TEST(BB, CopiesTheRegisterOfItsComponentAsItStands) {
    OpenBlock source;
    std::string const before = source.savedAsComponent();
    OpenBlock copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_EQ(copy.savedAsComponent(), before);
    EXPECT_NE(saved(copy), saved(source));
}

TEST(BB, AssignsTheComponentTheChoiceAndTheFoundrysName) {
    Fab fab("Fabrikat");
    fab.setCS("wg");
    Mmi source(&fab);
    source.setDouble("length", 20.0);
    sample::PlainNote note(&source, "tool");
    Block const target(new BB);
    target->addPort("dc", EnumList::DC);
    target->addDouble("old", 1.0);
    BB& assigned = *target;

    EXPECT_EQ(&(assigned = source), &assigned);
    EXPECT_EQ(target->getDouble("length"), 20.0);
    EXPECT_FALSE(target->find("old"));
    EXPECT_EQ(target->getView("tool"), &note);
    EXPECT_EQ(target->getCS().getCSName(), "wg");
    EXPECT_EQ(target->getFoundry(), &fab);
    EXPECT_EQ(target->getFoundryName(), "Fabrikat");
    EXPECT_THAT(portsOf(*target), ElementsAre("dc:DC"));
}

TEST(BB, KeepsItsOwnRegisterWhenAssigned) {
    Block const source(new BB);
    std::string const before = saved(*source);
    Block const target(new BB);
    *target = *source;
    target->addAnnotation("note", "of the target");

    EXPECT_NE(saved(*target), before);
}

TEST(BB, KeepsItsFilledRegisterWhenAssigned) {
    Block const source(new BB);
    Block const target(new BB);
    saved(*target);
    *target = *source;
    target->addAnnotation("note", "of the target");
    std::string const ofTarget = saved(*target);
    source->addAnnotation("note", "of the target");

    EXPECT_EQ(ofTarget, saved(*source));
}

TEST(BB, PrintsItsKindAndItsParametersWithoutPorts) {
    Mmi const block;
    BB const& base = block;
    std::ostringstream os;
    os << base;

    EXPECT_EQ(printed(base), "=== mmi ===\n  length= 10\n");
    EXPECT_EQ(os.str(), "=== mmi ===\n  length= 10\n");
    EXPECT_EQ(&base.operator<<(os), &os);
}

TEST(BB, PrintsItsKindAloneWithoutParameters) {
    Block const block(new BB);

    EXPECT_EQ(printed(*block), "=== X ===\n");
}

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

/// A kind that is never made: its allocation gives no memory.
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
