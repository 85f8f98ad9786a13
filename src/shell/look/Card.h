#pragma once

#include <QFrame>

namespace quorvane {

/// A surface with an edge and round corners, on which things lie.
class Card : public QFrame {
public:
    explicit Card(QWidget* parent = nullptr);
};

/// A quiet ground with round corners under a few things; `tone` as in `Kind.h`.
class Well : public QFrame {
public:
    explicit Well(const char* tone = "", QWidget* parent = nullptr);
};

/// A line between two parts of a card.
class Separator : public QFrame {
public:
    explicit Separator(QWidget* parent = nullptr);
};

}  // namespace quorvane
