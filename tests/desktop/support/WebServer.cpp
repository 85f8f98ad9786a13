#include "desktop/support/WebServer.h"

#include <fmt/format.h>
#include <stdexcept>
#include <vector>

namespace quorvane {
namespace {

/// The certificate names the host alone, so that its address is a wrong name.
constexpr const char* makeCertificates = R"(
cd '{}'
new='openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2'
$new -keyout ca.key -out ca.pem -subj '/CN=Test authority' &&
$new -CA ca.pem -CAkey ca.key -keyout server.key -out server.crt -subj /CN=localhost \
    -addext subjectAltName=DNS:localhost -addext basicConstraints=critical,CA:FALSE &&
cat server.key server.crt > server.pem)";

}  // namespace

WebServer::WebServer() {
    const auto folder = folder_.path().string();
    if (run({"sh", "-c", fmt::format(fmt::runtime(makeCertificates), folder)}) != 0)
        throw std::runtime_error("openssl made no certificates");
    process_.emplace(std::vector<std::string>{"python3", "-B", QUORVANE_WEB_SERVER, folder, "{ready}"});
    const auto port = process_->readyLine();
    if (!port) throw std::runtime_error("the web server did not start");
    port_ = *port;
}

std::string WebServer::url(const std::string& path, const std::string& host) const {
    return fmt::format("https://{}:{}/{}", host, port_, path);
}

std::string WebServer::authority() const {
    return contentOf(folder_ / "ca.pem");
}

void WebServer::publish(const std::string& name, const std::string& bytes) const {
    writeFile(folder_ / name, bytes);
}

std::vector<WebServer::Posted> WebServer::posted(const std::string& name) const {
    std::vector<Posted> all;
    for (int count = 1;; ++count) {
        const auto file = folder_ / fmt::format("{}.{}", name, count);
        if (!std::filesystem::exists(file.string() + ".body")) return all;
        all.push_back({contentOf(file.string() + ".headers"), contentOf(file.string() + ".body")});
    }
}

}  // namespace quorvane
