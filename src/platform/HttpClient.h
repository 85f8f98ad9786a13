#pragma once

#include "base/Date.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvane::platform {

struct HttpHeader {
    std::string name;  ///< whatever case
    std::string value;
    friend bool operator==(const HttpHeader&, const HttpHeader&) = default;
};

struct HttpRequest {
    enum class Redirects {
        none,        ///< the answer is the redirect itself
        sameOrigin,  ///< followed within https, host and port, at most three times; any other is a failure
    };
    std::string method = "GET";
    std::string url{};  ///< https; any other is refused before anything is sent
    std::vector<HttpHeader> headers{};
    std::optional<std::string> body{};  ///< bytes as they are sent
    std::size_t maximumBytes = 65'536;  ///< of the answer's body; a longer one is a failure
    Seconds timeout = 30s;              ///< from the call to the last byte, however slowly they drip
    Redirects redirects = Redirects::none;
    friend bool operator==(const HttpRequest&, const HttpRequest&) = default;
};

/// What a server answered, whatever its status.
struct HttpResponse {
    int status = 0;
    std::vector<HttpHeader> headers{};
    std::string body{};  ///< bytes as they came: nothing is unpacked or converted
    friend bool operator==(const HttpResponse&, const HttpResponse&) = default;
};

/// Why there is no whole answer.
struct HttpFailure {
    enum class Kind {
        refused,      ///< by us: the URL or a redirect leads where nothing may be sent
        unreachable,  ///< no such host, no connection, or it broke off
        insecure,     ///< the server could not prove who it is
        timedOut,
        tooLarge,
    };
    Kind kind = Kind::unreachable;
    std::string cause{};  ///< one line in English, for the log
    friend bool operator==(const HttpFailure&, const HttpFailure&) = default;
};

using HttpResult = std::variant<HttpResponse, HttpFailure>;

/// A request under way. Destroying it cancels: its completion will not be called. It may outlive the client.
class HttpExchange {
public:
    virtual ~HttpExchange() = default;
};

/// Asks web servers, over https alone. It keeps nothing between two requests: no cookies, no cache, no connection, no
/// passwords. Main thread only.
class HttpClient {
public:
    virtual ~HttpClient() = default;

    /// Calls `completion` once, in a later turn of the run loop. The completion may destroy exchange and client.
    [[nodiscard]] virtual std::unique_ptr<HttpExchange> send(const HttpRequest& request,
                                                             std::function<void(const HttpResult&)> completion) = 0;
};

}  // namespace quorvane::platform
