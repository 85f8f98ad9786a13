#pragma once

#include "base/Signal.h"

#include <QPointer>
#include <QString>
#include <QWidget>
#include <memory>

class QPushButton;
class QVBoxLayout;
class QHBoxLayout;

namespace quorvane {

/// A modal panel over a window: a child that covers it with the scrim. The focus stays inside and goes back to where it
/// came from; Esc closes; Enter presses the primary button outside of text. A click beside it does nothing. It is never
/// larger than the window less 24 on each side; its body scrolls then.
class Sheet : public QWidget {
public:
    /// `window` is a top-level widget. `width` and, unless 0, `height` are what the panel would like to have.
    Sheet(QWidget& window, const QString& title, int width, int height = 0);
    ~Sheet() override;

    /// A line under the title.
    void setSubtitle(const QString& subtitle);
    /// Takes the close button from the head; Esc still closes.
    void hideCloseButton();
    /// A control or a note at the end of the head, before the close button.
    void addToHead(QWidget* widget);
    [[nodiscard]] QVBoxLayout& body();
    /// What chooses between pages of the body, under the title; the body is the window's ground then, for cards.
    void setTabs(QWidget* tabs);
    /// Shows the body from its beginning.
    void scrollToTop();
    /// Without title and close button, for alerts; the title stays the accessible name.
    void hideHead();
    /// The foot: what stands at its start, then buttons from the end. The last one added is the primary.
    void addToFootStart(QWidget* widget);
    void addAction(QPushButton* button);
    /// Enter presses this one instead of the last.
    void setPrimary(QPushButton* button);
    /// Instead of a foot with the buttons at its end: stacked at full width, as alerts have them.
    void stackActions();

    void open();
    void close();  ///< the focus goes back at once; deletes itself later

    /// It has closed, in whatever way; the focus is back already.
    Signal<> closed;

    [[nodiscard]] QRect panel() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void relayout();
    void keepFocus(QWidget* now);
    [[nodiscard]] QWidget* firstStop();
    [[nodiscard]] bool isTopmost() const;

    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quorvane
