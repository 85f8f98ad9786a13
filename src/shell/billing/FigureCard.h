#pragma once

#include "shell/look/Card.h"
#include "shell/look/Typography.h"

namespace quorvane {

class IconView;
class Label;

/// A figure of the report between its title and its caption. For assistive technology it is one text.
class FigureCard : public Card {
public:
    struct Content {
        QString title;
        QString value;
        QString caption;
        QString spoken;
    };

    explicit FigureCard(TypeRole valueRole, QWidget* parent = nullptr);
    /// With an icon in a well at its start.
    void setIcon(const QString& iconName);
    void setContent(const Content& content);

private:
    IconView* icon_;
    Label* title_;
    Label* value_;
    Label* caption_;
};

}  // namespace quorvane
