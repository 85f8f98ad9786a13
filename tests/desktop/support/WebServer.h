#pragma once

#include "desktop/support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <optional>
#include <string>

namespace quorvane {

/// A web server on this machine that misbehaves on request (`web_server.py` says how). It speaks TLS with a certificate
/// for "localhost", which an authority signed that was made for it. It lasts as long as the object.
class WebServer {
public:
    WebServer();  ///< Throws where openssl or python3 are missing.

    [[nodiscard]] const std::string& port() const { return port_; }
    [[nodiscard]] std::string url(const std::string& path, const std::string& host = "localhost") const;
    [[nodiscard]] std::string authority() const;  ///< its certificate, in PEM

    /// What the path "/api/..." answers with from now on, by the last part of its name.
    void publish(const std::string& name, const std::string& bytes) const;

private:
    TemporaryFolder folder_;
    std::optional<ChildProcess> process_;
    std::string port_;
};

}  // namespace quorvane
