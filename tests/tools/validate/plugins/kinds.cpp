#include "kinds.h"

#include <cstdlib>
#include <limits>
#include <utility>

#include "harm.h"

namespace broken {

namespace {

using Number = ValueRange<double, vrl::Value<double>>;

std::string writtenAs;  // what a Block that is saved differently was saved as last
unsigned blocks = 0;    // those that live

/// The foundry that the base is handed.
vrl::Foundry const* handedOn(vrl::Foundry const* foundry) {
    return kFault == Fault::kForgetsFoundry ? nullptr : foundry;
}

/// A parameter that asks its block, and does what a read of freed memory may do.
class Borrowed : public vrl::Value<double> {
public:
    Borrowed() : Value("shape", 1.0, "number of the shape", "1") {}
    std::string getStringValue() const override {
        if (kFault == Fault::kParameterCrashes) std::abort();
        return Value::getStringValue();
    }
    std::ostream& operator<<(std::ostream& os) const override {
        if (blocks == 0) std::abort();
        return Value::operator<<(os);
    }
};

std::pair<double, double> bounds() {
    using Limits = std::numeric_limits<double>;
    if (kFault == Fault::kBoundsSwapped) return {100.0, 1.0};
    if (kFault == Fault::kBoundsNoNumbers) return {Limits::quiet_NaN(), 100.0};
    if (kFault == Fault::kBoundsInfinite) return {1.0, Limits::infinity()};
    return {1.0, 100.0};
}

}  // namespace

VRL_DEFINE_PERSISTENCE(Reach, AttributeWithExpr)

vrl::SerFormat<Reach> const& Reach::serFormat() {
    using Format = vrl::SerFormat<Reach>;
    static auto const format = kFault == Fault::kNotSaved
                                   ? Format("Reach", 1).type("brReach")
                                   : Format("Reach", 1).type("brReach").member(1, "text", &Reach::text);
    return format;
}

Reach::Reach(std::string const& name) : AttributeWithExpr(name) {}

bool Reach::setStringValue(std::string const& value) {
    text = kFault == Fault::kTextForm ? value + "!" : value;
    return true;
}

void Reach::setValue(vrl::Attribute const* other) {
    if (kFault == Fault::kCopyThrows) throw "no copies";
    if (auto const* reach = dynamic_cast<Reach const*>(other)) text = reach->text;
}

texstream& Reach::toTex(texstream& tex) const {
    tex.os() << text;
    return tex;
}

std::ostream& Reach::toCpp(std::ostream& os, std::string const& name) const {
    return os << "Reach(\"" << name << "\")";
}

Block::Block(vrl::Foundry const* foundry) : BB(handedOn(foundry)) {
    ++blocks;
    harmInConstructor();
    if (!foundry && kFault == Fault::kNullFoundryThrows) throw "no foundry given";
    if (!foundry && kFault == Fault::kNullFoundryCrashes) std::abort();
    pin(1, 1);
    if (kFault == Fault::kNoDirection) addPorts(vrl::EnumList::Optics, "left", "right", nullptr);
    if (kFault == Fault::kPortTwice) addPort("out0", vrl::EnumList::Optics);
    bool const described = kFault != Fault::kUndescribed;
    double const value = kFault == Fault::kOutOfRange ? 500.0 : 50.0;
    auto const [low, high] = bounds();
    addAttribute(new Number("length", value, low, high, described ? "from port to port" : "", described ? "um" : ""));
    if (kFault == Fault::kParameterTwice) addDouble("length", 1.0, "again", "um");
    if (kFault == Fault::kRefersToOwner || kFault == Fault::kParameterCrashes) addAttribute(new Borrowed);
}

Block::~Block() {
    --blocks;
    if (kFault == Fault::kDestructorCrashes) std::abort();
}

std::string Block::getName() const { return kFault == Fault::kOtherName ? "brOther" : "brBlock"; }

std::string Block::getSerTypeName() {
    if (kFault == Fault::kSavedType) return "brSaved";
    if (kFault != Fault::kSavedDifferently) return BB::getSerTypeName();
    writtenAs += "x";
    return writtenAs;
}

vrl::SerRegister* Block::getSerRegister() {
    if (kFault == Fault::kRandomBytes && getDouble("length") != 50.0 && getDouble("length") != 12.0) std::abort();
    return BB::getSerRegister();
}

vrl::CrossSection* Flow::createCS(double const& width, double radius) const {
    if (kFault == Fault::kFlowThrows && width <= 0.0) throw std::string("no width");
    return new Section(width, radius);
}

Fab::Fab() {
    flows.Register<Flow>("brFlow");
    crossSections.Register<Section>("brStrip");
}

vrl::CrossSection* Fab::createCS(std::string const& name, double const& width, double radius) const {
    return kFault == Fault::kAnySection ? new Section(width, radius) : Foundry::createCS(name, width, radius);
}

BlockView::BlockView(vrl::BB* block)
    : TypeView(kFault == Fault::kViewForgetsObject ? nullptr : block,
               kFault == Fault::kViewOtherName ? "Broken/Other" : "Broken/View") {
    if (!block && kFault == Fault::kViewNull) std::abort();
}

}  // namespace broken
