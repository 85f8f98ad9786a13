#pragma once

#include <memory>
#include <utility>

namespace quorvane {

/// A base that stands before the widget's: what it keeps is there until the widget's children are gone, which Qt
/// deletes in the widget's own destructor. A child may refer to it to its end.
template <class Kept>
class Keeps {
protected:
    explicit Keeps(std::unique_ptr<Kept> kept) : parts_(std::move(kept)) {}

    std::unique_ptr<Kept> parts_;
};

}  // namespace quorvane
