// Parameters and ranges: a range warns and never refuses.
//
// Prints the warning of a value out of range, what a string changes without a message, and how a list finds the
// culprit.

#include <iostream>

#include "vrllib/vrllib.h"

int main() {
    using Width = ValueRange<double, vrl::Value<double>>;
    Width width("width", 0.45, 0.3, 2.0, "width of the core", "um");

    double const before = width.setValue(2.5);  // the typed path warns, stores, and returns the old value
    std::cout << before << " -> " << width.getValue() << "\n" << vrlGetCoutMsg();
    vrlCoutReset();

    width.setStringValue("0.1");  // a string is stored without a message
    std::cout << "messages: '" << vrlGetCoutMsg() << "'\n";

    vrl::Attributes list;
    list.add(new Width(width));
    list.addInteger("fingers", 4, "number of fingers");
    list.addComplex("overlap", {0.9, 0.1});
    std::cout << list;
    list.inSpec(std::cout);

    std::cout << list.getDouble("fingers") << " " << list.getDescr("width") << " [" << list.getUnits("width") << "]\n";
    try {
        list.getDouble("overlap");
    } catch (std::string const& text) {
        std::cout << text;
    }
    width.toCpp(std::cout, "width") << "\n";
}
