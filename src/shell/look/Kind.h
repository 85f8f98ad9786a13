#pragma once

#include <QWidget>

namespace quorvane {

/// What a standard control is here for, beyond what its class says: words between spaces, which `HouseStyle` draws.
///
/// Push and tool buttons: `primary`, `danger` (red text), `dangerFill`, `ghost`, `link`; `chip` (a round choice),
/// `toggle` (a filled one); `ok`, `quiet` (how a chosen one looks); `navigation`. Tool buttons are ghosts unless
/// `plain`. Check boxes: `switch`, `card` (a panel with two lines of text, and its icon at the end). Tab bars:
/// `segments`. Labels: `chip` and its tone `info`, `ok`, `warn` or `bad`. Frames: `card`, `rule` (a line), `well` and
/// its tone. Lists: `round` (rows are panels). Fields and combos: `quiet` (a pale edge), `error` (a red one). All of
/// them: `small` (28 high), `large` (36).
void setKind(QWidget& widget, const char* words);

/// Adds one of the words, or takes it away.
void setKind(QWidget& widget, const char* word, bool isSet);

[[nodiscard]] bool isKind(const QWidget* widget, const char* word);

/// The same while something is made: `kind("primary", new QPushButton(text))`.
template <class Widget>
[[nodiscard]] Widget* kind(const char* words, Widget* widget) {
    setKind(*widget, words);
    return widget;
}

}  // namespace quorvane
