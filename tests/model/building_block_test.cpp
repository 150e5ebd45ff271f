#include "vrllib/model/building_block.h"

#include <iterator>
#include <memory>
#include <sstream>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"
#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

namespace {

using namespace Vorlane_v1_0;
using sample::choiceOf;
using sample::Fab;
using sample::Mmi;
using sample::printed;
using sample::saved;
using testing::ElementsAre;
using testing::IsEmpty;
using vrl_test::slotsOf;
using CSInfo = Foundry::CSInfo;
using Port = BB::Port;

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

    EXPECT_TRUE(block->isAllowed(choiceOf("wg")));
    EXPECT_TRUE(block->isAllowed(CSInfo(nullptr)));
}

TEST(BB, ReturnsItsOwnChoiceForEveryPort) {
    Mmi block;
    block.setCS(choiceOf("block"));
    Port& port = *block.getPort("in0");
    port.setCS(choiceOf("port"));
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

TEST(BB, AddsNumberedInputsThenOutputs) {
    Block const block(new BB);
    block->pin(2, 1);

    EXPECT_THAT(portsOf(*block), ElementsAre("in0:Optics", "in1:Optics", "out0:Optics"));
    EXPECT_TRUE(block->chkDomain(EnumList::Optics));
    EXPECT_FALSE(block->chkDomain(EnumList::DC));
    EXPECT_EQ(block->beginPort()->getObject(), block.get());
}

TEST(BB, AddsNoNumberedPortsForCountsOfZero) {
    Block const block(new BB);
    block->pin(0, 0);
    EXPECT_THAT(portsOf(*block), IsEmpty());

    block->pin(0, 1);
    EXPECT_THAT(portsOf(*block), ElementsAre("out0:Optics"));
}

TEST(BB, AddsTheSameNumberedPortsAgainAndFindsTheFirst) {
    Block const block(new BB);
    block->pin(1, 0);
    block->pin(1, 1);

    EXPECT_THAT(portsOf(*block), ElementsAre("in0:Optics", "in0:Optics", "out0:Optics"));
    EXPECT_EQ(block->getPort("in0"), &*block->beginPort());
}

TEST(BB, NumbersItsPortsInDecimal) {
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

TEST(BB, FindsAPortByItsWholeNameOrReturnsNull) {
    Mmi block;

    EXPECT_EQ(block.getPort("out0"), &*std::next(block.beginPort()));
    EXPECT_EQ(block.getPort("out"), nullptr);
    EXPECT_EQ(block.getPort("OUT0"), nullptr);
    EXPECT_EQ(block.getPort(""), nullptr);
}

TEST(BB, LetsItsPortsBeChangedThroughTheirIterators) {
    Mmi block;
    block.beginPort()->setCS(choiceOf("wg"));

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
    block->getPort("first")->setCS(choiceOf("before"));
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

TEST(BB, CopiesTheRegisterOfItsChoiceAsItIs) {
    Block const source(new BB);
    source->getCS().setCS("source");
    std::string const before = saved(*source);
    Block const copy(new BB(*source));
    copy->getCS().setCS("copy");

    EXPECT_EQ(saved(*copy), before);
}

TEST(BB, CopiesTheRegisterOfItsComponentAsItIs) {
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

}  // namespace
