#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <vector>

#include "demo.h"
#include "plugins/foundrySampleFab/sample_fab.h"

// The second process: reads the design back and works on it.

namespace {

constexpr double kWavelengthUm = 1.55;

/// A parameter that is out of range.
struct Finding {
    std::string parameter;
    std::string complaint;
    vrl::BB* block;
};

/// A view on a block for as long as this object lives. A view is freed by whoever had it made.
class AttachedView {
public:
    AttachedView(vrl::BB& b, std::string const& k) : block(b), kind(k) {
        if (!vrl::TypeView<vrl::BB>::alloc(kind, &block)) throw Failure{vrlGetCoutMsg()};
    }
    AttachedView(AttachedView const&) = delete;
    AttachedView& operator=(AttachedView const&) = delete;
    ~AttachedView() {
        vrl::View* const view = block.getView(kind);
        block.del(kind);
        vrl::View::destroy(view);
    }
    vrl::View* operator->() const { return block.getView(kind); }

private:
    vrl::BB& block;
    std::string kind;
};

void load(vrl::Netlist& circuit, char const* file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw Failure{"cannot read \"" + std::string(file) + R"(". Make it with "vrl_demo build CONFIG DESIGN".)"};
    vrl::BinaryStreamDeSerialiser reader(stream);
    // A reader does not look at closing markers, and takes a count that is cut short for 0: the file has to end with
    // the design, no sooner and no later.
    bool const isWhole = circuit.read(&reader) && stream && stream.peek() == std::ifstream::traits_type::eof();
    if (!isWhole)
        throw Failure{"\"" + std::string(file) +
                      R"(" is damaged or no design. Make it again with "vrl_demo build CONFIG DESIGN".)"};
}

std::vector<Finding> findOutOfRange(vrl::Netlist& circuit) {
    std::vector<Finding> findings;
    visitElements(circuit, [&findings](std::string const& path, vrl::BB& block) {
        for (auto name = block.beginAttribute(); name != block.endAttribute(); ++name) {
            std::ostringstream complaint;
            if (!block.getAttribute(*name)->inSpec(complaint))
                findings.push_back({path + "." + *name, complaint.str(), &block});
        }
    });
    return findings;
}

/// Prints the lowest modes of a cross section, which it takes over.
void showModes(std::string const& what, vrl::CrossSection* made) {
    std::unique_ptr<vrl::CrossSection> const section(made);
    if (!section) throw Failure{"there is no cross section for " + what + "."};
    std::cout << "  " << what << ": " << section->getName() << ", " << section->getWidth() << " um wide";
    if (auto const* const waveguide = dynamic_cast<samplefab::WaveguideModes const*>(section.get())) {
        auto const modes = waveguide->modes(kWavelengthUm);
        for (auto const pol : {vrl::EnumList::TE, vrl::EnumList::TM}) {
            vrl::ModeLabel const label(0, pol, 0);
            std::ostringstream index;
            index << std::fixed << std::setprecision(4) << modes->neff(label).real();
            std::cout << ", " << label << " " << index.str();
        }
    }
    std::cout << "\n";
}

/// By the choice of each block that has a width; then straight from the foundry, at its standard width.
void showCrossSections(vrl::Netlist& circuit) {
    visitElements(circuit, [](std::string const& path, vrl::BB& block) {
        if (!block.find("width")) return;
        double const radius = block.find("radius") ? block.getDouble("radius") : 0.0;
        showModes(path, block.createCS(block.getDouble("width"), radius));
    });
    for (auto const& foundry : circuit.getFoundryUse())
        showModes(foundry.second->getName() + "'s shallow", foundry.second->createCS("shallow"));
}

void showFootprints(vrl::Netlist& circuit) {
    for (auto name = circuit.beginElementName(); name != circuit.endElementName(); ++name)
        if (vrl::BB* const block = circuit.getBB(name->second))
            std::cout << "  " << name->first << ": " << AttachedView(*block, "SampleFab/Layout")->describe() << "\n";
}

void pinNotes(std::vector<Finding> const& findings) {
    for (Finding const& finding : findings) {
        AttachedView const notes(*finding.block, "Demo/Notes");
        notes->getViewData().setString("note", finding.parameter + " has to change");
        std::cout << "  " << notes->describe() << "\n";
    }
}

}  // namespace

void check(char const* config, char const* file) {
    std::cout << "A saved design is checked\n\n1. The library starts, in a process of its own.\n\n";
    startLibrary(config);

    vrl::Netlist circuit;
    load(circuit, file);
    attachFoundries(circuit);
    std::cout << "\n2. " << circuit.sizeElements() << " elements are read back from " << file
              << " and attached to their foundry.\n";

    auto const findings = findOutOfRange(circuit);
    std::cout << "\n3. Out of range: " << findings.size() << ".\n\n";
    for (Finding const& finding : findings) std::cout << "  " << finding.parameter << ": " << finding.complaint;

    std::cout << "\n4. Cross sections, with effective indices at " << kWavelengthUm << " um.\n\n";
    showCrossSections(circuit);

    std::cout << "\n5. Views: the footprints, and a note on each finding.\n\n";
    showFootprints(circuit);
    pinNotes(findings);

    std::cout << "\n6. The netlist is printed, as it was built.\n\n";
    printDesign(circuit);
}
