#include "platform/linux/system/LinuxSystemLog.h"
#include "desktop/support/BoundSocket.h"
#include "support/Matching.h"
#include "support/TemporaryFolder.h"

#include <array>
#include <map>

namespace quorvane::platform {
namespace {

/// A socket where the journal's would be.
class Journal : private BoundSocket {
public:
    explicit Journal(const std::filesystem::path& path) : BoundSocket(path, SOCK_DGRAM) {}

    /// The fields of the next message, read as the journal's protocol says; empty if there is none.
    std::map<std::string, std::string> next() {
        static std::array<char, 1 << 17> buffer;
        const auto size = recv(descriptor(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        std::string_view rest(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
        std::map<std::string, std::string> fields;
        while (!rest.empty()) {
            const auto end = rest.find('\n');
            const auto head = rest.substr(0, end);
            rest.remove_prefix(end + 1);
            if (const auto equals = head.find('='); equals != std::string_view::npos) {
                fields.emplace(head.substr(0, equals), head.substr(equals + 1));
                continue;
            }
            std::uint64_t length = 0;
            for (int i = 7; i >= 0; --i)
                length = length << 8 | static_cast<unsigned char>(rest[static_cast<std::size_t>(i)]);
            fields.emplace(head, rest.substr(8, length));
            rest.remove_prefix(8 + length + 1);
        }
        return fields;
    }
};

TEST(LinuxSystemLogTest, TheJournalGetsTheLineWithItsOriginAndSeverityAndAHugeOneShortened) {
    const TemporaryFolder folder;
    Journal journal(folder / "socket");
    LinuxSystemLog log(folder / "socket");
    EXPECT_EQ(log.channel().name, "journald");
    const std::pair<SystemLogType, const char*> rows[] = {
        {SystemLogType::debug, "7"}, {SystemLogType::standard, "6"}, {SystemLogType::error, "3"}};
    for (const auto& [type, priority] : rows) {
        log.write(type, "first line\nMESSAGE=not a field\n日志");
        const auto fields = journal.next();
        EXPECT_THAT(fields, Contains(Pair("PRIORITY", priority)));
        EXPECT_THAT(fields, Contains(Pair("MESSAGE", "first line\nMESSAGE=not a field\n日志")));
        EXPECT_THAT(fields, Contains(Pair("SUBSYSTEM", "zelkor.quorvane.main")));
        EXPECT_THAT(fields, Contains(Pair("CATEGORY", "AppLogger")));
        EXPECT_THAT(fields, Contains(Pair("SYSLOG_IDENTIFIER", "quorvane")));
    }
    log.write(SystemLogType::standard, std::string(10 << 20, 'x'));
    EXPECT_EQ(journal.next()["MESSAGE"].size(), 48U * 1024);

    LinuxSystemLog elsewhere(folder / "nothing");
    elsewhere.write(SystemLogType::error, "nobody hears this in a test");
    EXPECT_NE(elsewhere.channel().name, "journald");
    EXPECT_EQ(elsewhere.channel().isAvailable, elsewhere.channel().reason.empty());
}

TEST(LinuxSystemLogTest, AnotherOriginStandsInPlaceOfTheLoggers) {
    const TemporaryFolder folder;
    Journal journal(folder / "socket");
    LinuxSystemLog log({.subsystem = "com.marvolt.app", .category = "MemoryMonitor"}, folder / "socket");
    log.write(SystemLogType::standard, "line");
    const auto fields = journal.next();
    EXPECT_THAT(fields, Contains(Pair("SUBSYSTEM", "com.marvolt.app")));
    EXPECT_THAT(fields, Contains(Pair("CATEGORY", "MemoryMonitor")));
}

}  // namespace
}  // namespace quorvane::platform
