#pragma once

#include "platform/linux/kde/KWinScript.h"
#include "platform/linux/windows/SettledToplevels.h"

namespace quorvane::platform {

/// The windows as a script of ours inside KWin tells of them, over the session bus and without a grant.
class KWinScriptToplevels final : public SettledToplevels {
public:
    explicit KWinScriptToplevels(RunLoop& runLoop);

    [[nodiscard]] Channel channel() const override;

private:
    void show(const QByteArray& picture);

    KWinScript script_;
};

}  // namespace quorvane::platform
