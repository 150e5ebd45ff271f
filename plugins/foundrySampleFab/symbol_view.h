#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace samplefab {

/// What a picture shows in a block of SampleFab: the view's parameter "symbol" names one of the symbols of `vrl draw`,
/// which asks the views whose key begins with "Symbol/".
class SymbolView : public vrl::TypeView<vrl::BB> {
public:
    static constexpr char const* kName = "Symbol/SampleFab";

    /// Null makes a view without a symbol.
    explicit SymbolView(vrl::BB* block);
    ~SymbolView() override;

    std::string describe() const override;
    bool applyOn(std::string const& kind) const override;
};

}  // namespace samplefab
