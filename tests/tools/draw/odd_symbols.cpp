// Views that choose symbols in ways that plug-ins should not.

#include <cstdlib>
#include <stdexcept>
#include <string>

#include "vrllib/vrllib.h"

namespace {

class Base : public vrl::TypeView<vrl::BB> {
public:
    Base(vrl::BB* block, char const* key, char const* symbol) : TypeView(block, key) {
        getViewData().addString("symbol", symbol, "name of the symbol in a picture");
    }
    std::string describe() const override { return "odd"; }
};

class Throws : public Base {
public:
    explicit Throws(vrl::BB* block) : Base(block, "Symbol/0 throws", "taper") {
        if (block && block->getName() == "sfTaper") throw std::runtime_error("no licence");
    }
    bool applyOn(std::string const& kind) const override { return kind == "sfTaper"; }
};

class Unknown : public Base {
public:
    explicit Unknown(vrl::BB* block) : Base(block, "Symbol/1 unknown", "splittr") {}
    bool applyOn(std::string const&) const override { return true; }
};

/// Its symbol is long, and begins as no name does.
class Loud : public Base {
public:
    explicit Loud(vrl::BB* block) : Base(block, "Symbol/1 loud", ("!" + std::string(100000, 'x')).c_str()) {}
    bool applyOn(std::string const& kind) const override { return kind == "sfBend"; }
};

class Number : public vrl::TypeView<vrl::BB> {
public:
    explicit Number(vrl::BB* block) : TypeView(block, "Symbol/2 number") {
        getViewData().addDouble("symbol", 3, "no name");
    }
    std::string describe() const override { return "odd"; }
    bool applyOn(std::string const& kind) const override { return kind == "sfStraight"; }
};

class None : public vrl::TypeView<vrl::BB> {
public:
    explicit None(vrl::BB* block) : TypeView(block, "Symbol/3 none") {}
    std::string describe() const override { return "odd"; }
    bool applyOn(std::string const&) const override { return true; }
};

/// Is no view of symbols, by its key.
class Other : public Base {
public:
    explicit Other(vrl::BB* block) : Base(block, "Odd/Symbol", "laser") {}
    bool applyOn(std::string const&) const override { return true; }
};

/// The last one by its key, and good.
class Last : public Base {
public:
    explicit Last(vrl::BB* block) : Base(block, "Symbol/~last", "laser") {}
    bool applyOn(std::string const& kind) const override { return kind == "sfTaper" || kind == "sfBend"; }
};

#ifdef VRL_TEST_CRASHES
class Crashes : public Base {
public:
    explicit Crashes(vrl::BB* block) : Base(block, "Symbol/4 crashes", "laser") {}
    bool applyOn(std::string const&) const override { std::abort(); }
};

class Exits : public Base {
public:
    explicit Exits(vrl::BB* block) : Base(block, "Symbol/5 exits", "laser") {}
    bool applyOn(std::string const&) const override { std::exit(0); }
};
#endif

}  // namespace

VRL_PLUGIN_EXPORT void initLibraryBBView(FactoryArg<std::string, vrl::View, vrl::BB*>* factory) {
#ifdef VRL_TEST_CRASHES
    factory->Register<Crashes>("Symbol/4 crashes");
    factory->Register<Exits>("Symbol/5 exits");
#else
    factory->Register<Throws>("Symbol/0 throws");
    factory->Register<Unknown>("Symbol/1 unknown");
    factory->Register<Loud>("Symbol/1 loud");
    factory->Register<Number>("Symbol/2 number");
    factory->Register<None>("Symbol/3 none");
    factory->Register<Other>("Odd/Symbol");
#endif
    factory->Register<Last>("Symbol/~last");
}
