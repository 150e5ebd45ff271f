#include <iostream>

#include "tests/plugins/samples/kinds.h"
#include "tests/support/scenario.h"

namespace {

using namespace Vorlane_v1_0;
using vrl_test::PlainBlock;
using vrl_test::PlainFoundry;
using vrl_test::PlainNetlist;
using vrl_test::PlainView;

/// Writes what an action throws as a text, or "nothing".
template <class Action>
void tellThrown(Action const& action) {
    try {
        action();
        std::cout << "nothing\n";
    } catch (char* text) {
        std::cout << text << "\n";
    }
}

void tell(char const* what, bool answer) { std::cout << what << ": " << (answer ? "yes" : "no") << "\n"; }

class OtherFoundry : public PlainFoundry {
public:
    std::string getName() const override { return "OtherFoundry"; }
};

}  // namespace

VRL_SCENARIO(DefaultAttribute) {
    Attributes::factory();
    auto const first = FactoryLoader<Attribute>::getDefault();
    std::cout << first->getFactoryName() << "\n";
    tell("same object", FactoryLoader<Attribute>::getDefault().get() == first.get());
}

VRL_SCENARIO(PrintAttributes) { printFactory<Attribute>(printFactory<Attribute>(std::cout << "[\n") << "]\n"); }

VRL_SCENARIO(PrintFilledAttributes) {
    Attributes::factory();
    printFactory<Attribute>(std::cout);
    tell("same factory", &Attributes::factory() == &FactoryLoader<Attribute>::factory());
}

VRL_SCENARIO(AttributesOfAPluginFirst) {
    FactoryLoader<Attribute>::factory().Register<Value<int>>("Mine");
    Attributes::factory();
    printFactory<Attribute>(std::cout);
}

VRL_SCENARIO(AttributesAreMadeWithoutAName) {
    Attribute* const made = Attributes::factory().create("Value_Int");
    std::cout << "<" << made->getName() << ">\n";
    delete made;
}

VRL_SCENARIO(NoDefaultObject) {
    tellThrown([] { FactoryLoader<Attribute>::getDefault(); });
    tellThrown([] { FactoryLoader<Foundry>::getDefault(); });
    tellThrown([] { FactoryLoader<Netlist>::getDefault(); });
    tellThrown([] { FactoryLoader<BB>::getDefault(); });
    tellThrown([] { FactoryLoader<View>::getDefault(); });
}

VRL_SCENARIO(DefaultFoundry) {
    auto& factory = FactoryLoader<Foundry>::factory();
    factory.Register<OtherFoundry>("");
    tellThrown([] { FactoryLoader<Foundry>::getDefault(); });
    factory.Register<PlainFoundry>("b");
    auto const first = FactoryLoader<Foundry>::getDefault();
    std::cout << first->getName() << "\n";
    factory.Register<OtherFoundry>("a");
    tell("stays", FactoryLoader<Foundry>::getDefault().get() == first.get());
    tell("empty key gives it", Foundry::create("") == first.get());
}

VRL_SCENARIO(DefaultNetlist) {
    FactoryLoader<Netlist>::factory().Register<PlainNetlist>("n");
    std::cout << FactoryLoader<Netlist>::getDefault()->getName() << "\n";
    Netlist* const plain = Netlist::create("");
    std::cout << plain->getName() << "\n";
    Netlist::destroy(plain);
}

VRL_SCENARIO(DefaultThatCannotBeMade) {
    class Never : public PlainFoundry {
    public:
        static void* operator new(std::size_t) noexcept { return nullptr; }
        static void operator delete(void*) {}
    };
    FactoryLoader<Foundry>::factory().Register<Never>("n");
    tellThrown([] { FactoryLoader<Foundry>::getDefault(); });
}

VRL_SCENARIO(SetDefaults) {
    shared_ptr<Attribute> const attribute(new Value<int>("n"));
    tell("attribute", FactoryLoader<Attribute>::setDefault(attribute).get() == attribute.get());
    tell("attribute again", FactoryLoader<Attribute>::getDefault().get() == attribute.get());
    shared_ptr<Netlist> const netlist(new Netlist);
    tell("netlist", FactoryLoader<Netlist>::setDefault(netlist).get() == netlist.get());
    tell("netlist again", FactoryLoader<Netlist>::getDefault().get() == netlist.get());
    shared_ptr<Foundry> const foundry(new OtherFoundry);
    tell("foundry", FactoryLoader<Foundry>::setDefault(foundry).get() == foundry.get());
    tell("foundry again", FactoryLoader<Foundry>::getDefault().get() == foundry.get());
    shared_ptr<BB> const block(new PlainBlock(nullptr));
    FactoryLoader<BB>::factory().Register<PlainBlock>("x");
    tellThrown([] { FactoryLoader<BB>::getDefault(); });
    FactoryLoader<BB>::setDefault(block);
    tell("block", FactoryLoader<BB>::getDefault().get() == block.get());
    shared_ptr<View> const view(new PlainView(nullptr));
    tell("view", FactoryLoader<View>::setDefault(view).get() == view.get());
    tellThrown([] { FactoryLoader<View>::getDefault(); });
    std::cout << FactoryLoader<TypeView<BB>>::setDefault(shared_ptr<TypeView<BB>>()).useCount() << "\n";
    std::cout << FactoryLoader<TypeView<Netlist>>::setDefault(shared_ptr<TypeView<Netlist>>()).useCount() << "\n";
    std::cout << view.useCount() << "\n";
}

