#pragma once

#include "platform/HttpClient.h"
#include "platform/RunLoop.h"

#include <map>
#include <string>
#include <vector>

namespace quorvane::platform {

/// Web servers as a test scripts them. An address that nobody scripted cannot be reached.
class SimulatedHttpClient final : public HttpClient {
public:
    static constexpr Seconds latency = 0.1s;

    /// The Internet, which clients share and which outlives them.
    struct Network {
        std::map<std::string, HttpResult> answers{};  ///< by URL; bodies beyond a request's limit make it fail
        std::vector<std::string> silent{};            ///< URLs that never answer
        std::vector<HttpRequest> requests{};          ///< all so far
    };

    /// Both outlive the client.
    SimulatedHttpClient(RunLoop& runLoop, Network& network) : runLoop_(runLoop), network_(network) {}

    [[nodiscard]] std::unique_ptr<HttpExchange> send(const HttpRequest& request,
                                                     std::function<void(const HttpResult&)> completion) override;

private:
    RunLoop& runLoop_;
    Network& network_;
};

}  // namespace quorvane::platform
