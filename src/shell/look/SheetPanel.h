#pragma once

#include <QWidget>

class QHBoxLayout;
class QScrollArea;
class QVBoxLayout;
class QPushButton;

namespace quorvane {

class Label;
class Separator;

/// The panel of a sheet: head, a body that scrolls, foot.
class SheetPanel : public QWidget {
public:
    SheetPanel(const QString& title, QWidget* parent);

    void setSubtitle(const QString& subtitle);
    void addToHead(QWidget* widget);
    void addToFootStart(QWidget* widget);
    void addAction(QPushButton* button);
    void stackActions();
    void hideHead();
    void setTabs(QWidget* tabs);
    void scrollToTop();
    [[nodiscard]] QPushButton& closeButton() { return *close_; }
    [[nodiscard]] QVBoxLayout& body() { return *bodyLayout_; }
    [[nodiscard]] QWidget& bodyWidget() { return *bodyWidget_; }
    /// The height that shows everything at this width.
    [[nodiscard]] int naturalHeight(int width) const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* head_;
    QHBoxLayout* headLine_;
    Label* title_;
    Label* subtitle_;
    QPushButton* close_;
    QScrollArea* scroll_;
    QWidget* bodyWidget_;
    QVBoxLayout* bodyLayout_;
    Separator* footSeparator_;
    QWidget* foot_;
    QWidget* tabs_ = nullptr;
    QHBoxLayout* footStart_;
    QHBoxLayout* footEnd_;
    QVBoxLayout* footStack_ = nullptr;
};

}  // namespace quorvane
