#pragma once

#include "base/Color.h"

#include <QColor>

namespace quorvane {

/// The colours of the screens, by what they are for. Every text pair reaches a contrast of 4.5, every control edge,
/// focus ring and icon one of 3.
struct Theme {
    bool isDark = false;
    bool isHighContrast = false;

    QColor canvas;   ///< of the window
    QColor side;     ///< of the sidebar
    QColor surface;  ///< of cards, sheets and pop-ups
    QColor sunken;   ///< table heads, quiet chips, wells; fields in the dark
    QColor hover;
    QColor press;
    QColor line;     ///< edges of cards
    QColor line2;    ///< rules between rows
    QColor control;  ///< edges of fields and check boxes; a switch that is off
    QColor text;
    QColor text2;
    QColor text3;
    QColor accent;   ///< lines, focus, chosen icons, links
    QColor accFill;  ///< primary button, a switch that is on; `onFill` stands on it
    QColor accFillHover;
    QColor accSoft;  ///< chosen rows and wells of information
    QColor accInk;   ///< text on `accSoft`
    QColor onFill;
    QColor ok;
    QColor okSoft;
    QColor warn;
    QColor warnSoft;
    QColor orange;  ///< the icon of low confidence alone
    QColor bad;
    QColor badSoft;
    QColor badFill;
    QColor grey;   ///< of the charts, with opacities of their own
    QColor blue;   ///< of the charts
    QColor scrim;  ///< behind sheets
    QColor tip;
    QColor tipText;
    QColor segment;  ///< the chosen part of a segmented control

    [[nodiscard]] static Theme light();
    [[nodiscard]] static Theme dark();
    /// The same with strong lines and no pale text, for people who ask their desktop for contrast.
    [[nodiscard]] Theme withHighContrast() const;
};

/// The theme in force. Like the palette it belongs to the whole process; `applyTheme` changes it. Main thread only.
[[nodiscard]] const Theme& theme();

[[nodiscard]] QColor toQColor(Color color);
[[nodiscard]] QColor withOpacity(QColor color, double opacity);
/// What that looks like on an opaque ground, itself opaque: Qt fills large shapes with it at once, others on a pool of
/// threads that costs more than it saves.
[[nodiscard]] QColor onGround(const QColor& color, double opacity, const QColor& ground);

/// The contrast of two opaque colours by WCAG 2, 1 to 21.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

/// White where its contrast on the colour is at least 4.5, else black.
[[nodiscard]] QColor inkOn(const QColor& ground);

/// Gives palette and `theme()` to every widget in one go; their caches hear of it as `QEvent::PaletteChange`. The first
/// call also sets style and font of the program. Needs the `QApplication`.
void applyTheme(const Theme& theme);

}  // namespace quorvane
