#pragma once

#include "platform/Accessibility.h"
#include "platform/ApplicationIcons.h"
#include "platform/Automation.h"
#include "platform/ForegroundSource.h"
#include "platform/IdleSource.h"
#include "platform/KeyEventSource.h"
#include "platform/PointerEventSource.h"
#include "platform/PresenceSource.h"
#include "platform/ReturnSource.h"
#include "platform/RunningApplications.h"
#include "platform/SettingsPanes.h"
#include "platform/SystemEvents.h"

#include <vector>

namespace quorvane::platform {

/// All that can be asked of the desktop on which the user works. The sources belong to it.
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual ForegroundSource& foreground() = 0;
    virtual IdleSource& idle() = 0;
    virtual ReturnSource& returns() = 0;
    virtual KeyEventSource& keys() = 0;
    virtual PointerEventSource& pointer() = 0;
    virtual PresenceSource& presence() = 0;
    virtual SystemEvents& systemEvents() = 0;
    virtual SettingsPanes& settingsPanes() = 0;
    virtual Accessibility& accessibility() = 0;
    virtual Automation& automation() = 0;
    virtual RunningApplications& runningApplications() = 0;
    virtual ApplicationIcons& applicationIcons() = 0;

    /// Who lets see the applications, titles, documents and pages in front, or why nobody does. Waits for nobody.
    [[nodiscard]] virtual std::vector<Channel> sight() = 0;

    /// The same for every question. Asks around, which may take a second.
    [[nodiscard]] virtual std::vector<Channel> channels() = 0;
};

}  // namespace quorvane::platform
