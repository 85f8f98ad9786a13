#pragma once

#include "base/Calendar.h"
#include "diagnostics/AppLogger.h"
#include "l10n/Localization.h"
#include "store/AppSettings.h"
#include "store/ModelContext.h"
#include "store/SupportedLanguage.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace quorvane {

/// What the sheet of settings edits: a copy of the stored settings, which go back into the store with `save` alone.
/// What it is made on outlives it. Main thread only.
class SettingsView {
public:
    struct Services {
        ModelContext& context;
        AppLogger& logger;
        const Localization& localization;
        /// Leaves the windows out of the taskbar, or not; `activate` brings the application to the front.
        std::function<void(bool hide, bool activate)> applyDockVisibility;
    };

    /// The minutes without input after which somebody may be said to be away.
    static constexpr std::array<std::int64_t, 7> idleMinutesOffered{1, 2, 3, 5, 10, 15, 30};

    explicit SettingsView(Services services);

    // Those of somebody who has chosen none yet, until `load`
    bool onlyTrackWorkHours = false;
    std::set<std::int64_t> workDays;  ///< 0 is the first day of the user's week
    std::int64_t workStartHour = 0;
    std::int64_t workStartMinute = 0;
    std::int64_t workEndHour = 0;
    std::int64_t workEndMinute = 0;
    SupportedLanguage selectedLanguage = SupportedLanguage::english;
    bool enableIdleDetection = false;
    std::int64_t idleThresholdMinutes = 0;
    bool splitsRecordsByTitle = false;
    bool countsCallsAsPresence = false;
    bool offersAbsences = false;
    bool hideDockIcon = false;

    /// Takes what is stored. Where that can't be read, everything stays.
    void load();

    /// Writes everything, applies the visibility in the taskbar, and says true. A failure is logged, and changes
    /// nothing else: the sheet stays.
    bool save();

    /// Which of the offered minutes is chosen; none for a stored number that isn't offered, which stays until another
    /// one is chosen.
    [[nodiscard]] std::optional<std::size_t> idleChoice() const;

    /// A day that may be chosen, in the order of the user's week.
    struct Weekday {
        std::int64_t number = 0;  ///< as in `workDays`
        std::string name;         ///< short
        friend bool operator==(const Weekday&, const Weekday&) = default;
    };
    [[nodiscard]] std::vector<Weekday> weekdays(const Calendar& calendar = Calendar::current()) const;
    void setWorkDay(std::int64_t number, bool isChosen);

    /// What the present choices mean, in words.
    struct Preview {
        std::string days;  ///< or, alone, that everything is recorded
        std::string hours;
        std::string now;
        bool isInside = true;  ///< may the present moment be recorded?
        friend bool operator==(const Preview&, const Preview&) = default;
    };
    [[nodiscard]] Preview preview(const Calendar& calendar = Calendar::current()) const;

private:
    void take(const AppSettings& settings);
    void copyInto(AppSettings& settings) const;

    Services services_;
};

}  // namespace quorvane
