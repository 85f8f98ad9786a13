#include "store/SafeModelContainer.h"

#include "support/LoggingTest.h"
#include "support/Matchers.h"
#include "support/TemporaryFolder.h"

#include <stdexcept>
#include <thread>

namespace quorvane {
namespace {

struct ProcessEnded : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The ladder of attempts.
class SafeModelContainerTest : public LoggingTest {
protected:
    using Open = std::function<std::shared_ptr<ModelContainer>(const ModelConfiguration&)>;

    void configure(const Open& open = {}) {
        const auto end = [](const std::string& message) { throw ProcessEnded(message); };
        SafeModelContainer::configure({.file = file, .logger = &logger, .open = open, .fatal = end});
    }
    /// The first `failures` of the attempts fail.
    void failAtFirst(int failures) {
        configure([this, failures](const ModelConfiguration& configuration) {
            attempts.push_back(configuration);
            if (std::ssize(attempts) <= failures)
                throw StoreError(StoreError::Code::failed, "error " + std::to_string(attempts.size()));
            return std::make_shared<ModelContainer>(configuration);
        });
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
    const std::filesystem::path file = folder / "store.sqlite";

    std::vector<ModelConfiguration> attempts;
};

TEST_F(SafeModelContainerTest, EachAttemptIsPlainerThanTheOneBeforeAndTheFirstThatSucceedsCounts) {
    for (int failures = 0; failures < 3; ++failures) {
        SCOPED_TRACE(failures);
        (void)lines();
        logger.clearLogs();
        attempts.clear();
        SafeModelContainer::reset();
        failAtFirst(failures);
        const ModelConfiguration& configuration = SafeModelContainer::sharedContainer().configuration();
        EXPECT_EQ(configuration.file, file);
        EXPECT_TRUE(configuration.allowsSave);
        EXPECT_EQ(configuration.cloudDatabase, failures == 0 ? CloudDatabase::automatic : CloudDatabase::none);
        EXPECT_THAT(attempts, SizeIs(failures + 1));
    }
    EXPECT_THAT(lines(), ElementsAre("INFO 开始创建 SwiftData 容器...", "INFO 尝试创建启用 CloudKit 的容器...",
                                     "WARNING CloudKit 容器创建失败: error 1",
                                     "WARNING CloudKit 容器创建失败，回退到本地容器...",
                                     "INFO 尝试创建禁用 CloudKit 的备用容器...", "ERROR 备用容器创建失败: error 2",
                                     "WARNING 所有模型容器创建尝试都失败了，尝试使用最基本的配置...",
                                     "INFO 使用基本配置成功创建容器"));
}

TEST_F(SafeModelContainerTest, WhenNothingOpensTheProcessEndsAndSaysWhatToDo) {
    failAtFirst(3);
    std::string message;
    try {
        (void)SafeModelContainer::sharedContainer();
    } catch (const ProcessEnded& end) {
        message = end.what();
    }
    EXPECT_THAT(message, AllOf(StartsWith("无法创建任何 SwiftData 容器。"), HasSubstr("最后错误: error 3\n"),
                               EndsWith("如果问题持续，可能需要删除应用数据并重新开始")));
    EXPECT_EQ(lines().back(), "ERROR " + message);
    EXPECT_THAT(attempts, SizeIs(3));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(SafeModelContainerTest, ConcurrentFirstCallsAndLaterOnesGetOneContainer) {
    failAtFirst(2);
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
    writeFile(file, bytes);
    configure();
    EXPECT_THROW((void)SafeModelContainer::sharedContainer(), ProcessEnded);
    EXPECT_EQ(contentOf(file), bytes);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

}  // namespace
}  // namespace quorvane
