#pragma once

#include "platform/ReturnSource.h"
#include "platform/linux/gnome/MutterIdleSource.h"

namespace quorvane::platform {

/// A return is what Mutter tells of the next input. When the shell starts anew the wait goes on.
class MutterReturnSource final : public ReturnSource {
public:
    explicit MutterReturnSource(MutterIdleSource& idle);

    [[nodiscard]] std::unique_ptr<ReturnWatch> watch(std::function<void()> returned) override;
    [[nodiscard]] Channel channel() const override;

private:
    class InputWatch;

    MutterIdleSource& idle_;
};

}  // namespace quorvane::platform
