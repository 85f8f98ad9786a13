#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

class QBoxLayout;
class QHBoxLayout;
class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace quorvane {

class Label;

/// A dialog over its window: a child that covers it with the scrim. The focus stays inside and goes back to where it
/// came from; Esc closes; Enter presses the default button outside of text. A click beside it does nothing, and the
/// window's shortcuts rest. Its panel is never larger than the window less 24 on each side; the body scrolls then.
/// It deletes itself after `finished`, at which the focus is back already.
class Sheet : public QDialog {
public:
    /// `window` is a top-level widget. `width` and, unless 0, `height` are what the panel would like to have.
    Sheet(QWidget& window, const QString& title, int width, int height = 0);
    ~Sheet() override;

    /// A line under the title.
    void setSubtitle(const QString& subtitle);
    /// Takes the close button from the head; Esc still closes.
    void hideCloseButton();
    /// Without title and close button, for alerts; the title stays the accessible name.
    void hideHead();
    /// A control or a note at the end of the head, before the close button.
    void addToHead(QWidget* widget);
    /// What chooses between pages of the body, under the title; the body is the window's ground then, for cards.
    void setTabs(QWidget* tabs);
    [[nodiscard]] QVBoxLayout& body() { return *body_; }
    /// In the place of head and body a panel of its own, which the sheet doesn't own: it is taken away before the end.
    void setContent(QWidget& panel);
    /// Shows the body from its beginning.
    void scrollToTop();

    /// The foot: what stands at its start, then buttons from the end. The last one added is the default.
    void addToFootStart(QWidget* widget);
    void addAction(QPushButton* button);
    /// Enter presses this one instead of the last.
    void setDefault(QPushButton* button);
    /// Instead of a foot with the buttons at its end: stacked at full width, as alerts have them.
    void stackActions();

    void open() override;
    void done(int result) override;

    [[nodiscard]] QRect panel() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void buildHead(const QString& title);
    void buildBody();
    void buildFoot();
    void showFoot();
    void relayout();
    void fadeIn();
    void keepFocus(QWidget* now);
    [[nodiscard]] int naturalHeight(int width) const;
    [[nodiscard]] QWidget* firstStop();
    [[nodiscard]] bool isTopmost() const;

    QWidget& window_;
    QSize wanted_;
    QWidget* panel_;
    QWidget* head_;
    QHBoxLayout* headLine_ = nullptr;
    Label* subtitle_ = nullptr;
    QPushButton* close_ = nullptr;
    QWidget* tabs_ = nullptr;
    QScrollArea* scroll_;
    QVBoxLayout* body_ = nullptr;
    QWidget* footRule_;
    QWidget* foot_;
    QHBoxLayout* footStart_ = nullptr;
    QBoxLayout* actions_ = nullptr;
    QPointer<QWidget> opener_;
    QPointer<QWidget> lastFocus_;
    bool isOpen_ = false;
};

}  // namespace quorvane
