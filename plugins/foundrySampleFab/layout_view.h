#pragma once

#include <string>

#include "vrllib/vrllib.h"

namespace samplefab {

/// The footprint of a block of SampleFab, as its parameters were when the view was made; lengths in um.
///
/// The parameters of the view: length and width of the box around the block, and the margin that neighbours keep.
class LayoutView : public vrl::TypeView<vrl::BB> {
public:
    static constexpr char const* kName = "SampleFab/Layout";

    /// Null makes a view of nothing: a box of no size.
    explicit LayoutView(vrl::BB* block);
    ~LayoutView() override;

    std::string describe() const override;
    /// Kinds of SampleFab begin with "sf".
    bool applyOn(std::string const& kind) const override;
};

}  // namespace samplefab
