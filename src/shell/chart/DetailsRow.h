#pragma once

#include <QString>
#include <QWidget>

namespace quorvane {

class PathText;

/// One thing that is known of an activity: an icon, what it is, and below it the text, which can be selected.
class DetailsRow : public QWidget {
public:
    DetailsRow(const QString& iconName, const QString& caption, const QString& copyText, QWidget* parent = nullptr);
    /// Hides the row where there is nothing.
    void setText(const QString& text);

private:
    PathText* text_;
};

}  // namespace quorvane
