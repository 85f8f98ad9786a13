#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>
#include <string>

namespace quorvane {

struct Theme;

/// Icons of the set in resources/icons, drawn with an ink of the caller's choice. Pixmaps are cached.
///
/// `name` is the file's name without its ending, "timeline". An unknown name gives a null pixmap and a line on the
/// system's debug output. `size` is in logical pixels.
[[nodiscard]] QPixmap iconPixmap(const QString& name, const QColor& ink, int size, double devicePixelRatio = 1,
                                 const QColor& ground = Qt::white);

/// For buttons, lists and menus, which paint it in the ink of their text; elsewhere in the text colour of the theme.
[[nodiscard]] QIcon icon(const QString& name);

/// A project's square, by the name of its tone, in the colours of the theme in force.
[[nodiscard]] QIcon projectIcon(const std::string& toneName, int side = 14);

/// A round dot in a colour of the theme, which it follows.
[[nodiscard]] QIcon dotIcon(QColor Theme::*ink);

/// The name of such an icon; empty for any other one.
[[nodiscard]] QString iconName(const QIcon& icon);

/// Does the icon point along the line of reading, so that it is mirrored from right to left?
[[nodiscard]] bool isDirectionalIcon(const QString& name);

/// Draws an icon centred in the rectangle, mirrored where the layout is and the icon points.
void drawIcon(class QPainter& painter, const QRectF& rectangle, const QString& name, const QColor& ink, int size,
              Qt::LayoutDirection direction = Qt::LeftToRight, const QColor& ground = Qt::white);

}  // namespace quorvane
