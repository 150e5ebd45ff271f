#include "vrllib/model/building_block.h"

#include <algorithm>
#include <new>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

namespace {

using namespace Vorlane_v1_0;
using sample::choiceOf;
using sample::Fab;
using sample::Mmi;
using sample::Pad;
using sample::saved;
using vrl_test::slotsOf;
using CSInfo = Foundry::CSInfo;
using Port = BB::Port;

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

TEST(Port, HasNoChoiceUntilSomebodyAsksForItOrSetsIt) {
    Port const unasked;
    Port asked;
    Port set;

    asked.getCS();
    set.setCS(choiceOf("wg", "strip"));

    EXPECT_FALSE(unasked.hasCS());
    EXPECT_TRUE(asked.hasCS());
    EXPECT_TRUE(set.hasCS());
    EXPECT_FALSE(Port(unasked).hasCS());
    EXPECT_TRUE(Port(set).hasCS());
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
    port.setCS(choiceOf("wg", "strip"));
    Port const& constant = port;

    EXPECT_TRUE(constant.getCS() == choiceOf("wg", "strip"));
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

TEST(Port, CopiesAndAssignsEverythingAndStillNamesTheSourcesBlock) {
    Pad const block;
    Port source("dc", &block, EnumList::DC);
    source.setCS(choiceOf("wg"));
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

TEST(Port, CopiesAndAssignsTheRegisterAsItIs) {
    Port source;
    source.setCS(choiceOf("source"));
    std::string const before = saved(source);
    Port copy(source);
    Port target;
    target = source;
    copy.setCS(choiceOf("copy"));
    target.setCS(choiceOf("target"));

    EXPECT_EQ(saved(copy), before);
    EXPECT_EQ(saved(target), before);
}

TEST(Port, KeepsTheChoiceThatItHandedOutWhateverItBecomes) {
    Fab const fab;
    Port port("in0", nullptr, EnumList::Optics), other("in1", nullptr, EnumList::Optics);
    CSInfo& choice = port.getCS();
    EXPECT_EQ(&static_cast<Port const&>(port).getCS(), &choice);
    EXPECT_EQ(choice.getFoundry(), nullptr);
    CSInfo chosen = choiceOf("strip", "flow");
    chosen.setFoundry(&fab);
    port.setCS(chosen);
    EXPECT_EQ(choice, chosen);
    EXPECT_EQ(choice.getFoundry(), &fab);
    port = other;
    EXPECT_EQ(choice, CSInfo(nullptr));
    EXPECT_EQ(choice.getFoundry(), nullptr);
    other.setCS(chosen);
    port = other;
    EXPECT_EQ(choice, chosen);
    port = Port("in2", nullptr, EnumList::DC);
    EXPECT_EQ(choice, CSInfo(nullptr));
    EXPECT_EQ(choice.getFoundry(), nullptr);
    port = std::move(other);
    EXPECT_EQ(choice, chosen);
    EXPECT_EQ(choice.getFoundry(), &fab);
    EXPECT_EQ(&port.getCS(), &choice);
}

TEST(Port, KeepsTheChoiceThatItHandedOutWhenItIsMovedAway) {
    Fab const fab;
    Port port("in0", nullptr, EnumList::Optics), other("in1", nullptr, EnumList::Optics);
    CSInfo& choice = port.getCS();
    CSInfo& ofOther = other.getCS();
    choice.setFoundry(&fab);
    choice.setCS("strip");
    ofOther.setCS("rib");
    { Port const moved(std::move(port)); }
    EXPECT_EQ(choice.getFoundry(), &fab);
    choice.setCS("strip");
    EXPECT_EQ(&port.getCS(), &choice);
    std::swap(port, other);
    EXPECT_EQ(choice.getCSName(), "rib");
    EXPECT_EQ(ofOther.getCSName(), "strip");
    EXPECT_EQ(&port.getCS(), &choice);
    EXPECT_EQ(&other.getCS(), &ofOther);
}

TEST(Port, KeepsAChoiceThatIsReadOver) {
    Port port("in0", nullptr, EnumList::Optics), empty;
    std::stringstream stream(saved(empty));
    CSInfo& choice = port.getCS();
    choice.setCS("strip");
    BinaryStreamDeSerialiser reader(stream);
    ASSERT_TRUE(port.read(&reader));
    EXPECT_EQ(choice.getCSName(), "");
    EXPECT_EQ(&port.getCS(), &choice);
}

/// The choice alone, as the register of its own saves it.
std::string savedChoice(Port& port) { return saved(port.getCS()); }

TEST(Port, HasAChoiceThatSavesThatOfTheSavedSourceOfACopy) {
    Port source("in0", nullptr, EnumList::Optics), fresh("in0", nullptr, EnumList::Optics);
    saved(source);
    Port savedCopy(source), freshCopy(fresh), another(source), moved(std::move(another));
    for (Port* const port : {&source, &fresh}) port->getCS().setCS("source");
    for (Port* const port : {&savedCopy, &freshCopy, &moved}) port->getCS().setCS("copy");
    EXPECT_EQ(savedChoice(savedCopy), savedChoice(source));
    EXPECT_NE(savedChoice(freshCopy), savedChoice(fresh));
    EXPECT_EQ(savedChoice(freshCopy), savedChoice(moved));
}

TEST(Port, HasAChoiceOfItsOwnAfterAFreshOneWasAssigned) {
    Port assigned("in0", nullptr, EnumList::Optics), moved("in0", nullptr, EnumList::Optics);
    for (Port* const port : {&assigned, &moved}) saved(*port);
    Port const fresh("in0", nullptr, EnumList::Optics);
    assigned = fresh;
    moved = Port(fresh);
    for (Port* const port : {&assigned, &moved}) {
        Port copy(*port);
        port->getCS().setCS("source");
        copy.getCS().setCS("copy");
        EXPECT_NE(savedChoice(copy), savedChoice(*port));
    }
}

TEST(Port, StartsWithAFreshRegisterWhenMoved) {
    Pad const block;
    Port source("dc", &block, EnumList::DC);
    source.setCS(choiceOf("source"));
    std::string const before = saved(source);
    Port moved(std::move(source));

    EXPECT_EQ(moved.getName().getName(), "dc");
    EXPECT_EQ(moved.getDomain(), EnumList::DC);
    EXPECT_EQ(moved.getObject(), &block);
    EXPECT_EQ(saved(moved), before);
    moved.getCS().setCS("moved");
    EXPECT_NE(saved(moved), before);

    Port other;
    other.setCS(choiceOf("other"));
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

TEST(Port, HasItsOperationsInOrderAfterTheDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Port>);
    EXPECT_EQ(OpenPort::table(), (std::vector<std::size_t>{2, 3, 4, 5}));
}

TEST(Port, SavesItselfUnderItsFullNameWithItsNameAsTheComment) {
    OpenPort port("in0", nullptr, EnumList::Optics);

    EXPECT_EQ(port.getSerTypeName(), "BB::Port");
    EXPECT_EQ(port.getSerVerNo(), 1);
    EXPECT_EQ(port.getSerDoc(), "in0");
}

/// A block with ports of the test's making.
class ManyPorts : public BB {
public:
    ManyPorts() = default;
    ~ManyPorts() override = default;
    std::string getName() const override { return "manyPorts"; }
};

TEST(PortSearch, FindsTheFirstOfANameAfterEveryChange) {
    std::mt19937 random(9);
    auto const nameOf = [&] { return "p" + std::to_string(random() % 40); };
    ManyPorts block;
    for (int step = 0; step < 3000; ++step) {
        std::string const name = nameOf();
        auto const ports = static_cast<std::size_t>(block.endPort() - block.beginPort());
        if (step % 20 == 0) block.addPort(name, EnumList::Optics);
        auto const some = block.beginPort() + static_cast<std::ptrdiff_t>(random() % (ports + 1));
        if (step % 7 == 0 && some != block.endPort()) *some = BB::Port(nameOf(), &block, EnumList::DC);
        if (step % 11 == 0 && some != block.endPort()) {
            BB::Port const other(nameOf(), &block, EnumList::DC);
            *some = other;
        }
        if (step % 13 == 0 && some != block.endPort()) BB::Port const moved(std::move(*some));
        auto const expected = std::find_if(block.beginPort(), block.endPort(),
                                           [&](BB::Port const& p) { return p.getName().getName() == name; });
        ASSERT_EQ(block.getPort(name), expected == block.endPort() ? nullptr : &*expected) << step;
    }
}

TEST(PortSearch, FindsTheNextOfANameWhenTheFirstWasMovedAway) {
    ManyPorts block;
    for (int i = 0; i < 20; ++i) block.addPort(i == 0 || i == 5 ? "x" : "y", EnumList::Optics);
    EXPECT_EQ(block.getPort("x"), &*block.beginPort());
    Port outside("x", &block, EnumList::DC);
    outside = std::move(*block.beginPort());
    EXPECT_EQ(block.getPort("x"), &*(block.beginPort() + 5));
}

TEST(PortSearch, ReadsManyPortsEachIntoTheFirstOfItsName) {
    ManyPorts source, target;
    for (int i = 0; i < 60; ++i) source.addPort("p" + std::to_string(i % 45), EnumList::Optics);
    for (int i = 0; i < 60; ++i) (source.beginPort() + i)->setCS(sample::choiceOf("cs" + std::to_string(i), ""));
    for (int i = 10; i < 60; ++i) target.addPort("p" + std::to_string(i % 45), EnumList::Optics);
    std::stringstream stream;
    BinaryStreamSerialiser writer(stream);
    ASSERT_TRUE(source.BB::write(&writer));
    BinaryStreamDeSerialiser reader(stream);
    ASSERT_TRUE(target.BB::read(&reader));
    // A name that is there twice has the choice of its last port; nothing is appended, since no name is missing.
    ASSERT_EQ(target.endPort() - target.beginPort(), 50);
    for (int i = 0; i < 45; ++i)
        EXPECT_EQ(target.getPort("p" + std::to_string(i))->getCS().getCSName(),
                  "cs" + std::to_string(i < 15 ? i + 45 : i));
    EXPECT_EQ((target.beginPort() + 49)->getCS().getCSName(), "");
}

}  // namespace
