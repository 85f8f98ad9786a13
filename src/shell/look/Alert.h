#pragma once

#include <QString>
#include <functional>
#include <vector>

class QWidget;

namespace quorvane {

/// A question or a message over a window: a sheet of 420 with an icon, a title, a text and buttons in their order.
namespace Alert {
struct Choice {
    QString text;
    std::function<void()> act;  ///< may be empty
    bool isDestructive = false;
    bool isPrimary = false;
};
struct Content {
    QString title;
    QString text;
    QString iconName = QStringLiteral("info");
    std::vector<Choice> choices;  ///< the first has the focus; Esc is the last
};
void show(QWidget& window, const Content& content);
}  // namespace Alert

/// A note that goes by itself after 4 s, above the window's bottom edge; announced politely.
namespace Toast {
void show(QWidget& window, const QString& title, const QString& message);
}

}  // namespace quorvane
