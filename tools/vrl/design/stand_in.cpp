#include "design/stand_in.h"

#include <algorithm>

#include "text/table.h"

namespace vrltool {

namespace {

/// What a factory cannot pass to a creator, or return from it: the kind that is being made, and the last block.
struct Making {
    std::string kind;
    StandInBlock* lastBlock = nullptr;
};

Making& making() {
    static Making state;
    return state;
}

/// A parameter of a type of which nothing is known: name, unit, description and expression are all that is read.
class UnknownAttribute final : public vrl::AttributeWithExpr {
public:
    explicit UnknownAttribute(std::string const& name) : AttributeWithExpr(name), type(making().kind) {}
    std::string getType() const override { return type; }
    std::string getStringValue() const override { return "?"; }
    std::ostream& operator<<(std::ostream& os) const override { return os << "?"; }
    std::ostream& toCpp(std::ostream& os, std::string const&) const override { return os << "/* " << type << " */"; }

protected:
    std::string getSerTypeName() override { return type; }

private:
    std::string type;
};

/// A ranged value with the flag is saved under a type that no factory has: its block declares it. Without its block it
/// is read as the plain value; its bounds were never in the file.
template <class T>
class FlaggedValue final : public vrl::Value<T> {
public:
    explicit FlaggedValue(std::string const& name) : vrl::Value<T>(name), type(making().kind) {}

protected:
    std::string getSerTypeName() override { return type; }

private:
    std::string type;
};

/// What makes a parameter of a missing type.
struct AttributeMaker {
    char const* type;
    bool readsValue;
    vrl::Attribute* (*make)();
    void (*enter)(FactoryNoArg<std::string, vrl::Attribute>& factory, std::string const& type);
};

template <class A>
AttributeMaker makerOf(char const* type, bool readsValue) {
    return {type, readsValue, []() -> vrl::Attribute* { return new A(""); },
            [](auto& factory, std::string const& key) { factory.template Register<A>(key); }};
}

AttributeMaker const& makerFor(std::string const& type) {
    static AttributeMaker const makers[] = {
        makerOf<FlaggedValue<int>>("AutoValueRange<vrl::Int>", true),
        makerOf<FlaggedValue<double>>("AutoValueRange<vrl::Double>", true),
        makerOf<FlaggedValue<std::complex<double>>>("AutoValueRange<vrl::Complex>", true),
        makerOf<UnknownAttribute>("", false)};
    AttributeMaker const* maker = makers;
    while (maker->type[0] != '\0' && type != maker->type) ++maker;
    return *maker;
}

// The ids under which the library saves what this reader has to know of.
std::string const kBlocks = vrl::Netlist::getSerId("BBList");
std::string const kParameters = vrl::Attributes::getSerId("attributes");
std::string const kPorts = vrl::BB::getSerId("ports");

}  // namespace

std::string makingText(char const* word, std::string const& kind) {
    return std::string("making the ") + word + " '" + printable(kind) + "'";
}

StandInBlock::StandInBlock(vrl::Foundry const* foundry) : BB(foundry), CBB(foundry), kind(making().kind) {
    making().lastBlock = this;
}

StandInBlock::~StandInBlock() = default;

StandInNetlist::~StandInNetlist() = default;

bool isStandIn(vrl::BB const& block) { return dynamic_cast<StandInBlock const*>(&block) != nullptr; }

bool isStandIn(vrl::Attribute const& parameter) { return dynamic_cast<UnknownAttribute const*>(&parameter) != nullptr; }

StandInReader::StandInReader(std::istream& stream, Progress& counter) : inner(stream), progress(counter) {}

StandInReader::~StandInReader() {
    for (auto const& entry : registered) {
        if (entry.first == MissingKind::What::kBlock)
            FactoryLoader<vrl::BB>::factory().UnRegister(entry.second);
        else
            vrl::Attributes::factory().UnRegister(entry.second);
    }
}

vrl::BB* StandInReader::standInForBlock(std::string const& type) {
    making().kind = type;
    acceptNext = true;
    note(MissingKind::What::kBlock, type);
    return new StandInBlock(nullptr);
}

vrl::Netlist* StandInReader::standInForNetlist(std::string const& type) {
    acceptNext = true;
    note(MissingKind::What::kNetlist, type);
    return new StandInNetlist(type);
}

vrl::Attribute* StandInReader::standInForParameter(std::string const& type) {
    making().kind = type;
    acceptNext = true;
    AttributeMaker const& maker = makerFor(type);
    if (!maker.readsValue) note(MissingKind::What::kParameter, type);
    return maker.make();
}

std::vector<MissingKind> StandInReader::missing() const {
    auto sorted = missed;
    std::sort(sorted.begin(), sorted.end(), [](MissingKind const& a, MissingKind const& b) {
        return std::pair(a.what, a.name) < std::pair(b.what, b.name);
    });
    return sorted;
}

std::string StandInReader::where() const {
    std::string text;
    for (std::size_t i = 0; i < frames.size(); ++i) {
        Frame const& frame = frames[i];
        if (frame.key.empty()) continue;
        if (!text.empty()) text += ", ";
        if (frame.member == kBlocks)
            text += "element " + frame.key + (i + 1 < frames.size() ? " (" + frames[i + 1].type + ")" : "");
        else if (frame.member == kParameters)
            text += "parameter '" + frame.key + "'";
        else
            text += "'" + frame.key + "'";
    }
    return text;
}

void StandInReader::note(MissingKind::What what, std::string const& type) {
    auto const found = std::find_if(missed.begin(), missed.end(),
                                    [&](MissingKind const& m) { return m.what == what && m.name == type; });
    if (found != missed.end())
        ++found->count;
    else
        missed.push_back({what, type, 1});
}

void StandInReader::standIn(MissingKind::What what, std::string const& type) {
    making().kind = type;
    acceptNext = true;
    bool const first = registered.insert({what, type}).second;
    if (what == MissingKind::What::kBlock) {
        if (first) FactoryLoader<vrl::BB>::factory().Register<StandInBlock>(type);
        note(what, type);
    } else {
        AttributeMaker const& maker = makerFor(type);
        if (first) maker.enter(vrl::Attributes::factory(), type);
        if (!maker.readsValue) note(what, type);
    }
}

void StandInReader::previewType(std::string& type) {
    using What = MissingKind::What;
    inner.previewType(type);
    acceptNext = false;
    making().lastBlock = nullptr;
    atWork.reset();
    if (type.empty() || frames.empty()) return;
    std::string const& member = frames.back().member;
    if (member == kBlocks) {
        progress.step();
        // Once a stand-in is registered, the factory has the kind, which is missing nevertheless.
        auto const& blocks = FactoryLoader<vrl::BB>::factory();
        if (!blocks.find(type) || registered.count({What::kBlock, type})) standIn(What::kBlock, type);
        atWork = std::make_unique<ForeignWork>(makingText("block", type));
    } else if (member == kParameters) {
        auto const& types = vrl::Attributes::factory();
        if (!types.find(type) || registered.count({What::kParameter, type})) standIn(What::kParameter, type);
        atWork = std::make_unique<ForeignWork>(makingText("parameter type", type));
    }
}

void StandInReader::beginCompAttribute(std::string* type, int* version, std::string* doc) {
    atWork.reset();
    Frame frame;
    if (!frames.empty()) frame.member = frames.back().id.empty() ? frames.back().member : frames.back().id;
    int ignored = 0;
    inner.beginCompAttribute(&frame.type, version ? version : &ignored, doc);
    if (type) *type = frame.type;
    if (std::exchange(acceptNext, false)) {
        frame.block = std::exchange(making().lastBlock, nullptr);
        if (version) *version = 1;  // that of a stand-in: the library refuses any other, and here all are to be read
    }
    frames.push_back(std::move(frame));
}

void StandInReader::endCompAttribute() {
    inner.endCompAttribute();
    if (!frames.empty()) frames.pop_back();
}

bool StandInReader::readSerialisationId(std::string& id) {
    if (!inner.readSerialisationId(id)) return false;
    if (!frames.empty()) frames.back().id = id;
    return true;
}

bool StandInReader::read(std::string& value) {
    if (!inner.read(value)) return false;
    if (frames.empty()) return true;
    Frame& frame = frames.back();
    if (!frame.id.empty()) return true;
    frame.key = value;
    // A stand-in learns the names of its ports here, right before the library first asks for the port.
    if (frame.member == kPorts && frames.size() > 1)
        if (StandInBlock* const block = frames[frames.size() - 2].block; block && !block->getPort(value))
            block->addPort(value, vrl::EnumList::Unknown);
    return true;
}

bool StandInReader::read(unsigned int& value) {
    if (!inner.read(value)) return false;
    if (!frames.empty() && frames.back().id.empty()) frames.back().key = std::to_string(value);
    return true;
}

}  // namespace vrltool
