#include "cloud/CloudKitSyncService.h"

#include "cloud/RecordSync.h"
#include "platform/InBackground.h"

#include <string_view>
#include <utility>

namespace quorvane {
namespace {

struct Account {
    platform::AccountStatus status = platform::AccountStatus::couldNotDetermine;
    std::string reason;
};

/// Failures of this kind come and go by themselves; nobody has to be told.
bool isOfTheScheduler(const CloudKitSyncError& error) {
    return std::string_view(error.what()).find("CKScheduler") != std::string_view::npos;
}

}  // namespace

CloudKitSyncService::CloudKitSyncService(platform::RunLoop& runLoop, ConsoleSink& console,
                                         const Localization& localization,
                                         std::unique_ptr<platform::RecordContainer> container)
    : runLoop_(runLoop), console_(console), localization_(localization), container_(std::move(container)) {
    if (isInitialized()) console_.write("CloudKitSyncService: 初始化完成");
}

CloudKitSyncService::~CloudKitSyncService() {
    console_.write("CloudKitSyncService: deinit - 清理资源");
    if (account_) account_->cancel();
    sync_.reset();
    console_.write("CloudKitSyncService: 资源清理完成");
}

void CloudKitSyncService::checkCloudKitAccountStatus(AccountAnswer answer) {
    if (!isInitialized())
        return runLoop_.post([answer = std::move(answer)] { answer(platform::AccountStatus::couldNotDetermine, {}); });
    if (account_) account_->cancel();
    account_ = container_->newSession();
    accountTimeOut_ = runLoop_.after(accountTimeout, [session = account_] { session->cancel(); });
    platform::inBackground(
        runLoop_,
        [session = account_] {
            Account account;
            account.status = session->accountStatus(&account.reason);
            return account;
        },
        [weak = weak_.handle(), session = account_, answer = std::move(answer)](std::future<Account> asked) {
            auto* const self = weak.get();
            if (self == nullptr) return;
            if (self->account_ == session) {
                self->account_.reset();
                self->accountTimeOut_.reset();
            }
            const Account account = asked.get();
            answer(account.status, account.reason);
        });
}

void CloudKitSyncService::syncActivityRecords(ModelContext& context, Finished finished) {
    if (!isInitialized())
        return answerLater(std::move(finished), CloudKitSyncError(CloudKitSyncError::Code::notAvailable));
    if (isSyncing()) {
        console_.write("CloudKitSyncService: 同步已在进行中，跳过重复请求");
        return answerLater(std::move(finished), std::nullopt);
    }
    syncError_.reset();
    syncErrorCause_.clear();
    progress_ = {};
    finished_ = std::move(finished);
    sync_ = std::make_unique<RecordSync>(SyncParts{.runLoop = runLoop_,
                                                   .console = console_,
                                                   .context = context,
                                                   .localization = localization_,
                                                   .session = container_->newSession(),
                                                   .progressChanged = [this] { noteProgress(); }},
                                         [this](const auto& error) { finish(error); });
    timeOut_ = runLoop_.after(syncTimeout, [this] { finish(CloudKitSyncError(CloudKitSyncError::Code::timeout)); });
    runLoop_.post([weak = weak_.handle()] {
        if (auto* const self = weak.get(); self != nullptr && self->sync_) self->sync_->start();
    });
    changed.send();
}

void CloudKitSyncService::performFullSync(ModelContext& context, Finished finished) {
    syncActivityRecords(context, std::move(finished));
}

void CloudKitSyncService::noteProgress() {
    progress_ = sync_->progress();
    changed.send();
}

void CloudKitSyncService::finish(const std::optional<CloudKitSyncError>& error) {
    // What it stands in goes with the sync.
    const auto outcome = error;  // NOLINT(performance-unnecessary-copy-initialization)
    const auto sync = std::exchange(sync_, nullptr);
    timeOut_.reset();
    const auto finished = std::exchange(finished_, nullptr);
    if (!outcome) {
        lastSyncDate_ = platform::currentDate();
    } else {
        syncError_ = outcome->text(localization_);
        syncErrorCause_ = outcome->cause();
        console_.line("CloudKitSyncService: 同步失败 - {}", outcome->what());
    }
    const bool isSilent = outcome && isOfTheScheduler(*outcome);
    if (isSilent) console_.write("CloudKitSyncService: 检测到CloudKit调度器错误，这通常不影响功能");
    changed.send();
    finished(isSilent ? std::nullopt : outcome);
}

void CloudKitSyncService::answerLater(Finished finished, std::optional<CloudKitSyncError> error) {
    runLoop_.post([finished = std::move(finished), error = std::move(error)] { finished(error); });
}

}  // namespace quorvane
