#pragma once

#include "platform/HttpClient.h"

#include <string>

namespace quorvane::platform {

/// Web requests through Qt. Each has a connection and a worker thread of Qt's of its own, which end with it: between
/// requests nothing is open, and a client that is never used costs nothing. It takes the proxy that the
/// application has set for Qt, by default none.
class QtHttpClient final : public HttpClient {
public:
    /// `userAgent`: what servers are told of us ("Quorvane/1.2.0"). `certificates`: authorities that are trusted beside
    /// those of the system, in PEM.
    explicit QtHttpClient(std::string userAgent, std::string certificates = {});

    [[nodiscard]] std::unique_ptr<HttpExchange> send(const HttpRequest& request,
                                                     std::function<void(const HttpResult&)> completion) override;

private:
    std::string userAgent_;
    std::string certificates_;
};

}  // namespace quorvane::platform
