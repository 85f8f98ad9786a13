#include "platform/linux/system/IniUserDefaults.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <map>

namespace quorvane::platform {
namespace {

using std::filesystem::perms;

TEST(IniUserDefaultsTest, ValuesAreKeptExactlyAcrossRestarts) {
    using namespace std::string_literals;
    const TemporaryFolder folder;
    std::map<std::string, std::string> rows;
    for (const auto& value : {"value"s, ""s, "one\ntwo\r\n\tthree\\n"s, "  both ends  "s, "007"s, "@home"s, "a\0b"s,
                              R"(a,b;c="d" 'e' #f %41 @Invalid() @ByteArray(x))"s, R"({"标签":["工作","😀"],"n":1.5})"s})
        rows.emplace("key " + std::to_string(rows.size()), value);
    for (const auto& key : {"分类偏好"s, "with/slash"s, "with//slash"s, "/with/slash"s, "with\\slash"s, "with%2Fslash"s,
                            "Case"s, "case"s, "General/x"s, "key = with [signs]"s, ""s, "%"s})
        rows.emplace(key, std::to_string(rows.size()));
    IniUserDefaults before(folder / "q.conf");
    for (const auto& [key, value] : rows)
        EXPECT_TRUE(before.setValue(key, value)) << key;
    const IniUserDefaults after(folder / "q.conf");
    for (const auto& [key, value] : rows) {
        SCOPED_TRACE(key);
        EXPECT_EQ(before.value(key), value);
        EXPECT_EQ(after.value(key), value);
    }
}

TEST(IniUserDefaultsTest, ARemovedValueIsGoneAndWhatNeverWasIsNone) {
    const TemporaryFolder folder;
    IniUserDefaults defaults(folder / "q.conf");
    EXPECT_EQ(defaults.value("never"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / "q.conf")) << "reading makes no file";
    EXPECT_TRUE(defaults.setValue("group/a", "1"));
    EXPECT_TRUE(defaults.setValue("group", "2"));
    EXPECT_TRUE(defaults.removeValue("group"));
    EXPECT_EQ(defaults.value("group"), std::nullopt);
    EXPECT_EQ(IniUserDefaults(folder / "q.conf").value("group/a"), "1");
}

TEST(IniUserDefaultsTest, TwoProcessesSeeEachOthersValues) {
    const TemporaryFolder folder;
    IniUserDefaults ours(folder / "q.conf");
    IniUserDefaults theirs(folder / "q.conf");
    EXPECT_TRUE(ours.setValue("a", "1"));
    EXPECT_EQ(theirs.value("a"), "1");
    EXPECT_TRUE(theirs.setValue("b", "2"));
    EXPECT_TRUE(ours.setValue("a", "3"));
    EXPECT_EQ(ours.value("b"), "2");
    EXPECT_EQ(theirs.value("a"), "3");
}

TEST(IniUserDefaultsTest, OnlyTheUserCanReadTheFile) {
    const TemporaryFolder folder;
    IniUserDefaults defaults(folder / "config/quorvane/q.conf");
    for (const char* value : {"1", "2"}) {
        EXPECT_TRUE(defaults.setValue("a", value));
        EXPECT_EQ(std::filesystem::status(folder / "config/quorvane/q.conf").permissions(),
                  perms::owner_read | perms::owner_write);
    }
    EXPECT_EQ(std::filesystem::status(folder / "config/quorvane").permissions(), perms::owner_all);
}

TEST(IniUserDefaultsTest, AValueThatCouldNotBeKeptIsReported) {
    const TemporaryFolder folder;
    writeFile(folder / "file", "");
    IniUserDefaults defaults(folder / "file/q.conf");  // no directory can be made here
    EXPECT_FALSE(defaults.setValue("a", "1"));
    EXPECT_FALSE(defaults.removeValue("a"));
}

}  // namespace
}  // namespace quorvane::platform
