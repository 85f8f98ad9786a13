#include "shell/window/SectionPages.h"

#include <QApplication>
#include <algorithm>
#include <utility>

namespace quorvane {
namespace {

bool takesKeys(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isEnabled() && widget.isVisible();
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
    if (hadFocus) focusPage();
}

void SectionPages::focusPage() {
    QWidget* const page = currentWidget();
    const auto& mainView = makers_[static_cast<std::size_t>(std::ranges::find(pages_, page) - pages_.begin())].mainView;
    QWidget* stop = mainView ? mainView(*page) : nullptr;
    if (stop == nullptr || !takesKeys(*stop))
        for (stop = page->nextInFocusChain(); stop != page; stop = stop->nextInFocusChain())
            if (takesKeys(*stop) && page->isAncestorOf(stop)) break;
    if (stop != page) stop->setFocus(Qt::OtherFocusReason);
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
