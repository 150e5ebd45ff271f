#include "draw/selection.h"

#include <gtest/gtest.h>

#include "tests/tools/sample_circuit.h"
#include "text/failure.h"

namespace {

using vrl_test::SampleCircuit;
using vrltool::Circuit;
using vrltool::draw::Picture;

std::string shownNames(Circuit const& circuit, vrltool::draw::Selection const& selection) {
    std::string names;
    for (std::size_t i = 0; i < circuit.elements.size(); ++i)
        if (selection.shown[i]) names += circuit.elements[i].label() + " ";
    return names;
}

/// What a picture shows of the interferometer, and its notes.
std::pair<std::string, std::vector<std::string>> ofInterferometer(Picture const& picture) {
    SampleCircuit sample;
    addInterferometer(sample);
    Circuit const circuit = vrltool::circuitFrom(sample.netlist());
    auto const selection = selectionOf(circuit, picture);
    return {shownNames(circuit, selection), selection.notes};
}

using Notes = std::vector<std::string>;

TEST(Selection, ShowsEverythingWithoutBeingAsked) {
    EXPECT_EQ(ofInterferometer({}), std::pair(std::string("in join lower out split upper "), Notes{}));
}

TEST(Selection, ShowsANeighbourhood) {
    Picture picture;
    picture.around = "upper";
    EXPECT_EQ(ofInterferometer(picture), std::pair(std::string("join split upper "),
                                                   Notes{"hidden: 3 of 6 elements, more than 1 hop from 'upper'"}));
    picture.hops = 2;
    EXPECT_EQ(ofInterferometer(picture).first, "in join lower out split upper ");
    picture.hops = 0;
    EXPECT_EQ(ofInterferometer(picture),
              std::pair(std::string("upper "), Notes{"hidden: 5 of 6 elements, more than 0 hops from 'upper'"}));
}

TEST(Selection, TakesAtMostItsLimitFromTheInputsOn) {
    Picture picture;
    picture.max = 3;
    EXPECT_EQ(ofInterferometer(picture),
              std::pair(std::string("in split upper "), Notes{"hidden: 3 of 6 elements, past the limit of 3"}));
}

TEST(Selection, TakesAtMostItsLimitFromTheElementOn) {
    Picture picture;
    picture.around = "join";
    picture.max = 2;
    EXPECT_EQ(ofInterferometer(picture),
              std::pair(std::string("join upper "), Notes{"hidden: 2 of 6 elements, more than 1 hop from 'join'",
                                                          "hidden: 2 of 6 elements, past the limit of 2"}));
}

TEST(Selection, HasNoLimitAtZero) {
    Picture picture;
    picture.max = 0;
    EXPECT_EQ(ofInterferometer(picture).second, Notes{});
}

TEST(Selection, DoesNotWalkAlongACommonGround) {
    SampleCircuit sample;
    for (char const* const name : {"a", "b", "c"}) sample.add(name, "sfPhaseModulator");
    sample.join("a,ground", "b,ground").join("a,ground", "c,ground").join("a,out0", "b,in0");
    Circuit const circuit = vrltool::circuitFrom(sample.netlist());
    Picture picture;
    picture.around = "a";
    picture.hops = 5;
    EXPECT_EQ(shownNames(circuit, selectionOf(circuit, picture)), "a b ");
}

TEST(Selection, OpensCompositesWhileThereIsRoom) {
    SampleCircuit sample;
    sample.add("a", "sfPushPullArms").add("b", "sfPushPullArms").add("c", "sfPushPullArms");
    Circuit const circuit = vrltool::circuitFrom(sample.netlist());
    Picture picture;
    picture.max = 9;
    auto const selection = selectionOf(circuit, picture);
    EXPECT_EQ(selection.open.count(circuit.elements[0].inside.get()), 1u);
    EXPECT_EQ(selection.open.count(circuit.elements[1].inside.get()), 1u);
    EXPECT_EQ(selection.open.count(circuit.elements[2].inside.get()), 0u);
    EXPECT_EQ(selection.notes, Notes{"closed: 1 composite, past the limit of 9"});
}

TEST(Selection, CountsConnectionsOfMissingElements) {
    SampleCircuit sample;
    sample.add("a", "sfBend");
    Circuit circuit = vrltool::circuitFrom(sample.netlist());
    circuit.danglingConnections.emplace_back("ghost", "in0");
    EXPECT_EQ(vrltool::draw::selectionOf(circuit, {}).notes, Notes{"left out: 1 connection of missing elements"});
}

TEST(Selection, SaysThatACircuitIsEmpty) {
    SampleCircuit sample;
    Circuit const circuit = vrltool::circuitFrom(sample.netlist());
    EXPECT_EQ(vrltool::draw::selectionOf(circuit, {}).notes, Notes{"the circuit has no elements"});
}

}  // namespace
