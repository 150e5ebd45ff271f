#include <iostream>

#include "tests/plugins/samples/kinds.h"
#include "tests/support/scenario.h"

namespace {

using namespace Vorlane_v1_0;
using vrl_test::PlainBlock;
using vrl_test::PlainFoundry;
using vrl_test::PlainNetlist;
using vrl_test::PlainView;

/// Writes what an action throws as a string, or "nothing".
template <class Action>
void printThrown(Action const& action) {
    try {
        action();
        std::cout << "nothing\n";
    } catch (char* text) {
        std::cout << text << "\n";
    }
}

void print(char const* what, bool answer) { std::cout << what << ": " << (answer ? "yes" : "no") << "\n"; }

class OtherFoundry : public PlainFoundry {
public:
    std::string getName() const override { return "OtherFoundry"; }
};

}  // namespace

VRL_SCENARIO(DefaultAttribute) {
    Attributes::factory();
    auto const first = FactoryLoader<Attribute>::getDefault();
    std::cout << first->getFactoryName() << "\n";
    print("same object", FactoryLoader<Attribute>::getDefault().get() == first.get());
}

VRL_SCENARIO(PrintAttributes) { printFactory<Attribute>(printFactory<Attribute>(std::cout << "[\n") << "]\n"); }

VRL_SCENARIO(PrintFilledAttributes) {
    Attributes::factory();
    printFactory<Attribute>(std::cout);
    print("same factory", &Attributes::factory() == &FactoryLoader<Attribute>::factory());
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
    printThrown([] { FactoryLoader<Attribute>::getDefault(); });
    printThrown([] { FactoryLoader<Foundry>::getDefault(); });
    printThrown([] { FactoryLoader<Netlist>::getDefault(); });
    printThrown([] { FactoryLoader<BB>::getDefault(); });
    printThrown([] { FactoryLoader<View>::getDefault(); });
}

VRL_SCENARIO(DefaultFoundry) {
    auto& factory = FactoryLoader<Foundry>::factory();
    factory.Register<OtherFoundry>("");
    printThrown([] { FactoryLoader<Foundry>::getDefault(); });
    factory.Register<PlainFoundry>("b");
    auto const first = FactoryLoader<Foundry>::getDefault();
    std::cout << first->getName() << "\n";
    factory.Register<OtherFoundry>("a");
    print("stays", FactoryLoader<Foundry>::getDefault().get() == first.get());
    print("empty key returns it", Foundry::create("") == first.get());
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
    printThrown([] { FactoryLoader<Foundry>::getDefault(); });
}

VRL_SCENARIO(SetDefaults) {
    shared_ptr<Attribute> const attribute(new Value<int>("n"));
    print("attribute", FactoryLoader<Attribute>::setDefault(attribute).get() == attribute.get());
    print("attribute again", FactoryLoader<Attribute>::getDefault().get() == attribute.get());
    shared_ptr<Netlist> const netlist(new Netlist);
    print("netlist", FactoryLoader<Netlist>::setDefault(netlist).get() == netlist.get());
    print("netlist again", FactoryLoader<Netlist>::getDefault().get() == netlist.get());
    shared_ptr<Foundry> const foundry(new OtherFoundry);
    print("foundry", FactoryLoader<Foundry>::setDefault(foundry).get() == foundry.get());
    print("foundry again", FactoryLoader<Foundry>::getDefault().get() == foundry.get());
    shared_ptr<BB> const block(new PlainBlock(nullptr));
    FactoryLoader<BB>::factory().Register<PlainBlock>("x");
    printThrown([] { FactoryLoader<BB>::getDefault(); });
    FactoryLoader<BB>::setDefault(block);
    print("block", FactoryLoader<BB>::getDefault().get() == block.get());
    shared_ptr<View> const view(new PlainView(nullptr));
    print("view", FactoryLoader<View>::setDefault(view).get() == view.get());
    printThrown([] { FactoryLoader<View>::getDefault(); });
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
        printThrown([] { FactoryLoader<BB>::getDefault(); });
        FactoryLoader<BB>::setDefault(shared_ptr<BB>(new PlainBlock(nullptr)));
        printThrown([] { FactoryLoader<BB>::getDefault(); });
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
    print("own", &FactoryLoader<Foundry>::factory() == &own);
    printThrown([] { FactoryLoader<Foundry> const second(&other); });
    print("still own", &FactoryLoader<Foundry>::factory() == &own);
    FactoryLoader<Foundry>::setFactory(&other);
    print("other", &FactoryLoader<Foundry>::factory() == &other);
    printThrown([] { static_cast<void>(FactoryLoader<Foundry>()); });
}

VRL_SCENARIO(OwnFactoryTooLate) {
    FactoryNoArg<std::string, Netlist> own;
    FactoryLoader<Netlist>::factory();
    printThrown([&] { FactoryLoader<Netlist> const late(&own); });
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
    printThrown([] { BB::create(nullptr, ""); });
    printThrown([] { View::create("", nullptr, ""); });
    printThrown([] { Foundry::create(""); });
    print("unknown foundry", Foundry::create("unknown") != nullptr);
    print("unknown block", BB::create(nullptr, "unknown") != nullptr);
    print("unknown netlist", Netlist::create("unknown") != nullptr);
    print("unknown view", View::create("unknown", nullptr, "") != nullptr);
}

VRL_SCENARIO(DefaultHandleIsShared) {
    FactoryLoader<Foundry>::factory().Register<PlainFoundry>("p");
    {
        auto const first = FactoryLoader<Foundry>::getDefault();
        std::cout << first.useCount() << "\n";
    }
    std::cout << FactoryLoader<Foundry>::getDefault().useCount() << "\n";
}
