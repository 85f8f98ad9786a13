#pragma once

#include "base/Calendar.h"
#include "l10n/Localization.h"
#include "shell/state/MyActivityView.h"
#include "shell/state/PraiseMessageView.h"

#include <memory>
#include <optional>
#include <string>

class QWidget;

namespace quorvane {

/// The praise of the day that the timeline shows: follows the chart's records, and begins anew with another day or
/// another language in the settings.
class DayPraise {
public:
    /// All of it outlives it.
    struct Services {
        MyActivityView& activity;
        ModelContext& context;
        const Localization& localization;
        ConsoleSink& console;
        RandomWords randomWords;  ///< chooses the sentences
    };

    explicit DayPraise(const Services& services);

    [[nodiscard]] PraiseMessageView& state() { return state_; }
    /// Takes what the chart shows now.
    void refresh();
    /// Opens the share window for the day over a window.
    void share(QWidget& window);

private:
    void begin();
    void followLanguage();

    Services services_;
    PraiseMessageView state_;
    std::optional<Date> day_;  ///< of the sentence
    std::string language_;     ///< of the settings, when the sentence was chosen
    std::unique_ptr<platform::WorkItem> languageCheck_;
    Subscription settingsChanged_;
};

}  // namespace quorvane
