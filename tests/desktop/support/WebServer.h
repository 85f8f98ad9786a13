#pragma once

#include "desktop/support/ChildProcess.h"
#include "support/TemporaryFolder.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvane {

/// A web server on this machine that misbehaves on request (`web_server.py` says how). It speaks TLS with a certificate
/// for "localhost", which an authority signed that was made for it. It lasts as long as the object.
class WebServer {
public:
    WebServer();  ///< Throws where openssl or python3 are missing.

    [[nodiscard]] const std::string& port() const { return port_; }
    [[nodiscard]] std::string url(const std::string& path, const std::string& host = "localhost") const;
    [[nodiscard]] std::string authority() const;  ///< its certificate, in PEM

    /// What the path "/api/..." answers with from now on, by the last part of its name. What is posted there is
    /// answered with a status ("404") or as the path of a word would be ("hang").
    void publish(const std::string& name, const std::string& bytes) const;

    /// What was posted.
    struct Posted {
        std::string headers;  ///< sorted lines, without the host
        std::string body;
    };
    [[nodiscard]] std::vector<Posted> posted(const std::string& name) const;

private:
    TemporaryFolder folder_;
    std::optional<ChildProcess> process_;
    std::string port_;
};

}  // namespace quorvane
