#pragma once

#include <QWidget>

class QHBoxLayout;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class Button;
class Label;
class Separator;

/// The panel of a sheet: head, a body that scrolls, foot.
class SheetPanel : public QWidget {
public:
    SheetPanel(const QString& title, QWidget* parent);

    void setSubtitle(const QString& subtitle);
    void addToFootStart(QWidget* widget);
    void addAction(Button* button);
    void stackActions();
    void hideHead();
    [[nodiscard]] Button& closeButton() { return *close_; }
    [[nodiscard]] QVBoxLayout& body() { return *bodyLayout_; }
    [[nodiscard]] QWidget& bodyWidget() { return *bodyWidget_; }
    /// The height that shows everything at this width.
    [[nodiscard]] int naturalHeight(int width) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* head_;
    Label* title_;
    Label* subtitle_;
    Button* close_;
    QScrollArea* scroll_;
    QWidget* bodyWidget_;
    QVBoxLayout* bodyLayout_;
    Separator* footRule_;
    QWidget* foot_;
    QHBoxLayout* footStart_;
    QHBoxLayout* footEnd_;
    QVBoxLayout* footStack_ = nullptr;
};

}  // namespace quorvane
