#include "bench/queries.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "bench/kinds.h"
#include "bench/library.h"
#include "bench/plain.h"
#include "bench/sink.h"

namespace bench {

namespace {

using Work = std::function<void()>;

/// All numbers below a limit, in an order without order.
std::vector<std::size_t> shuffled(std::size_t limit) {
    std::vector<std::size_t> numbers(limit);
    for (std::size_t i = 0; i < limit; ++i) numbers[i] = i;
    std::shuffle(numbers.begin(), numbers.end(), std::mt19937(1));
    return numbers;
}

std::shared_ptr<vrl::Netlist> circuit(std::size_t blocks) {
    registerKinds();
    return buildNetlist(blocks);
}

/// Asks a circuit about each of its places, in an order without order.
template <class Ask>
Work askAll(std::size_t blocks, Ask ask) {
    return [netlist = circuit(blocks), places = shuffled(blocks), ask]() mutable {
        unsigned sum = 0;
        for (std::size_t const place : places) sum += ask(*netlist, place);
        benchmark::DoNotOptimize(sum);
    };
}

/// Asks a circuit once.
template <class Ask>
Work askOnce(std::size_t blocks, Ask ask) {
    return [netlist = circuit(blocks), ask] { ask(*netlist); };
}

// A block has two nodes of its own, at its inputs.
unsigned nodeOf(std::size_t place) { return static_cast<unsigned>(2 * place + 1); }

Work findNode(std::size_t blocks) {
    return askAll(blocks, [](vrl::Netlist& netlist, std::size_t place) {
        return netlist.findNode(elementName(place), kPorts[0]);
    });
}
Work findPort(std::size_t blocks) {
    return askAll(blocks,
                  [element = std::string(), port = std::string()](vrl::Netlist& netlist, std::size_t place) mutable {
                      return static_cast<unsigned>(netlist.findNode(nodeOf(place), &element, &port));
                  });
}
Work findNamedPort(std::size_t blocks) {
    return askAll(blocks, [element = std::string(), port = std::string(kPorts[0])](vrl::Netlist& netlist,
                                                                                   std::size_t place) mutable {
        return static_cast<unsigned>(netlist.findNamedNode(nodeOf(place), port, &element));
    });
}
Work findBlock(std::size_t blocks) {
    return askAll(blocks, [](vrl::Netlist& netlist, std::size_t place) {
        return static_cast<unsigned>(netlist.getBB(elementName(place)) != nullptr);
    });
}
Work findName(std::size_t blocks) {
    return askAll(blocks, [](vrl::Netlist& netlist, std::size_t place) {
        return static_cast<unsigned>(netlist.findElementName(static_cast<unsigned>(place + 1)).size());
    });
}

/// The blocks whose parameters are asked for: one all the time, or all in an order without order.
template <class Block, class BlockAt>
std::vector<Block*> asked(std::size_t blocks, bool hot, BlockAt blockAt) {
    std::vector<Block*> list;
    for (std::size_t const place : shuffled(blocks)) list.push_back(blockAt(hot ? 0 : place));
    return list;
}

template <bool kHot, class Use>
Work parametersOfLibrary(std::size_t blocks, Use use) {
    auto netlist = circuit(blocks);
    auto list = asked<vrl::BB>(blocks, kHot,
                               [&](std::size_t place) { return netlist->getBB(static_cast<unsigned>(place + 1)); });
    return [netlist, list, use, name = std::string(kLength.name)] {
        double sum = 0;
        for (vrl::BB* const block : list) use(*block, name, sum);
        benchmark::DoNotOptimize(sum);
    };
}
template <bool kHot, class Use>
Work parametersOfPlain(std::size_t blocks, Use use) {
    auto plain = std::make_shared<Circuit<Unique>>();
    plain->build(blocks);
    auto list = asked<Block<Unique>>(
        blocks, kHot, [&](std::size_t place) { return plain->blocks.at(static_cast<unsigned>(place + 1)).get(); });
    return [plain, list, use, name = std::string(kLength.name)] {
        double sum = 0;
        for (Block<Unique>* const block : list)
            use(static_cast<Typed<double>&>(*block->parameters.find(name)->second), sum);
        benchmark::DoNotOptimize(sum);
    };
}
template <bool kHot>
Work readParameter(std::size_t blocks) {
    return parametersOfLibrary<kHot>(
        blocks, [](vrl::BB& block, std::string const& name, double& sum) { sum += block.getDouble(name); });
}
template <bool kHot>
Work readPlainParameter(std::size_t blocks) {
    return parametersOfPlain<kHot>(blocks, [](Typed<double>& parameter, double& sum) { sum += parameter.value; });
}
Work setParameter(std::size_t blocks) {
    return parametersOfLibrary<false>(blocks, [](vrl::BB& block, std::string const& name, double& sum) {
        block.setDouble(name, 100 + (sum += 1e-9));
    });
}
Work setPlainParameter(std::size_t blocks) {
    return parametersOfPlain<false>(
        blocks, [](Typed<double>& parameter, double& sum) { parameter.value = 100 + (sum += 1e-9); });
}

Work print(std::size_t blocks) {
    return askOnce(blocks, [](vrl::Netlist& netlist) {
        Sink sink;
        std::ostream(&sink) << netlist;
    });
}
Work check(std::size_t blocks) {
    return askOnce(blocks, [](vrl::Netlist& netlist) {
        Sink sink;
        std::ostream out(&sink);
        vrl::Attributes& parameters = netlist;  // whose check is public, and that of the whole circuit
        benchmark::DoNotOptimize(parameters.inSpec(out));
    });
}
Work prepare(std::size_t blocks) {
    FactoryLoader<vrl::Foundry>::factory().Register<BenchFoundry>(kFoundry);
    return askOnce(blocks, [](vrl::Netlist& netlist) { netlist.prepare(); });
}
Work copy(std::size_t blocks) {
    auto copies = std::make_shared<std::vector<vrl::Netlist>>();
    return askOnce(blocks, [copies](vrl::Netlist& netlist) { copies->emplace_back(netlist); });
}

Work setBoundary(std::size_t nodes) {
    auto netlist = std::make_shared<vrl::Netlist>();
    return [netlist, nodes] {
        for (unsigned node = 1; node <= nodes; ++node)
            netlist->setInputNode(node).setOutputNode(node + static_cast<unsigned>(nodes)).setDCNode(node);
    };
}
Work findBoundary(std::size_t nodes) {
    auto netlist = std::make_shared<vrl::Netlist>();
    for (unsigned node = 1; node <= nodes; ++node) netlist->setInputNode(node);
    return [netlist, nodes] {
        for (unsigned node = 1; node <= nodes; ++node) netlist->setInputNode(node);
    };
}

/// A block of one kind with so many ports.
class WideBlock final : public vrl::BB {
public:
    explicit WideBlock(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) addPort("port" + std::to_string(i), vrl::EnumList::Optics);
    }
    std::string getName() const override { return "wideBlock"; }
};
Work findPortsOfBlock(std::size_t ports) {
    return [block = std::make_shared<WideBlock>(ports), places = shuffled(ports)] {
        for (std::size_t const place : places) benchmark::DoNotOptimize(block->getPort("port" + std::to_string(place)));
    };
}
Work readPortsOfBlock(std::size_t ports) {
    auto block = std::make_shared<WideBlock>(ports);
    std::ostringstream out;
    vrl::BinaryStreamSerialiser writer(out);
    block->write(&writer);
    return [block, bytes = out.str()] {
        std::istringstream in(bytes);
        vrl::BinaryStreamDeSerialiser reader(in);
        if (!block->read(&reader)) throw std::runtime_error("the block does not read back");
    };
}

}  // namespace

