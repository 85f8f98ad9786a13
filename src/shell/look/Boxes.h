#pragma once

#include <QBoxLayout>

namespace quorvane {

/// A box without margins: in `owner`, or to be added to another layout.
template <class Box>
[[nodiscard]] Box* flatBox(int spacing, QWidget* owner) {
    auto* const box = owner == nullptr ? new Box : new Box(owner);
    box->setContentsMargins(0, 0, 0, 0);
    box->setSpacing(spacing);
    return box;
}

[[nodiscard]] inline QHBoxLayout* lineBox(int spacing, QWidget* owner = nullptr) {
    return flatBox<QHBoxLayout>(spacing, owner);
}

[[nodiscard]] inline QVBoxLayout* columnBox(int spacing, QWidget* owner = nullptr) {
    return flatBox<QVBoxLayout>(spacing, owner);
}

}  // namespace quorvane
