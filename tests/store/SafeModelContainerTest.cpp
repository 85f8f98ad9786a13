#include "store/SafeModelContainer.h"

#include "platform/simulated/RecordingSystemLog.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "support/Matchers.h"
#include "support/RecordingConsole.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <thread>

namespace quorvane {
namespace {

struct ProcessEnded : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The ladder of attempts; the first `failures` of them fail.
class SafeModelContainerTest : public testing::Test {
protected:
    void configure(int failures) {
        SafeModelContainer::configure({.file = folder / "store.sqlite",
                                       .logger = &logger,
                                       .open =
                                           [this, failures](const ModelConfiguration& configuration) {
                                               attempts.push_back(configuration);
                                               if (std::ssize(attempts) <= failures)
                                                   throw StoreError(StoreError::Code::failed,
                                                                    "error " + std::to_string(attempts.size()));
                                               return std::make_shared<ModelContainer>(configuration);
                                           },
                                       .fatal = [](const std::string& message) { throw ProcessEnded(message); }});
    }
    void TearDown() override { SafeModelContainer::reset(); }

    /// What was logged, as "LEVEL message".
    std::vector<std::string> lines() {
        loop.runPosted();
        std::vector<std::string> found;
        for (const LogEntry& entry : logger.logs())
            if (entry.module == "SafeModelContainer")
                found.push_back(std::string(rawValue(entry.level)) + " " + entry.message);
        return found;
    }

    TemporaryFolder folder;
    platform::SimulatedRunLoop loop{at("09:00:00")};
    platform::RecordingSystemLog systemLog;
    RecordingConsole console;
    AppLogger logger{loop, systemLog, console, {}};
    std::vector<ModelConfiguration> attempts;
};

TEST_F(SafeModelContainerTest, EachAttemptIsPlainerThanTheOneBeforeAndTheFirstThatSucceedsCounts) {
    struct Row {
        CloudDatabase cloudDatabase;
        std::vector<std::string> failed;  ///< what the failure of the attempt before adds
        std::string succeeded;            ///< empty: nothing is said
    };
    const Row rows[] = {
        {CloudDatabase::automatic, {"INFO 开始创建 SwiftData 容器...", "INFO 尝试创建启用 CloudKit 的容器..."}, ""},
        {CloudDatabase::none,
         {"WARNING CloudKit 容器创建失败: error 1", "WARNING CloudKit 容器创建失败，回退到本地容器...",
          "INFO 尝试创建禁用 CloudKit 的备用容器..."},
         "INFO 备用容器创建成功"},
        {CloudDatabase::none,
         {"ERROR 备用容器创建失败: error 2", "WARNING 所有模型容器创建尝试都失败了，尝试使用最基本的配置..."},
         "INFO 使用基本配置成功创建容器"},
    };
    std::vector<std::string> expected;
    for (int failures = 0; failures < 3; ++failures) {
        SCOPED_TRACE(failures);
        const Row& row = rows[failures];
        logger.clearLogs();
        attempts.clear();
        SafeModelContainer::reset();
        configure(failures);
        const ModelConfiguration& configuration = SafeModelContainer::sharedContainer().configuration();
        EXPECT_EQ(configuration.file, folder / "store.sqlite");
        EXPECT_TRUE(configuration.allowsSave);
        EXPECT_EQ(configuration.cloudDatabase, row.cloudDatabase);
        expected.insert(expected.end(), row.failed.begin(), row.failed.end());
        auto all = expected;
        if (!row.succeeded.empty()) all.push_back(row.succeeded);
        EXPECT_EQ(lines(), all);
    }
}

TEST_F(SafeModelContainerTest, WhenNothingOpensTheProcessEndsAndSaysWhatToDo) {
    const std::string message = "无法创建任何 SwiftData 容器。所有尝试都失败了：\n1. CloudKit 容器创建失败或超时\n"
                                "2. 本地容器创建失败\n3. 基本配置容器创建失败\n\n最后错误: error 3\n\n可能的原因：\n"
                                "- 数据库文件损坏\n- 磁盘空间不足\n- 权限问题\n- SwiftData 配置错误\n\n建议：\n"
                                "- 检查磁盘空间\n- 重启应用\n- 如果问题持续，可能需要删除应用数据并重新开始";
    configure(3);
    try {
        (void)SafeModelContainer::sharedContainer();
        FAIL() << "the process went on";
    } catch (const ProcessEnded& end) {
        EXPECT_EQ(end.what(), message);
    }
    const auto logged = lines();
    ASSERT_EQ(logged.size(), 9U);
    EXPECT_EQ(logged[7], "ERROR 基本配置容器创建也失败: error 3");
    EXPECT_EQ(logged[8], "ERROR " + message);
    ASSERT_EQ(attempts.size(), 3U);
    EXPECT_EQ(attempts[2].cloudDatabase, CloudDatabase::none);
    EXPECT_TRUE(attempts[2].allowsSave);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(SafeModelContainerTest, ConcurrentFirstCallsAndLaterOnesGetOneContainer) {
    configure(2);
    ModelContainer* fromThread = nullptr;
    std::thread thread([&] { fromThread = &SafeModelContainer::sharedContainer(); });
    ModelContainer* const here = &SafeModelContainer::sharedContainer();
    thread.join();
    EXPECT_EQ(here, fromThread);
    const auto logged = lines();
    EXPECT_EQ(&SafeModelContainer::sharedContainer(), here);
    EXPECT_EQ(lines(), logged);
    EXPECT_EQ(attempts.size(), 3U);
}

TEST_F(SafeModelContainerTest, ADamagedStoreIsLeftToTheUser) {
    const std::string bytes = "SQLite format 3, but not really";
    writeFile(folder / "store.sqlite", bytes);
    SafeModelContainer::configure({.file = folder / "store.sqlite",
                                   .logger = &logger,
                                   .fatal = [](const std::string& message) { throw ProcessEnded(message); }});
    EXPECT_THROW((void)SafeModelContainer::sharedContainer(), ProcessEnded);
    EXPECT_EQ(contentOf(folder / "store.sqlite"), bytes);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

}  // namespace
}  // namespace quorvane
