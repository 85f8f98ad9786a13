// What a sync costs, beside the least that the same server can be asked for over the same socket: one upsert of all
// rows that is written by hand, and COPY. Starts a private server. Best of five; then the peak of the memory of a first
// sync up and down. Usage: cloud_bench [RECORDS]
#include "StoreGenerator.h"
#include "cloud/CloudKitSyncService.h"
#include "cloud/RecordDownload.h"
#include "cloud/postgresql/PostgresContainer.h"
#include "cloud/postgresql/RecordJson.h"
#include "cloud/postgresql/support/PostgresServer.h"
#include "desktop/support/Waiting.h"
#include "platform/linux/loop/QtRunLoop.h"
#include "store/ActivityRecordCloudForm.h"
#include "store/ModelContainer.h"
#include "support/RecordingConsole.h"

#include <charconv>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <libpq-fe.h>
#include <map>
#include <memory>

namespace quorvane {
namespace {

using platform::CloudRecord;
using platform::DatabaseScope;
namespace json = postgresql::RecordJson;

constexpr int rounds = 5;
constexpr std::size_t batchSize = 100;

double secondsOf(const std::function<void()>& work) {
    const Seconds begin = uptime();
    work();
    return (uptime() - begin).count();
}

/// The best of several rounds; `prepare` isn't counted.
double best(const std::function<void()>& prepare, const std::function<void()>& work) {
    double least = 1e9;
    for (int round = 0; round < rounds; ++round) {
        prepare();
        least = std::min(least, secondsOf(work));
    }
    return least;
}

void report(const char* name, double seconds, std::size_t records, double base) {
    fmt::print("{:<44} {:8.1f} ms  {:8.0f} records/s  {:5.2f} x\n", name, seconds * 1000,
               static_cast<double>(records) / seconds, seconds / base);
}

/// A connect string of libpq, whose values hold no blanks here.
std::string settings(const std::map<std::string, std::string>& keywords) {
    std::string text;
    for (const auto& [keyword, value] : keywords)
        text += keyword + "=" + value + " ";
    return text;
}

/// A connection without any of our code between it and the server.
class PlainConnection {
public:
    explicit PlainConnection(const std::map<std::string, std::string>& keywords)
        : connection_(PQconnectdb(settings(keywords).c_str()), PQfinish) {
        if (PQstatus(connection_.get()) != CONNECTION_OK) throw std::runtime_error(PQerrorMessage(connection_.get()));
    }

    void upsert(const std::string& names, const std::string& fields) {
        const char* const values[] = {names.c_str(), fields.c_str()};
        const std::unique_ptr<PGresult, decltype(&PQclear)> result(
            PQexecParams(connection_.get(),
                         "INSERT INTO quorvane.private_records (record_name, record_type, fields) "
                         "SELECT n, 'ActivityRecord', f FROM unnest($1::text[], $2::jsonb[]) AS r(n, f) "
                         "ON CONFLICT (owner, record_name) DO UPDATE SET fields = excluded.fields",
                         2, nullptr, values, nullptr, nullptr, 0),
            PQclear);
        if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
            throw std::runtime_error(PQresultErrorMessage(result.get()));
    }

    std::size_t copyOut() {
        const std::unique_ptr<PGresult, decltype(&PQclear)> result(
            PQexec(connection_.get(), "COPY (SELECT record_name, fields FROM quorvane.private_records) TO STDOUT"),
            PQclear);
        std::size_t bytes = 0;
        char* row = nullptr;
        for (int size = 0; (size = PQgetCopyData(connection_.get(), &row, 0)) > 0; PQfreemem(row))
            bytes += static_cast<std::size_t>(size);
        PQclear(PQgetResult(connection_.get()));
        return bytes;
    }

private:
    std::unique_ptr<PGconn, decltype(&PQfinish)> connection_;
};

std::vector<CloudRecord> recordsOf(ModelContext& context) {
    std::vector<CloudRecord> records;
    for (const auto& record : context.fetch<ActivityRecord>())
        records.push_back(makeCloudRecord(*record));
    return records;
}

std::unique_ptr<platform::RecordContainer> makeContainer() {
    return std::make_unique<postgresql::PostgresContainer>();
}

void upsertInBatches(PlainConnection& connection, const std::vector<std::string>& names,
                     const std::vector<std::string>& fields) {
    for (std::size_t i = 0; i < names.size(); i += batchSize) {
        const auto begin = static_cast<std::ptrdiff_t>(i);
        const auto end = static_cast<std::ptrdiff_t>(std::min(i + batchSize, names.size()));
        connection.upsert(json::array({names.begin() + begin, names.begin() + end}),
                          json::array({fields.begin() + begin, fields.begin() + end}));
    }
}

void saveInBatches(const std::vector<CloudRecord>& records) {
    const auto session = makeContainer()->newSession();
    for (std::size_t i = 0; i < records.size(); i += batchSize) {
        const auto begin = records.begin() + static_cast<std::ptrdiff_t>(i);
        const auto size = static_cast<std::ptrdiff_t>(std::min(batchSize, records.size() - i));
        if (session->modify(DatabaseScope::privateData, {begin, begin + size}).size() != static_cast<std::size_t>(size))
            throw std::runtime_error("a record is missing");
    }
}

std::size_t readAll() {
    const auto session = makeContainer()->newSession();
    platform::RecordQuery query{.recordType = "ActivityRecord", .limit = RecordDownload::pageSize};
    std::size_t rows = 0;
    do {
        const auto page = session->query(DatabaseScope::privateData, query);
        rows += page.rows.size();
        query.after = page.next;
    } while (query.after);
    return rows;
}

void sync(const std::filesystem::path& store) {
    platform::QtRunLoop runLoop;
    RecordingConsole console;
    ModelContainer container({.file = store});
    const Localization localization("en");
    CloudKitSyncService service(runLoop, console, localization, makeContainer());
    std::string failure;
    service.performFullSync(container.mainContext(), [&](const auto& error) {
        if (error) failure = error->what();
        runLoop.quit();
    });
    runLoop.run();
    if (!failure.empty()) throw std::runtime_error(failure);
}

/// The highest that the process's memory has been since `forgetPeak`, in MiB.
double peak() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) {
            const auto first = line.find_first_of("0123456789");
            double kibibytes = 0;
            std::from_chars(line.data() + first, line.data() + line.size(), kibibytes);
            return kibibytes / 1024;
        }
    return 0;
}
void forgetPeak() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

