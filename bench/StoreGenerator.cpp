#include "StoreGenerator.h"

#include "base/Uuid.h"
#include "store/ActivityRecord.h"
#include "store/Database.h"
#include "store/EntityDescription.h"
#include "store/Project.h"
#include "store/Schema.h"

#include <array>
#include <fmt/format.h>
#include <random>

namespace quorvane::bench {
namespace {

struct Application {
    const char* bundleId;
    const char* name;
    const char* title;
    const char* path;
    const char* url;
    const char* category;
};

constexpr std::array<Application, 10> applications{{
    {"com.microsoft.vscode", "Visual Studio Code", "main.cpp — engine — Visual Studio Code",
     "/home/mia/engine/main.cpp", nullptr, "工作"},
    {"org.mozilla.firefox", "Firefox", "Invoices, second quarter — Mozilla Firefox", nullptr,
     "https://example.com/invoices?quarter=2", "工作"},
    {"com.google.Chrome", "Google Chrome", "设计评审 - Google Chrome", nullptr, "https://example.org/review/42",
     nullptr},
    {"debian-xterm", "XTerm", "mia@desk: ~/engine", nullptr, nullptr, "工作"},
    {"org.gnome.Evince", "Document Viewer", "paper.pdf", "/home/mia/papers/paper.pdf", nullptr, "学习"},
    {"libreoffice-writer", "LibreOffice Writer", "Offer, \"draft 2\".odt", "/home/mia/offers/draft 2.odt", nullptr,
     nullptr},
    {"thunderbird", "Thunderbird", "Re: Rückfrage zum Angebot", nullptr, nullptr, "社交"},
    {"mpv", "mpv", "Test Song - mpv", nullptr, nullptr, "娱乐"},
    {"slack", "Slack", "مشروع | general", nullptr, nullptr, "社交"},
    {"org.xfce.mousepad", "Mousepad", "notes, today.txt - Mousepad", "/home/mia/notes, today.txt", nullptr, nullptr},
}};

class Generator {
public:
    explicit Generator(const StorePlan& plan) : plan_(plan), random_(plan.seed) {}

    Blob uuid() {
        std::string bytes;
        for (int i = 0; i < 2; ++i) {
            const std::uint64_t word = random_();
            bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
        }
        return Blob{bytes};
    }

    std::int64_t between(std::int64_t low, std::int64_t high) {
        return low + static_cast<std::int64_t>(random_() % static_cast<std::uint64_t>(high - low + 1));
    }

    SqlValue text(const char* held) { return held ? SqlValue{std::string(held)} : SqlValue{}; }

    /// A record that starts `sinceDayStart` into the working day, in the order of the entity's attributes.
    std::vector<SqlValue> record(std::int64_t startMicroseconds, std::int64_t lengthMicroseconds) {
        const auto& application = applications[static_cast<std::size_t>(between(0, applications.size() - 1))];
        const std::int64_t end = startMicroseconds + lengthMicroseconds;
        const bool hasProject = between(0, 3) == 0;
        const char* status = between(0, 1) == 0 ? "review" : between(0, 4) == 0 ? "nonBillable" : "billable";
        return {uuid(),
                startMicroseconds,
                end,
                std::string("app"),
                std::string(application.bundleId),
                std::string(application.name),
                text(application.title),
                text(application.path),
                text(application.url),
                text(application.category),
                std::string(between(0, 3) == 0 ? "编程,deep" : ""),
                std::string("system"),
                1.0,
                std::string(status),
                SqlValue{},
                SqlValue{},
                startMicroseconds,
                end,
                SqlValue{},
                hasProject ? SqlValue{between(1, plan_.projects)} : SqlValue{}};
    }

    std::vector<SqlValue> project(int number) {
        const std::int64_t now = microsecondsSince1970(plan_.end);
        return {uuid(),
                fmt::format("Project {:02}", number),
                std::string("gray"),
                fmt::format("Client {}", number % 12),
                40.0 + number,
                std::string(number % 5 == 0 ? "EUR" : "USD"),
                now,
                now,
                std::int64_t{0},
                SqlValue{}};
    }

private:
    const StorePlan& plan_;
    std::mt19937_64 random_;
};

std::string insertion(const EntityDescription& entity) {
    std::string places = "?";
    for (std::size_t i = 1; i < entity.attributes.size(); ++i)
        places += ", ?";
    return fmt::format("INSERT INTO {} ({}) VALUES ({})", entity.table, Schema::columnList(entity), places);
}

bool isWeekend(std::int64_t day) {
    const auto weekday = (day + 4) % 7;  // 1970-01-01 was a Thursday; 0 is Sunday
    return weekday == 0 || weekday == 6;
}

}  // namespace

void generateStore(const std::filesystem::path& file, const StorePlan& plan) {
    constexpr std::int64_t second = 1'000'000;
    constexpr std::int64_t day = 86'400 * second;
    Database database({.file = file});
    Generator generator(plan);
    database.inTransaction([&] {
        const std::string projectSql = insertion(Project::description());
        for (int i = 1; i <= plan.projects; ++i)
            database.execute(projectSql, generator.project(i));
        const std::string recordSql = insertion(ActivityRecord::description());
        // Days are laid out backwards from the end and written oldest first, as tracking writes them.
        std::vector<std::int64_t> days;
        std::int64_t left = plan.records;
        for (std::int64_t at = microsecondsSince1970(plan.end) / day; left > 0; --at) {
            if (isWeekend(at)) continue;
            days.push_back(at);
            left -= plan.recordsPerDay;
        }
        left = plan.records;
        for (auto at = days.rbegin(); at != days.rend(); ++at) {
            std::int64_t start = *at * day + std::int64_t{8} * 3600 * second;
            for (int i = 0; i < plan.recordsPerDay && left > 0; ++i, --left) {
                const std::int64_t length = generator.between(0, 4) == 0 ? generator.between(60, 140) * second + 250'000
                                                                         : generator.between(2, 25) * second;
                database.execute(recordSql, generator.record(start, length));
                start += length + (generator.between(0, 60) == 0 ? generator.between(30, 240) * second : 0);
            }
        }
    });
}

}  // namespace quorvane::bench
