#pragma once

#include "cli/Output.h"

#include <string_view>

namespace quorvane::cli {

/// An array in JSON with one element a line, written as its elements come.
class JsonList {
public:
    explicit JsonList(Output& output) : output_(output) {}

    /// The element as JSON.
    void add(std::string_view element);

    /// Closes the array; the output still has to be finished.
    void finish();

private:
    Output& output_;
    bool isEmpty_ = true;
};

}  // namespace quorvane::cli
