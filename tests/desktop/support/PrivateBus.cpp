#include "desktop/support/PrivateBus.h"

#include "desktop/support/Waiting.h"
#include "support/TemporaryFolder.h"

#include <fmt/format.h>
#include <stdexcept>

namespace quorvane {
namespace {

constexpr const char* busConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:path={}</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

std::string configurationOf(const std::filesystem::path& socket) {
    auto file = socket.string() + ".conf";
    writeFile(file, fmt::format(busConfiguration, socket.string()));
    return file;
}

}  // namespace

PrivateBus::PrivateBus(const std::filesystem::path& socket)
    : socket_(socket), daemon_({"dbus-daemon", "--config-file=" + configurationOf(socket), "--nofork", "--nopidfile",
                                "--print-address"}) {
    if (!waitUntil([&] { return std::filesystem::exists(socket_); }, 10s))
        throw std::runtime_error("dbus-daemon does not start");
}

}  // namespace quorvane