void measure(const PostgresServer& server, std::size_t count) {
    const TemporaryFolder folder;
    const auto empty = [&] { server.sql("admin", "TRUNCATE quorvane.private_records"); };
    bench::generateStore(folder / "plan.sqlite", {.records = static_cast<std::int64_t>(count)});
    const auto records = recordsOf(ModelContainer({.file = folder / "plan.sqlite"}).mainContext());
    std::vector<std::string> names;
    std::vector<std::string> fields;
    for (const auto& record : records) {
        names.push_back(record.recordName);
        fields.push_back(json::text(record.values));
    }
    PlainConnection plain(server.access("alice"));
    const std::string nameArray = json::array(names);
    const std::string fieldArray = json::array(fields);

    const double upsert = best(empty, [&] { plain.upsert(nameArray, fieldArray); });
    report("up: one upsert of all, written by hand", upsert, count, upsert);
    report("up: the same by hundreds", best(empty, [&] { upsertInBatches(plain, names, fields); }), count, upsert);
    report("up: batches of 100", best(empty, [&] { saveInBatches(records); }), count, upsert);
    server.sql("admin", "VACUUM ANALYZE quorvane.private_records");
    const double copy = best([] {}, [&] { static_cast<void>(plain.copyOut()); });
    report("down: COPY", copy, count, copy);
    report("down: pages, read as records",
           best([] {},
                [&] {
                    if (readAll() != count) throw std::runtime_error("a record is missing");
                }),
           count, copy);

    const auto fresh = [&] {
        std::filesystem::remove(folder / "up.sqlite");
        std::filesystem::copy_file(folder / "plan.sqlite", folder / "up.sqlite");
        empty();
    };
    report("a whole first sync from a store, up and down", best(fresh, [&] { sync(folder / "up.sqlite"); }), count,
           upsert + copy);
    const auto gone = [&] {
        for (const char* ending : {"", "-wal", "-shm"})
            std::filesystem::remove(folder.path() / (std::string("down.sqlite") + ending));
    };
    report("a whole first sync into an empty store", best(gone, [&] { sync(folder / "down.sqlite"); }), count, copy);
    report("and once more, with nothing new", best([] {}, [&] { sync(folder / "down.sqlite"); }), count, copy);
}

void measureMemory(const PostgresServer& server, std::size_t count) {
    const TemporaryFolder folder;
    server.sql("admin", "TRUNCATE quorvane.private_records");
    bench::generateStore(folder / "up.sqlite", {.records = static_cast<std::int64_t>(count)});
    forgetPeak();
    const double before = peak();
    sync(folder / "up.sqlite");
    const double up = peak();
    forgetPeak();
    sync(folder / "down.sqlite");
    fmt::print("{:>7} records: {:.1f} MiB before, {:.1f} at most up, {:.1f} down\n", count, before, up, peak());
}

}  // namespace
}  // namespace quorvane

int main(int argc, char** argv) {
    std::size_t count = 10'000;
    if (argc > 1) std::from_chars(argv[1], argv[1] + std::string_view(argv[1]).size(), count);
    const quorvane::PostgresServer server;
    const std::string socket = "host=" + server.folder().string();
    const auto file = server.serviceFile("alice", {socket, "hostaddr=", "sslmode=disable"});
    setenv("PGSERVICEFILE", file.c_str(), 1);
    for (const std::size_t records : {count, 10 * count})
        quorvane::measureMemory(server, records);
    quorvane::measure(server, count);
}
