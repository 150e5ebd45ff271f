#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <set>
#include <sstream>

#include "circuit/circuit.h"
#include "text/table.h"
#include "validate/child.h"
#include "validate/heap.h"
#include "validate/isolated.h"
#include "validate/made_objects.h"
#include "validate/process_state.h"

// What making and destroying objects does to the rest of the program. The parts of a composite come before it, and what
// they do is not reported of it again.

namespace vrltool::validate {

namespace {

/// Something that a plug-in makes, as often as wanted.
struct Product {
    std::string thing;
    std::function<std::shared_ptr<void>()> make;
    std::vector<std::string> parts{};  ///< the things in a composite, one for each element
};

template <class Make>
std::function<std::shared_ptr<void>()> viewMaker(Make const& make) {
    return [make] { return std::shared_ptr<void>(make(), [](vrl::View* view) { vrl::ptr_destroy(view); }); };
}

void addViews(std::vector<Product>& products, Target target, Keys const& keys) {
    for (std::string const& key : keys[target]) {
        if (key.empty()) continue;
        std::string const thing = keyText(kTargets[target], key);
        if (target == kComponentView)
            products.push_back({thing, viewMaker([key] { return vrl::View::create(key, nullptr, key); })});
        if (target == kBlockView)
            products.push_back(
                {thing, viewMaker([key]() -> vrl::View* { return vrl::TypeView<vrl::BB>::create(key, nullptr); })});
        if (target == kNetlistView)
            products.push_back({thing, viewMaker([key]() -> vrl::View* {
                                    return vrl::TypeView<vrl::Netlist>::create(key, nullptr);
                                })});
    }
}

std::vector<std::string> partsIn(MadeObject const& made) {
    std::vector<std::string> parts;
    if (!made.object.block() || !made.object.netlist()) return parts;
    for (Element const& element : circuitFrom(*made.object.netlist(), 0).elements)
        if (element.block && !element.isSecondName) parts.push_back(keyText(kTargets[kBlock], element.kind));
    return parts;
}

/// The things in each composite. They are looked for in a copy of the process, so that nothing was made in this one.
std::map<std::string, std::vector<std::string>> partsOfAll(Keys const& keys, Job const& job) {
    IsolatedResult const found = workIsolated(
        [&] {
            std::vector<std::string> pairs;
            for (Maker const& maker : makersOf(kBlock, keys))
                static_cast<void>(throwsText([&] {
                    for (std::string const& part : partsIn(maker.make())) {
                        pairs.push_back(maker.thing);
                        pairs.push_back(part);
                    }
                }));
            return pairs;
        },
        job.seconds);
    std::map<std::string, std::vector<std::string>> parts;
    for (std::size_t i = 0; i + 1 < found.strings.size(); i += 2)
        parts[found.strings[i]].push_back(found.strings[i + 1]);
    return parts;
}

/// All that the plug-in makes, composites last.
std::vector<Product> productsOf(Keys const& keys, Job const& job) {
    auto parts = partsOfAll(keys, job);
    std::vector<Product> products;
    for (Maker const& maker : allMakers(keys))
        products.push_back(
            {maker.thing, [maker] { return std::make_shared<MadeObject>(maker.make()); }, parts[maker.thing]});
    for (Target const target : {kComponentView, kBlockView, kNetlistView}) addViews(products, target, keys);
    std::stable_partition(products.begin(), products.end(), [](Product const& one) { return one.parts.empty(); });
    return products;
}

/// Makes and destroys one, with a look after each.
void cycle(Product const& product, Report& report, std::function<void(std::string const& when)> const& look) {
    report.step("making the " + product.thing, product.thing, kMakingHint);
    std::shared_ptr<void> made;
    static_cast<void>(throwsText([&] { made = product.make(); }));
    look("when it is made");
    report.step("destroying the " + product.thing, product.thing, kDestroyingHint);
    made.reset();
    look("when it is destroyed");
}

/// How long each product may be made, should it be slow: half of the time for all of them.
using Seconds = std::chrono::duration<double>;

constexpr unsigned kMostTimes = 20, kFewestTimes = 3;
constexpr unsigned kWarmUps = 2, kRounds = 4;

Seconds timeOf(unsigned times, Product const& product) {
    auto const start = std::chrono::steady_clock::now();
    for (unsigned i = 0; i < times; ++i) static_cast<void>(throwsText([&] { product.make(); }));
    return std::chrono::steady_clock::now() - start;
}

/// The bytes that stay in use each time, or nothing if it is too slow to be made often. Caches fill while it warms up;
/// after that, what grows in every round is lost.
std::optional<std::size_t> lostBytes(Product const& product, Seconds allowed) {
    double const fits = allowed / (timeOf(1, product) * (kWarmUps + kRounds));
    if (fits < kFewestTimes) return std::nullopt;
    unsigned const times = fits < kMostTimes ? static_cast<unsigned>(fits) : kMostTimes;
    timeOf(times * kWarmUps, product);
    std::size_t const start = heapInUse();
    std::size_t last = start;
    for (unsigned round = 0; round < kRounds; ++round) {
        timeOf(times, product);
        std::size_t const now = heapInUse();
        if (now < last + times) return 0;
        last = now;
    }
    return (last - start + times * kRounds / 2) / (times * kRounds);
}

std::string bytesText(std::size_t bytes) {
    if (bytes < 1000) return counted(bytes, "byte");
    std::ostringstream text;
    text.precision(1);
    text << std::fixed << static_cast<double>(bytes) / 1000.0 << " kB";
    return text.str();
}

}  // namespace

void checkObjectsQuiet(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const products = productsOf(*keys, job);
    std::set<std::string> reported{firstLine("")};
    printedSoFar();
    for (Product const& product : products)
        cycle(product, report, [&](std::string const& when) {
            std::string const line = firstLine(printedSoFar());
            if (reported.insert(line).second) report.find(product.thing, "prints " + line + " " + when);
        });
}

void checkObjectsState(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const products = productsOf(*keys, job);
    std::set<std::string> reported;
    auto before = processState();
    for (Product const& product : products)
        cycle(product, report, [&](std::string const& when) {
            auto const after = processState();
            for (std::size_t i = 0; i < before.size(); ++i)
                if (after[i].state != before[i].state && reported.insert(after[i].name).second)
                    report.find(product.thing, std::string("changes ") + after[i].name + " " + when);
            before = after;
        });
}

void checkObjectsFreed(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    auto const products = productsOf(*keys, job);
    Seconds const allowed = Seconds(job.seconds) / (2.0 * static_cast<double>(products.size()));
    std::map<std::string, std::size_t> lost;
    std::size_t slow = 0;
    for (Product const& product : products) {
        report.step("making the " + product.thing + " repeatedly", product.thing, kMakingHint);
        auto const bytes = lostBytes(product, allowed);
        if (!bytes) ++slow;
        std::size_t ofParts = 0;
        for (std::string const& part : product.parts) ofParts += lost[part];
        lost[product.thing] = bytes.value_or(0);
        if (bytes.value_or(0) > ofParts)
            report.find(product.thing, "loses " + bytesText(*bytes - ofParts) + " each time it is made and destroyed");
    }
    if (slow > 0) report.note(counted(slow, "kind") + " too slow to be made often; --seconds N gives more time");
}

void checkObjectsBounds(Job const& job, Report& report) {
    auto const keys = loadForCheck(job, report);
    if (!keys) return;
    std::set<void const*> reported;
    auto const look = [&](std::string const& thing, std::string const& when) {
        for (Overrun const& overrun : overrunsSoFar())
            if (reported.insert(overrun.caller).second)
                report.find(thing, "writes before or after the " + counted(overrun.size, "byte") +
                                       " that it took with new" + when);
    };
    look("", " while it is loaded");
    auto const products = productsOf(*keys, job);
    for (Product const& product : products)
        cycle(product, report, [&](std::string const& when) { look(product.thing, ", " + when); });
}

}  // namespace vrltool::validate