VRL_SCENARIO(ReplacedDefault) {
    Foundry::registerOnDestroy([](Foundry* foundry) { std::cout << "destroyed " << foundry->getName() << "\n"; });
    FactoryLoader<Foundry>::setDefault(shared_ptr<Foundry>(new OtherFoundry));
    FactoryLoader<Foundry>::setDefault(shared_ptr<Foundry>(new PlainFoundry));
    std::cout << "end\n" << std::flush;
}

namespace {

/// A static object of a host that still asks for the default while the process ends.
struct AsksAtExit {
    ~AsksAtExit() {
        tellThrown([] { FactoryLoader<BB>::getDefault(); });
        FactoryLoader<BB>::setDefault(shared_ptr<BB>(new PlainBlock(nullptr)));
        tellThrown([] { FactoryLoader<BB>::getDefault(); });
    }
};

}  // namespace

VRL_SCENARIO(DefaultAskedForAtExit) {
    static AsksAtExit const asks;
    FactoryLoader<BB>::setDefault(shared_ptr<BB>(new PlainBlock(nullptr)));
}

VRL_SCENARIO(OwnFactory) {
    static FactoryNoArg<std::string, Foundry> own;
    static FactoryNoArg<std::string, Foundry> other;
    FactoryLoader<Foundry> const first(&own);
    tell("own", &FactoryLoader<Foundry>::factory() == &own);
    tellThrown([] { FactoryLoader<Foundry> const second(&other); });
    tell("still own", &FactoryLoader<Foundry>::factory() == &own);
    FactoryLoader<Foundry>::setFactory(&other);
    tell("other", &FactoryLoader<Foundry>::factory() == &other);
    tellThrown([] { static_cast<void>(FactoryLoader<Foundry>()); });
}

VRL_SCENARIO(OwnFactoryTooLate) {
    FactoryNoArg<std::string, Netlist> own;
    FactoryLoader<Netlist>::factory();
    tellThrown([&] { FactoryLoader<Netlist> const late(&own); });
}

VRL_SCENARIO(WalkFactory) {
    FactoryLoader<Foundry>::factory().Register<PlainFoundry>("b");
    FactoryLoader<Foundry>::factory().Register<PlainFoundry>("a");
    for (auto entry = FactoryLoader<Foundry>::begin(); entry != FactoryLoader<Foundry>::end(); ++entry)
        std::cout << entry->first << "\n";
}

VRL_SCENARIO(PrintAllFactories) {
    FactoryLoader<Foundry>::factory().Register<PlainFoundry>("foundry");
    FactoryLoader<BB>::factory().Register<PlainBlock>("block");
    FactoryLoader<Netlist>::factory().Register<PlainNetlist>("netlist");
    FactoryLoader<View>::factory().Register<PlainView>("view");
    FactoryLoader<TypeView<BB>>::factory().Register<PlainView>("block view");
    FactoryLoader<TypeView<Netlist>>::factory().Register<PlainView>("netlist view");
    printFactory<Foundry>(std::cout);
    printFactory<BB>(std::cout);
    printFactory<Netlist>(std::cout);
    printFactory<View>(std::cout);
    printFactory<TypeView<BB>>(std::cout);
    printFactory<TypeView<Netlist>>(std::cout);
    printFactory<TypeView<Component>>(std::cout);
    printFactory<TypeView<Foundry>>(std::cout);
    printFactory<TypeView<CrossSection>>(std::cout);
    printFactory<TypeView<ProcessFlow>>(std::cout);
    std::cout << "end\n";
}

VRL_SCENARIO(StaticCallbacks) {
    Foundry::registerOnCreate([](Foundry* made) { std::cout << "created " << made->getName() << "\n"; });
    Foundry::registerOnChange([](Foundry* made) { std::cout << "changed " << made->getName() << "\n"; });
    Foundry::registerOnDestroy(
        [](Foundry* made) { std::cout << "destroyed " << (made ? made->getName() : "null") << "\n"; });
    FactoryLoader<Foundry>::factory().Register<PlainFoundry>("p");
    Foundry* const made = Foundry::create("p");
    FactoryLoader<Foundry>::factory().OnChange(made);
    { shared_ptr<Foundry> const handle(made); }
    { shared_ptr<Foundry> const nothing(nullptr); }
    std::cout << "end\n";
}

VRL_SCENARIO(EmptyKeysOfTheWrappers) {
    tellThrown([] { BB::create(nullptr, ""); });
    tellThrown([] { View::create("", nullptr, ""); });
    tellThrown([] { Foundry::create(""); });
    tell("unknown foundry", Foundry::create("unknown") != nullptr);
    tell("unknown block", BB::create(nullptr, "unknown") != nullptr);
    tell("unknown netlist", Netlist::create("unknown") != nullptr);
    tell("unknown view", View::create("unknown", nullptr, "") != nullptr);
}

VRL_SCENARIO(DefaultHandleIsShared) {
    FactoryLoader<Foundry>::factory().Register<PlainFoundry>("p");
    {
        auto const first = FactoryLoader<Foundry>::getDefault();
        std::cout << first.useCount() << "\n";
    }
    std::cout << FactoryLoader<Foundry>::getDefault().useCount() << "\n";
}