std::vector<Query> queries() {
    return {{"library/find-node", findNode},
            {"library/find-port", findPort},
            {"library/find-named-port", findNamedPort},
            {"library/find-block", findBlock},
            {"library/find-name", findName},
            {"library/read-parameter", readParameter<false>},
            {"hand-written/read-parameter", readPlainParameter<false>},
            {"library/read-one-parameter", readParameter<true>},
            {"hand-written/read-one-parameter", readPlainParameter<true>},
            {"library/set-parameter", setParameter},
            {"hand-written/set-parameter", setPlainParameter},
            {"library/print", print},
            {"library/check", check},
            {"library/prepare", prepare},
            {"library/copy", copy},
            {"library/set-boundary", setBoundary},
            {"library/find-boundary", findBoundary},
            {"library/find-ports-of-block", findPortsOfBlock},
            {"library/read-ports-of-block", readPortsOfBlock}};
}

Work startUp(std::size_t files) {
    namespace fs = std::filesystem;
    char const* const folder = std::getenv("BENCH_FOLDER");
    char const* const plugin = std::getenv("BENCH_PLUGIN");
    if (!folder || !plugin) throw std::runtime_error("set BENCH_FOLDER and BENCH_PLUGIN");
    fs::path const place = fs::path(folder) / ("plugins-" + std::to_string(files));
    fs::create_directories(place);
    fs::path const configuration = place / "VRLConfig.ini";
    std::ofstream lines(configuration);
    lines << "sodlldir_clear\nsodlldir_linux = " << place.string() << "\nsodllpostfix_linux = .so\n";
    for (std::size_t i = 0; i < files; ++i) {
        std::string const name = "bench" + std::to_string(i);
        fs::copy_file(plugin, place / ("lib_wn_" + name + ".so"), fs::copy_options::overwrite_existing);
        lines << "sodllfile = " << name << "\n";
    }
    lines.close();
    return [path = configuration.string(), files] {
        vrlConfigFile(path.c_str());
        vrlInit_vrllib(false, false);
        auto const kinds = std::distance(FactoryLoader<vrl::BB>::begin(), FactoryLoader<vrl::BB>::end());
        if (kinds < static_cast<std::ptrdiff_t>(files)) throw std::runtime_error("not all plug-ins were loaded");
    };
}

}  // namespace bench
