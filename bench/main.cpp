#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

#include "bench/measured.h"
#include "bench/peer.h"
#include "bench/queries.h"
#include "bench/sink.h"

// Each benchmark is one operation on a circuit, "PEER/OPERATION/BLOCKS", and runs once: scripts/bench starts a process
// for each run, since a used heap alone makes a load several times slower.

namespace bench {

namespace {

struct Entry {
    char const* name;
    std::unique_ptr<Peer> (*create)();
};
constexpr Entry kPeers[] = {
    {"library", library},         {"cereal-unique", cerealUnique}, {"cereal-shared", cerealShared},
    {"boost", boostUnique},       {"protobuf", protobuf},          {"json", json},
    {"hand-written", handWritten}};

/// The bytes of all live allocations.
double liveHeap() {
    auto const info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

/// The saved circuit, as a run of "save" left it in the folder BENCH_FOLDER; empty, and nothing is kept, without one.
std::string fileOf(std::string const& peer, std::size_t blocks) {
    char const* const folder = std::getenv("BENCH_FOLDER");
    return folder ? std::string(folder) + "/" + peer + "-" + std::to_string(blocks) + ".bin" : "";
}

std::string bytesOf(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// One run: what is prepared before, what is measured, and what becomes of the heap.
class Run {
public:
    Run(Entry const& e, std::size_t b, benchmark::State& s) : entry(e), blocks(b), state(s), peer(e.create()) {}

    void build() {
        measureHeap([this] { peer->build(blocks); });
        checkSum();
    }
    void save() {
        peer->build(blocks);
        std::string const bytes = measureSave(), path = fileOf(entry.name, blocks);
        if (!path.empty()) std::ofstream(path, std::ios::binary) << bytes;
    }
    void saveAgain() {
        peer->build(blocks);
        Sink sink;
        std::ostream first(&sink);
        peer->save(first);
        measureSave();
    }
    /// Over what was saved before, so that no memory for the bytes is needed.
    void saveOver() {
        peer->build(blocks);
        std::ostringstream out;
        peer->save(out);
        out.seekp(0);
        for (auto _ : state) measured([&] { peer->save(out); });
    }
    void saveFile() {
        peer->build(blocks);
        std::string const path = fileOf(entry.name, blocks) + ".save";
        for (auto _ : state)
            measured([&] {
                std::ofstream out(path, std::ios::binary);
                peer->save(out);
            });
        std::remove(path.c_str());
    }
    void saveLoaded() {
        std::istringstream in(saved());
        peer->load(in);
        measureSave();
    }
    void load() {
        std::istringstream in(saved());
        measureHeap([&] { peer->load(in); });
        checkSum();
    }
    void loadFile() {
        saved();  // so that the file is in the memory of the system
        std::ifstream in(fileOf(entry.name, blocks), std::ios::binary);
        measureHeap([&] { peer->load(in); });
        checkSum();
    }
    void free() {
        peer->build(blocks);
        measureHeap([this] { peer->free(); });
    }
    void copyBytes() {
        std::string const bytes = saved();
        std::string copy;
        measureHeap([&] { copy.assign(bytes.begin(), bytes.end()); });
        benchmark::DoNotOptimize(copy.data());
    }

private:
    std::string saved() {
        std::string bytes = bytesOf(fileOf(entry.name, blocks));
        if (bytes.empty())
            throw std::runtime_error("no saved circuit; set BENCH_FOLDER, and run the operation 'save' first");
        state.counters["bytes"] = static_cast<double>(bytes.size()) / static_cast<double>(blocks);
        return bytes;
    }

    void measureHeap(std::function<void()> const& work) {
        double const before = liveHeap();
        for (auto _ : state) measured(work);
        state.counters["heap"] = (liveHeap() - before) / static_cast<double>(blocks);
    }

    /// The bytes that were written do not count as heap of the circuit.
    std::string measureSave() {
        double const before = liveHeap();
        std::ostringstream out;
        for (auto _ : state) measured([&] { peer->save(out); });
        std::string bytes = out.str();
        state.counters["bytes"] = static_cast<double>(bytes.size()) / static_cast<double>(blocks);
        std::ostringstream().swap(out);
        state.counters["heap"] =
            (liveHeap() - before - static_cast<double>(bytes.capacity())) / static_cast<double>(blocks);
        return bytes;
    }

    /// A circuit that is not the right one must not count as fast.
    void checkSum() {
        std::unique_ptr<Peer> const model = handWritten();
        model->build(blocks);
        if (model->checksum() != peer->checksum())
            throw std::runtime_error("the circuit is not the one that was built");
    }

    Entry const& entry;
    std::size_t blocks;
    benchmark::State& state;
    std::unique_ptr<Peer> peer;
};

struct Operation {
    char const* name;
    void (Run::*run)();
};
constexpr Operation kOperations[] = {
    {"build", &Run::build},         {"save", &Run::save},          {"save-again", &Run::saveAgain},
    {"save-over", &Run::saveOver},  {"save-file", &Run::saveFile}, {"save-loaded", &Run::saveLoaded},
    {"load", &Run::load},           {"load-file", &Run::loadFile}, {"free", &Run::free},
    {"copy-bytes", &Run::copyBytes}};

/// A benchmark that runs once and fails with the text of what it throws.
template <class Once>
void registerOnce(std::string const& name, std::size_t blocks, Once once) {
    benchmark::RegisterBenchmark((name + "/" + std::to_string(blocks)).c_str(),
                                 [once, blocks](benchmark::State& state) {
                                     try {
                                         once(state, blocks);
                                     } catch (std::exception const& error) {
                                         state.SkipWithError(error.what());
                                     }
                                 })
        ->Iterations(1)
        ->Unit(benchmark::kMicrosecond);
}

void registerQuery(std::string const& name, std::size_t blocks, std::function<void()> (*prepare)(std::size_t)) {
    registerOnce(name, blocks, [prepare](benchmark::State& state, std::size_t count) {
        std::function<void()> const work = prepare(count);
        for (auto _ : state) measured(work);
    });
}

void registerAll() {
    for (std::size_t const blocks : {500, 1000, 10000, 100000, 1000000}) {
        for (Entry const& entry : kPeers)
            for (Operation const& operation : kOperations)
                registerOnce(std::string(entry.name) + "/" + operation.name, blocks,
                             [&entry, &operation](benchmark::State& state, std::size_t count) {
                                 Run run(entry, count, state);
                                 (run.*operation.run)();
                             });
        for (Query const& query : queries()) registerQuery(query.name, blocks, query.prepare);
    }
    for (std::size_t const files : {1, 10, 100}) registerQuery("library/start-up", files, startUp);
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
    bench::registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
    return benchmark::RunSpecifiedBenchmarks() > 0 ? 0 : 2;
}
