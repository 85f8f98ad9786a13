#pragma once

#include "shell/state/MainSection.h"

#include <QStackedWidget>
#include <array>
#include <functional>

namespace quorvane {

/// The sections' pages, one of which shows. A page is made when its section is first chosen, so that a window opens as
/// fast with four sections as with one.
class SectionPages : public QStackedWidget {
public:
    struct Maker {
        std::function<QWidget*()> make;
        /// Made anew whenever another section was chosen in between, unless its page is still at work.
        std::function<bool(QWidget& page)> mayRenew{};
        /// What takes the keys first if it is shown; without it the first part that Tab reaches. A focus proxy would
        /// take Tab away from the page's other parts.
        std::function<QWidget*(QWidget& page)> mainView{};
    };

    /// In the sections' order.
    explicit SectionPages(std::array<Maker, allMainSections.size()> makers, QWidget* parent = nullptr);

    /// Shows the section's page. The focus goes with it if it was in the page before.
    void choose(MainSection section);
    /// Gives the focus to the page that is shown.
    void focusPage();

private:
    void renew(std::size_t index);

    std::array<Maker, allMainSections.size()> makers_;
    std::array<QWidget*, allMainSections.size()> pages_{};
};

}  // namespace quorvane
