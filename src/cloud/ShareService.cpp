#include "cloud/ShareService.h"

#include "cloud/CloudKitDataStrategy.h"
#include "cloud/CloudKitSyncError.h"
#include "cloud/ShareExport.h"
#include "cloud/ShareRecord.h"
#include "cloud/ShareToken.h"
#include "platform/InBackground.h"
#include "store/StoreError.h"

#include <algorithm>
#include <cassert>
#include <unordered_map>
#include <utility>

namespace quorvane {
namespace {

constexpr std::size_t pageSize = 100;
constexpr auto publicData = platform::DatabaseScope::publicData;

/// The name under which the record is saved.
std::string save(platform::RecordSession& session, const platform::CloudRecord& record) {
    const auto results = session.modify(publicData, {record});
    assert(results.size() == 1);
    if (results.front().error)
        throw platform::CloudFailure(platform::CloudFailure::Kind::refused, *results.front().error);
    return results.front().recordName;
}

}  // namespace

/// What a public record that names a token says.
struct ShareService::PublicShare {
    std::string token;
    std::string recordName;
    std::optional<bool> isActive;
};

ShareService::ShareService(platform::RunLoop& runLoop, ConsoleSink& console, const Localization& localization,
                           std::unique_ptr<platform::RecordContainer> container)
    : runLoop_(runLoop), console_(console), localization_(localization), container_(std::move(container)) {}

ShareService::~ShareService() {
    console_.write("ShareService: deinit - 清理资源");
    if (session_) session_->cancel();
    console_.write("ShareService: 资源清理完成");
}

void ShareService::enqueue(std::function<void()> operation) {
    assert(runLoop_.isMainThread());
    waiting_.push_back(std::move(operation));
    if (!isBusy_) startNext();
}

void ShareService::startNext() {
    isBusy_ = !waiting_.empty();
    if (!isBusy_) return;
    const auto operation = std::move(waiting_.front());
    waiting_.pop_front();
    isLoading_ = true;
    operation();
    changed.send();
}

/// Ends the operation in a later turn of the loop. Who hears of it may destroy the service.
void ShareService::end(std::function<void()> report) {
    runLoop_.post([weak = weak_.handle(), report = std::move(report)] {
        auto* self = weak.get();
        if (self == nullptr) return;
        self->isLoading_ = false;
        self->changed.send();
        if (weak) report();
        if ((self = weak.get()) != nullptr) self->startNext();
    });
}

/// Does the work on a worker in a session of its own, and then calls `done` with a future of its result, which throws
/// `CloudKitSyncError`; not once the service is gone.
template <class Work, class Done>
void ShareService::ask(Work work, Done done) {
    session_ = container_->newSession();
    platform::inBackground(
        runLoop_,
        [session = session_, work = std::move(work)] {
            try {
                return work(*session);
            } catch (const platform::CloudFailure& failure) {
                throw CloudKitSyncError::from(failure);
            }
        },
        [weak = weak_.handle(), done = std::move(done)](auto answer) {
            auto* self = weak.get();
            if (self == nullptr) return;
            self->session_.reset();
            done(std::move(answer));
        });
}

/// Takes a step; if it fails, the message says so and why.
std::exception_ptr ShareService::attempt(MessageKey<std::string> failed, const std::function<void()>& step) {
    try {
        step();
        return nullptr;
    } catch (const CloudKitSyncError& error) {
        errorMessage_ = localization_.text(failed, error.text(localization_));
        return std::current_exception();
    } catch (const StoreError& error) {
        errorMessage_ = localization_.text(failed, std::string(error.what()));
        return std::current_exception();
    }
}

void ShareService::createShare(const NewShare& share, ModelContext& context, Created finished) {
    enqueue([this, share, &context, finished = std::move(finished)] {
        errorMessage_.reset();
        const auto stored = std::make_shared<ActivityShare>();
        stored->shareToken = ShareToken::random();
        stored->title = share.title;
        stored->expiresAt = share.expiresAt;
        stored->projectIds = share.projectIds;
        const auto failure = attempt("share_create_failed", [&] {
            context.insert(stored);
            context.save();
            if (!container_) throw CloudKitSyncError(CloudKitSyncError::Code::notAvailable);
        });
        if (failure)
            end([finished, failure] { finished(nullptr, failure); });
        else
            publish(stored, context, finished);
    });
}

void ShareService::publish(const std::shared_ptr<ActivityShare>& share, ModelContext& context,
                           const Created& finished) {
    ask([record = makeCloudRecord(*share)](platform::RecordSession& session) { return save(session, record); },
        [this, share, &context, finished](std::future<std::string> name) {
            const auto failure = attempt("share_create_failed", [&] {
                share->cloudKitRecordID = name.get();
                context.save();
            });
            if (!failure) shares_.insert(shares_.begin(), share);
            end([finished, failure, share = failure ? nullptr : share] { finished(share, failure); });
        });
}

void ShareService::stopShare(const std::shared_ptr<ActivityShare>& share, ModelContext& context, Finished finished) {
    enqueue([this, share, &context, finished = std::move(finished)] {
        const auto failure = attempt("share_stop_failed", [&] {
            share->isActive = false;
            context.save();
        });
        if (failure)
            end([finished, failure] { finished(failure); });
        else
            retract(*share, context, finished);
    });
}

void ShareService::retract(const ActivityShare& share, ModelContext& context, const Finished& finished) {
    const auto reload = [this, &context, finished] {
        load(context, [finished](const std::exception_ptr&) { finished(nullptr); });
    };
    const std::string name = share.cloudKitRecordID().value_or("");
    if (name.empty() || !container_) {
        reload();
        return;
    }
    ask([name](platform::RecordSession& session) { session.deleteRecord(publicData, name); },
        [this, finished, reload](std::future<void> deleted) {
            const auto failure = attempt("share_stop_failed", [&] { deleted.get(); });
            if (failure)
                end([finished, failure] { finished(failure); });
            else
                reload();
        });
}

void ShareService::loadShares(ModelContext& context, Finished finished) {
    enqueue([this, &context, finished = std::move(finished)] { load(context, finished); });
}

void ShareService::load(ModelContext& context, const Finished& finished) {
    const auto failure = attempt("share_load_failed", [&] {
        shares_ = context.fetch<ActivityShare>({.sort = {descending(&ActivityShare::createdAt)}});
    });
    if (failure || !container_) {
        end([finished, failure] { finished(failure); });
        return;
    }
    ask(publicShares, [this, &context, finished](std::future<std::vector<PublicShare>> found) {
        const auto failed = attempt("share_sync_failed", [&] { takeOver(found.get(), context); });
        end([finished, failed] { finished(failed); });
    });
}

/// The newest public shares that name a token. A row that can't be read is passed over.
std::vector<ShareService::PublicShare> ShareService::publicShares(platform::RecordSession& session) {
    const std::string type(CloudKitDataStrategy::PublicData::activityShare);
    platform::RecordQuery query{.recordType = type, .equals = CloudKitDataStrategy::predicate(type)};
    std::vector<PublicShare> found;
    for (std::size_t left = CloudKitDataStrategy::defaultResultLimit; left > 0;) {
        query.limit = std::min(pageSize, left);
        const auto page = session.query(publicData, query);
        for (const auto& row : page.rows) {
            const auto* record = std::get_if<platform::CloudRecord>(&row);
            auto token = record ? record->get<std::string>("shareToken") : std::nullopt;
            if (token) found.push_back({std::move(*token), record->recordName, record->get<bool>("isActive")});
        }
        if (!page.next || page.rows.empty()) break;
        query.after = page.next;
        left -= std::min(left, page.rows.size());
    }
    return found;
}

void ShareService::takeOver(const std::vector<PublicShare>& found, ModelContext& context) {
    std::unordered_map<std::string, ActivityShare*> byToken;
    for (const auto& share : shares_)
        byToken.try_emplace(share->shareToken(), share.get());
    for (const auto& record : found) {
        const auto known = byToken.find(record.token);
        if (known == byToken.end()) continue;
        if (record.isActive) known->second->isActive = *record.isActive;
        known->second->cloudKitRecordID = record.recordName;
    }
    try {
        context.save();
    } catch (const StoreError& error) {
        console_.line("同步 CloudKit 记录失败: {}", error.what());
    }
}

std::optional<Json> ShareService::exportShareData(const ActivityShare& share,
                                                  const std::vector<std::shared_ptr<ActivityRecord>>& records) {
    std::optional<Json> document;
    if (attempt("share_export_failed", [&] { document = shareDocument(share, records); })) changed.send();
    return document;
}

}  // namespace quorvane
