#include "shell/window/SectionPages.h"

#include <QApplication>
#include <utility>

namespace quorvane {
namespace {

/// The first part of the page that Tab reaches; null if there is none.
QWidget* firstStop(QWidget& page) {
    for (QWidget* next = page.nextInFocusChain(); next != &page; next = next->nextInFocusChain()) {
        const bool takesTab = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() && next->isVisible();
        if (takesTab && page.isAncestorOf(next)) return next;
    }
    return nullptr;
}

}  // namespace

SectionPages::SectionPages(std::array<Maker, allMainSections.size()> makers, QWidget* parent)
    : QStackedWidget(parent), makers_(std::move(makers)) {}

void SectionPages::choose(MainSection section) {
    const auto index = static_cast<std::size_t>(section);
    auto* const before = currentWidget();
    if (before != nullptr && before == pages_[index]) return;
    auto* const focus = QApplication::focusWidget();
    const bool hadFocus = before != nullptr && focus != nullptr && before->isAncestorOf(focus);
    renew(index);
    setCurrentWidget(pages_[index]);
    if (!hadFocus) return;
    if (auto* const stop = firstStop(*pages_[index])) stop->setFocus(Qt::OtherFocusReason);
}

void SectionPages::renew(std::size_t index) {
    QWidget*& page = pages_[index];
    const auto& maker = makers_[index];
    if (page != nullptr && maker.mayRenew && maker.mayRenew(*page)) delete std::exchange(page, nullptr);
    if (page != nullptr) return;
    page = maker.make();
    addWidget(page);
}

}  // namespace quorvane
