#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

namespace quorvane {

class Label;
struct Theme;

/// A number above what it counts, in a well. Read as one: "Total: 318".
class StatisticItem : public QWidget {
public:
    /// `color` is the number's: a member of `Theme`.
    StatisticItem(const QString& label, QColor Theme::*color, QWidget* parent = nullptr);
    void setValue(int value);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString label_;
    Label* value_;
};

}  // namespace quorvane
