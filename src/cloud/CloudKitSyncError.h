#pragma once

#include "l10n/Localization.h"
#include "platform/CloudFailure.h"

#include <cstdint>
#include <exception>
#include <string>

namespace quorvane {

/// Why a sync or a share failed.
class CloudKitSyncError : public std::exception {
public:
    enum class Code : std::uint8_t { syncFailed, schedulerError, notAvailable, timeout, recordNotFound, invalidData };

    /// `message` is the payload of `syncFailed` and `schedulerError`; `cause` is one line in English for those who have
    /// to mend it, empty where the description says all.
    explicit CloudKitSyncError(Code code, const std::string& message = {}, std::string cause = {});

    /// What a failure of the cloud means to a sync.
    [[nodiscard]] static CloudKitSyncError from(const platform::CloudFailure& failure);

    [[nodiscard]] Code code() const { return code_; }
    [[nodiscard]] const std::string& cause() const { return cause_; }

    /// The words for people, who read them in their language.
    [[nodiscard]] std::string text(const Localization& localization) const;
    /// The words for lines on the console.
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

private:
    Code code_;
    std::string message_;
    std::string description_;
    std::string cause_;
};

}  // namespace quorvane
