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
    };

    /// In the sections' order.
    explicit SectionPages(std::array<Maker, allMainSections.size()> makers, QWidget* parent = nullptr);

    /// Shows the section's page. The focus goes with it if it was in the page before.
    void choose(MainSection section);
    /// Gives the focus to what the page shows: its focus proxy, else the first part that Tab reaches.
    void focusPage();

private:
    void renew(std::size_t index);

    std::array<Maker, allMainSections.size()> makers_;
    std::array<QWidget*, allMainSections.size()> pages_{};
};

}  // namespace quorvane
