#include "vrllib/model/composite.h"

#include <iterator>
#include <memory>
#include <sstream>
#include <type_traits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/model/listener.h"
#include "tests/model/sample_views.h"
#include "tests/support/sample_design.h"

namespace {

using namespace Vorlane_v1_0;
using sample::Fab;
using sample::Mmi;
using sample::Pad;
using sample::printed;
using sample::saved;
using testing::ElementsAre;
using CSInfo = Foundry::CSInfo;

/// A composite with an outer port, an inner block and a parameter.
class Splitter : public CBB {
public:
    explicit Splitter(Foundry const* foundry) : BB(foundry), CBB(foundry) {
        addPort("in0", EnumList::Optics);
        addBB(new Mmi, "inner");
        setInputNode(1);
        addDouble("ratio", 0.5);
    }
    std::string getName() const override { return "splitter"; }
};

/// Opens the protected operations of a composite.
struct OpenComposite : CBB {
    OpenComposite() : CBB(nullptr) {}
    using CBB::getSerDoc;
    using CBB::getSerRegister;
    using CBB::getSerTypeName;
    using CBB::getSerVerNo;

    /// The registers of the component parts, by the bytes that they write.
    std::string savedAsPartOfTheBlock() { return bytesOf(*BB::getSerRegister()); }
    std::string savedAsPartOfTheNetlist() { return bytesOf(*Netlist::getSerRegister()); }

private:
    static std::string bytesOf(SerRegister& members) {
        std::ostringstream stream;
        BinaryStreamSerialiser writer(stream);
        members.write(&writer);
        return stream.str();
    }
};

std::vector<unsigned> inputsOf(Netlist const& netlist) { return {netlist.beginInputNodes(), netlist.endInputNodes()}; }

class Composite : public testing::Test {
protected:
    void SetUp() override { resetUniqueIDs(); }
    void TearDown() override { resetUniqueIDs(); }
};

TEST_F(Composite, HasTwoComponentPartsAndOneListAndOneRegisterOfViews) {
    EXPECT_TRUE((std::is_base_of_v<Component, CBB>));
    EXPECT_FALSE((std::is_convertible_v<CBB*, Component*>));
    EXPECT_TRUE((std::is_convertible_v<CBB*, Attributes*>));
    EXPECT_TRUE((std::is_convertible_v<CBB*, RegisterView*>));
    EXPECT_TRUE((std::is_convertible_v<CBB*, BB*>));
    EXPECT_TRUE((std::is_convertible_v<CBB*, Netlist*>));
    EXPECT_TRUE(std::has_virtual_destructor_v<CBB>);

    Splitter composite(nullptr);
    Component& ofBlock = *composite.getAsBB();
    Component& ofNetlist = *composite.getAsNetlist();
    EXPECT_NE(&ofBlock, &ofNetlist);
    EXPECT_EQ(static_cast<Attributes*>(&ofBlock), static_cast<Attributes*>(&ofNetlist));
    EXPECT_EQ(static_cast<RegisterView*>(&ofBlock), static_cast<RegisterView*>(&ofNetlist));
}

TEST_F(Composite, SharesItsParametersBetweenItsSides) {
    CBB composite(nullptr);
    composite.getAsBB()->addDouble("x", 1.0);
    composite.getAsNetlist()->addDouble("y", 2.0);

    EXPECT_EQ(composite.getAsNetlist()->getDouble("x"), 1.0);
    EXPECT_EQ(composite.getAsBB()->getDouble("y"), 2.0);
    EXPECT_EQ(printed(*composite.getAsNetlist()), "Parameters{\n"
                                                  "  x= 1\n"
                                                  "  y= 2\n"
                                                  "  }\n"
                                                  "Port{N -> N}\n"
                                                  "Building blocks{\n"
                                                  " }\n");
    EXPECT_EQ(printed(*composite.getAsBB()), "=== X ===\n"
                                             "  x= 1\n"
                                             "  y= 2\n");
}

TEST_F(Composite, SharesItsViewsBetweenItsSides) {
    auto const kind = sample::registered<sample::TypedNote<BB>>(FactoryLoader<TypeView<BB>>::factory(), "note");
    CBB composite(nullptr);
    EXPECT_TRUE(TypeView<BB>::alloc("note", composite.getAsBB()));
    View* const view = composite.getAsNetlist()->getView("note");

    ASSERT_NE(view, nullptr);
    EXPECT_EQ(view, composite.getAsBB()->getView("note"));
    EXPECT_TRUE(TypeView<Netlist>::alloc("note", composite.getAsNetlist()));
    View::destroy(view);
}

TEST_F(Composite, ReturnsItsSidesAsConstantAsItIs) {
    CBB composite(nullptr);
    CBB const& constant = composite;

    EXPECT_EQ(constant.getAsBB(), composite.getAsBB());
    EXPECT_EQ(constant.getAsNetlist(), composite.getAsNetlist());
    EXPECT_TRUE((std::is_same_v<decltype(composite.getAsBB()), BB*>));
    EXPECT_TRUE((std::is_same_v<decltype(constant.getAsBB()), BB const*>));
    EXPECT_TRUE((std::is_same_v<decltype(composite.getAsNetlist()), Netlist*>));
    EXPECT_TRUE((std::is_same_v<decltype(constant.getAsNetlist()), Netlist const*>));
}

// Calls that may go to null, which the sanitisers leave alone here.
__attribute__((no_sanitize("undefined"), noinline)) BB* blockOf(CBB* composite) { return composite->getAsBB(); }
__attribute__((no_sanitize("undefined"), noinline)) BB const* blockOf(CBB const* composite) {
    return composite->getAsBB();
}
__attribute__((no_sanitize("undefined"), noinline)) Netlist* netlistOf(CBB* composite) {
    return composite->getAsNetlist();
}
__attribute__((no_sanitize("undefined"), noinline)) Netlist const* netlistOf(CBB const* composite) {
    return composite->getAsNetlist();
}

TEST_F(Composite, ReturnsNullForTheSidesOfANullPointer) {
    CBB* volatile hidden = nullptr;  // from the compiler, which warns where it knows
    CBB* const none = hidden;
    CBB const* const constantNone = none;

    EXPECT_EQ(blockOf(none), nullptr);
    EXPECT_EQ(blockOf(constantNone), nullptr);
    EXPECT_EQ(netlistOf(none), nullptr);
    EXPECT_EQ(netlistOf(constantNone), nullptr);
    CBB composite(nullptr);
    EXPECT_EQ(blockOf(&composite), composite.getAsBB());
    EXPECT_EQ(netlistOf(&composite), composite.getAsNetlist());
}

TEST_F(Composite, IsSafeOnTheResultOfAFailedCast) {
    Pad pad;
    BB* const block = &pad;

    EXPECT_EQ(netlistOf(dynamic_cast<CBB*>(block)), nullptr);
}

TEST_F(Composite, ReturnsTheChoiceOfItsBlockSide) {
    CBB composite(nullptr);
    CBB const& constant = composite;

    EXPECT_EQ(&composite.getCS(), &composite.getAsBB()->getCS());
    EXPECT_EQ(&constant.getCS(), &constant.getAsBB()->getCS());
    EXPECT_TRUE((std::is_same_v<decltype(composite.getCS()), CSInfo&>));
    EXPECT_TRUE((std::is_same_v<decltype(constant.getCS()), CSInfo const&>));
}

TEST_F(Composite, KeepsTheNamesOfItsSidesSeparate) {
    CBB composite(nullptr);

    EXPECT_EQ(composite.getAsBB()->getName(), "X");
    EXPECT_EQ(composite.getAsNetlist()->getName(), "Netlist");
    EXPECT_TRUE(composite.getAsBB()->isAllowed(CSInfo(nullptr)));
    EXPECT_EQ(&composite.getAsBB()->getCS(BB::Port()), &composite.getCS());
    EXPECT_EQ(&composite.getCS(BB::Port()), &composite.getCS());
}

TEST_F(Composite, TakesOverItsFoundry) {
    Fab fab("Fabrikat");
    fab.setCS("wg");
    CBB composite(&fab);

    EXPECT_EQ(composite.getFoundry(), &fab);
    EXPECT_EQ(composite.getFoundryName(), "Fabrikat");
    EXPECT_EQ(composite.getCS().getCSName(), "wg");
}

std::vector<std::string> events;

/// A foundry that notes when it is asked for its name.
class NotingFab : public Fab {
public:
    std::string getName() const override {
        events.push_back("foundry asked");
        return "noting";
    }
};

TEST_F(Composite, BuildsItsBlockSideBeforeItsNetlistSide) {
    NotingFab const fab;
    events.clear();
    Listener<Netlist> const listener([](std::string const& event, Netlist*) { events.push_back(event + " netlist"); });
    { CBB const composite(&fab); }

    EXPECT_THAT(events, ElementsAre("foundry asked", "create netlist", "destroy netlist"));
}

TEST_F(Composite, PassesThroughTheCallbacksOfBothSides) {
    auto const kind = sample::registered<Splitter>(FactoryLoader<BB>::factory(), "splitter");
    events.clear();
    Listener<Netlist> const netlists([](std::string const& event, Netlist*) { events.push_back(event + " netlist"); });
    Listener<BB> const blocks(
        [](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    BB* const made = BB::create(nullptr, "splitter");
    EXPECT_NE(dynamic_cast<CBB*>(made), nullptr);
    BB::destroy(made);

    EXPECT_THAT(events,
                ElementsAre("create netlist", "create splitter", "destroy splitter", "destroy netlist", "destroy mmi"));
}

TEST_F(Composite, IsMadeForItsFoundryByTheBlockFactory) {
    auto const kind = sample::registered<Splitter>(FactoryLoader<BB>::factory(), "splitter");
    Fab const fab("Fabrikat");
    shared_ptr<BB> const made(BB::create(&fab, "splitter"));

    EXPECT_EQ(made->getFoundry(), &fab);
    EXPECT_EQ(made->getFoundryName(), "Fabrikat");
}

TEST_F(Composite, IsFreedAsAnElementWithItsNetlist) {
    events.clear();
    Listener<BB> const blocks(
        [](std::string const& event, BB* block) { events.push_back(event + " " + block->getName()); });
    {
        Netlist outer;
        outer.addBB((new Splitter(nullptr))->getAsBB(), "s");
    }
    EXPECT_THAT(events, ElementsAre("destroy splitter", "destroy mmi"));
}

TEST_F(Composite, KeepsOuterPortsAndInnerBoundarySeparate) {
    CBB composite(nullptr);
    composite.addPort("in0", EnumList::Optics);
    composite.setOutputNode(7);

    EXPECT_EQ(std::distance(composite.beginPort(), composite.endPort()), 1);
    EXPECT_EQ(std::distance(composite.beginOutputNodes(), composite.endOutputNodes()), 1);
    EXPECT_EQ(composite.beginInputNodes(), composite.endInputNodes());
    EXPECT_EQ(composite.beginPort()->getObject(), composite.getAsBB());
}

TEST_F(Composite, CopiesParametersViewsGraphAndChoiceAndNoPorts) {
    Fab fab("Fabrikat");
    fab.setCS("wg");
    Splitter source(&fab);
    sample::PlainNote note(source.getAsBB(), "tool");
    CBB copy(source);

    EXPECT_EQ(copy.sizeElements(), 1U);
    EXPECT_EQ(copy.getBB("inner"), source.getBB("inner"));
    EXPECT_THAT(inputsOf(copy), ElementsAre(1));
    EXPECT_EQ(copy.beginPort(), copy.endPort());
    EXPECT_EQ(copy.getAttribute("ratio"), source.getAttribute("ratio"));
    EXPECT_EQ(copy.getView("tool"), &note);
    EXPECT_EQ(copy.getFoundry(), &fab);
    EXPECT_EQ(copy.getFoundryName(), "Fabrikat");
    EXPECT_EQ(copy.getCS().getCSName(), "wg");
}

TEST_F(Composite, SharesItsInnerBlocksButNotItsTablesWithACopy) {
    Splitter source(nullptr);
    CBB copy(source);
    copy.addBB(new Pad, "more");
    copy.getBB("inner")->setDouble("length", 20.0);

    EXPECT_EQ(copy.sizeElements(), 2U);
    EXPECT_EQ(source.sizeElements(), 1U);
    EXPECT_EQ(source.getBB("inner")->getDouble("length"), 20.0);
}

TEST_F(Composite, CopiesTheRegistersOfItselfAndOfTheNetlistUnchanged) {
    OpenComposite source;
    std::string const whole = saved(static_cast<CBB&>(source));
    std::string const asBlock = source.savedAsPartOfTheBlock();
    std::string const asNetlist = source.savedAsPartOfTheNetlist();
    OpenComposite copy(source);
    copy.addAnnotation("note", "of the copy");

    EXPECT_EQ(saved(static_cast<CBB&>(copy)), whole);
    EXPECT_EQ(copy.savedAsPartOfTheNetlist(), asNetlist);
    EXPECT_NE(copy.savedAsPartOfTheBlock(), asBlock);  // a block's register starts fresh
}

TEST_F(Composite, AssignsBothSidesAndKeepsItsPorts) {
    Fab fab("Fabrikat");
    fab.setCS("wg");
    Splitter source(&fab);
    sample::PlainNote note(source.getAsBB(), "tool");
    CBB target(nullptr);
    target.addPort("dc", EnumList::DC);
    target.addDouble("old", 1.0);
    target.addBB(new Pad, "old");

    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.getFoundry(), &fab);
    EXPECT_EQ(target.getFoundryName(), "Fabrikat");
    EXPECT_EQ(target.getCS().getCSName(), "wg");
    EXPECT_EQ(target.getBB("inner"), source.getBB("inner"));
    EXPECT_EQ(target.getBB("old"), nullptr);
    EXPECT_THAT(inputsOf(target), ElementsAre(1));
    EXPECT_EQ(target.getAttribute("ratio"), source.getAttribute("ratio"));
    EXPECT_FALSE(target.find("old"));
    EXPECT_EQ(target.getView("tool"), &note);
    EXPECT_EQ(std::distance(target.beginPort(), target.endPort()), 1);
    EXPECT_EQ(target.beginPort()->getName().getName(), "dc");
}

TEST_F(Composite, AssignsTheRegisterThatTheSourceHas) {
    CBB source(nullptr);
    std::string const before = saved(source);
    CBB target(nullptr);
    target = source;
    target.addAnnotation("note", "of the target");

    EXPECT_EQ(saved(target), before);
}

TEST_F(Composite, KeepsEverythingWhenAssignedToItself) {
    Splitter composite(nullptr);
    CBB& target = composite;
    CBB const& same = composite;
    std::string const before = saved(target);
    target = same;

    EXPECT_EQ(composite.sizeElements(), 1U);
    EXPECT_EQ(composite.getDouble("ratio"), 0.5);
    EXPECT_EQ(std::distance(composite.beginPort(), composite.endPort()), 1);
    EXPECT_EQ(saved(target), before);
}

TEST_F(Composite, IsCheckedByItsInnerBlocks) {
    Splitter composite(nullptr);
    composite.addAttribute(new ValueRange<int, Value<int>>("n", 11, 0, 10));
    Attributes const& list = composite;
    std::ostringstream complaints;
    EXPECT_TRUE(list.inSpec(complaints));
    EXPECT_EQ(complaints.str(), "");

    composite.getBB("inner")->setDouble("length", 120.0);
    vrlCoutReset();
    EXPECT_FALSE(list.inSpec(complaints));
    EXPECT_EQ(complaints.str(), "The netlist contains errors!\n"
                                "\n"
                                "*** The attribute list contains errors: ***\n"
                                "The value \"120\" is out of range for Double. Accepted range is [0,100]\n"
                                "\n"
                                "\n");
}

TEST_F(Composite, IsSavedUnderTheKindOfItsBlockSide) {
    OpenComposite plain;

    EXPECT_EQ(plain.getSerTypeName(), "X");
    EXPECT_EQ(plain.getSerVerNo(), 1);
    EXPECT_EQ(plain.getSerDoc(), "");
    EXPECT_EQ(plain.getSerRegister()->size(), 13U);
}

TEST_F(Composite, IsABlockInANetlist) {
    Netlist outer;
    outer.addBB((new Splitter(nullptr))->getAsBB(), "s", 4);
    outer.addNode("s", "in0", 1);

    EXPECT_EQ(printed(outer), "Parameters{--}\n"
                              "Port{N -> N}\n"
                              "Building blocks{\n"
                              " s = splitter(in0=N1) cmpID=4\n"
                              " }\n");
}

}  // namespace
