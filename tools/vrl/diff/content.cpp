#include "diff/content.h"

#include <algorithm>

#include "diff/properties.h"
#include "diff/wiring.h"

namespace vrltool::diff {

namespace {

/// Concatenates strings so that no two sequences have the same result.
class Texts {
public:
    Texts& add(std::string const& text) {
        all += std::to_string(text.size()) + ":" + text;
        return *this;
    }
    std::string take() { return std::move(all); }

private:
    std::string all;
};

void addNotes(Texts& texts, vrl::Annotations const& notes) {
    for (auto const& note : notes.list()) texts.add(note.first).add(note.second);
    texts.add("");
}

void addChoice(Texts& texts, vrl::Foundry::CSInfo const& choice) {
    texts.add(choice.getCSName()).add(choice.getFlowName());
}

void addBlock(Texts& texts, vrl::BB& block) {
    texts.add(block.getFoundryName());
    addChoice(texts, block.vrl::BB::getCS());
    for (auto port = block.beginPort(); port != block.endPort(); ++port) {
        texts.add(port->getName().getName());
        addChoice(texts, port->getCS());
    }
    addNotes(texts, block);
    for (Parameter const& parameter : parametersOf(block)) {
        ParameterState const state = stateOf(parameter);
        texts.add(parameter.name).add(state.type).add(state.text).add(state.expression);
        texts.add(state.calculated ? "calculated" : "").add(state.autoChangeable ? "auto" : "");
        addNotes(texts, *parameter.attribute);
    }
}

void addNet(Texts& texts, Wiring const& wiring, Wiring::Net const& net) {
    for (Wiring::PortPlace const& port : net.ports)
        texts.add(wiring.parts[port.part].name).add(wiring.parts[port.part].connections[port.connection].port);
    texts.add("");
}

void addInside(Texts& texts, Circuit const& inside, vrl::Netlist const& netlist) {
    Wiring const wiring = wiringOf(inside, netlist);
    std::vector<std::string> nameless;
    for (Element const& element : inside.elements) {
        if (element.name.empty())
            nameless.push_back(contentOf(element));
        else
            texts.add(element.name).add(contentOf(element));
    }
    std::sort(nameless.begin(), nameless.end());
    for (std::string const& content : nameless) texts.add(content);
    for (Wiring::Net const& net : wiring.nets) addNet(texts, wiring, net);
    for (auto const& list : wiring.boundary) {
        texts.add("boundary");
        for (std::size_t const net : list) addNet(texts, wiring, wiring.nets[net]);
    }
}

}  // namespace

std::string contentOf(Element const& element) {
    Texts texts;
    texts.add(element.kind);
    if (element.block) addBlock(texts, *element.block);
    if (element.inside) addInside(texts, *element.inside, *dynamic_cast<vrl::CBB*>(element.block)->getAsNetlist());
    return texts.take();
}

}  // namespace vrltool::diff
