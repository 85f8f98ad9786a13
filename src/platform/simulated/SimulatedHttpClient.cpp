#include "platform/simulated/SimulatedHttpClient.h"

#include <algorithm>
#include <utility>

namespace quorvane::platform {
namespace {

struct SimulatedExchange : HttpExchange {
    std::unique_ptr<WorkItem> answer;
};

HttpResult resultOf(const HttpRequest& request, const SimulatedHttpClient::Network& network) {
    if (!request.url.starts_with("https://"))
        return HttpFailure{.kind = HttpFailure::Kind::refused, .cause = "the address is no https URL"};
    const auto found = network.answers.find(request.url);
    if (found == network.answers.end()) return HttpFailure{.cause = "no such host"};
    const auto* const response = std::get_if<HttpResponse>(&found->second);
    if (response && response->body.size() > request.maximumBytes)
        return HttpFailure{.kind = HttpFailure::Kind::tooLarge, .cause = "the answer is too large"};
    return found->second;
}

}  // namespace

std::unique_ptr<HttpExchange> SimulatedHttpClient::send(const HttpRequest& request,
                                                        std::function<void(const HttpResult&)> completion) {
    network_.requests.push_back(request);
    const bool isSilent = std::ranges::count(network_.silent, request.url) > 0;
    const HttpResult result =
        isSilent ? HttpResult(HttpFailure{.kind = HttpFailure::Kind::timedOut, .cause = "there was no whole answer"})
                 : resultOf(request, network_);
    auto exchange = std::make_unique<SimulatedExchange>();
    exchange->answer = runLoop_.after(isSilent ? request.timeout : latency,
                                      [completion = std::move(completion), result] { completion(result); });
    return exchange;
}

}  // namespace quorvane::platform
