#include "diagnostics/performance/PackedBytes.h"

#include "support/OtherProcess.h"
#include "support/TemporaryFolder.h"

#include <unistd.h>

namespace quorvane {
namespace {

constexpr const char* script = R"(
import subprocess, sys, zlib
folder = sys.argv[1]
if subprocess.run(["gzip", "-t", folder + "/member.gz"], stderr=subprocess.DEVNULL).returncode == 0:
    packed = zlib.decompressobj(wbits=31)
    with open(folder + "/member.gz", "rb") as file:
        plain = packed.decompress(file.read())
    assert packed.eof and not packed.unused_data
    with open(folder + "/plain", "wb") as file:
        file.write(plain)
)";

}  // namespace

std::string unpacked(const std::string& member) {
    const TemporaryFolder folder;
    writeFile(folder / "member.gz", member);
    (void)inOtherProcess([&] {
        ::execlp("python3", "python3", "-c", script, folder.path().c_str(), nullptr);
        return std::string("python3 is missing");
    });
    return std::filesystem::exists(folder / "plain") ? contentOf(folder / "plain") : "?";
}

}  // namespace quorvane
