#pragma once

#include "base/Date.h"
#include "cloud/postgresql/CancelToken.h"
#include "cloud/postgresql/PostgresConnection.h"

#include <memory>
#include <optional>
#include <string>

namespace quorvane::postgresql {

struct KeyringAnswer {
    std::optional<std::string> password{};  ///< never in a log
    bool isLocked = false;                  ///< there is one, and the keyring has to be unlocked to read it
};

/// The password that the desktop's keyring holds under `application=quorvane`, `service` and `user`. Asks nobody to
/// unlock it. Nothing is found without a keyring, when it does not answer within `patience`, and when the token is
/// cancelled.
[[nodiscard]] KeyringAnswer keyringPassword(const std::string& service, const std::string& user, Seconds patience,
                                            const CancelToken& cancelToken);

/// Connects; if the server wants a password and libpq finds none, with the keyring's. The settings then hold it, for
/// later connections. Throws `PostgresError`.
[[nodiscard]] std::unique_ptr<PostgresConnection> connectWithKeyring(ConnectionSettings& settings,
                                                                     const CancelToken& cancelToken);

}  // namespace quorvane::postgresql
