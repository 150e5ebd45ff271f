// A booklet of a foundry's blocks in LaTeX, assembled from the pieces that the classes write.
//
// The arguments are the configuration file and the file to write. Prints how many blocks are in it.

#include <iostream>

#include "vrllib/vrllib.h"

namespace {

/// Escapes what LaTeX takes for a command; the pieces of the library escape nothing.
std::string plain(std::string const& text) {
    std::string safe;
    for (char const c : texstream::id2tex(text)) {
        if (c == '%' || c == '&' || c == '#') safe += '\\';
        safe += c;
    }
    return safe;
}

void describePorts(vrl::BB& block, texstream& tex) {
    tex.os() << "Ports:";
    for (auto port = block.beginPort(); port != block.endPort(); ++port) {
        tex.os() << (port == block.beginPort() ? " " : ", ");
        port->toTex(tex).os() << " (" << vrl::EnumList::getName(port->getDomain()) << ")";
    }
    tex.os() << ".\n\n";
}

void describeParameters(vrl::BB& block, texstream& tex) {
    if (block.beginAttribute() == block.endAttribute()) return;
    tex.os() << "\\begin{longtable}{llp{7cm}}\n";
    for (auto name = block.beginAttribute(); name != block.endAttribute(); ++name) {
        tex.os() << plain(*name) << " & ";
        block.getAttribute(*name)->toTex(tex).os()
            << " " << plain(block.getUnits(*name)) << " & " << plain(block.getDescr(*name)) << " \\\\\n";
    }
    tex.os() << "\\end{longtable}\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "Usage: booklet CONFIG FILE\n";
        return 2;
    }
    vrlConfigFile(argv[1]);
    vrlInit_vrllib(false, true);
    std::cerr << vrlGetCoutMsg();

    texstream tex(argv[2], true);
    tex.docHeader("Blocks", 0);
    tex.docHdrInc();
    int blocks = 0;
    for (auto const& kind : FactoryLoader<vrl::BB>::factory()) {
        vrl::shared_ptr<vrl::BB> const block(vrl::BB::create(nullptr, kind.first));
        tex.docHeader(kind.first, 0).label("bb:", kind.first);
        describePorts(*block, tex);
        describeParameters(*block, tex);
        ++blocks;
    }
    tex.docHdrDec();
    tex.close(true);
    std::cout << blocks << " blocks\n";
    return tex.os() ? 0 : 1;
}
