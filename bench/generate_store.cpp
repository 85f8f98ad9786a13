#include "StoreGenerator.h"
#include "store/StoreError.h"

#include <charconv>
#include <fmt/format.h>
#include <string_view>

// Writes a store for measurements: generate_store FILE RECORDS [SEED [END]], END in seconds since 1970.
int main(int argc, char** argv) {
    quorvane::bench::StorePlan plan;
    const auto read = [](std::string_view text, auto& number) {
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        return error == std::errc{} && end == text.data() + text.size();
    };
    auto end = static_cast<std::int64_t>(quorvane::secondsSince1970(plan.end));
    if (argc < 3 || argc > 5 || !read(argv[2], plan.records) || plan.records < 1 ||
        (argc >= 4 && !read(argv[3], plan.seed)) || (argc == 5 && !read(argv[4], end))) {
        fmt::print(stderr, "usage: generate_store FILE RECORDS [SEED [END]]\n");
        return 2;
    }
    plan.end = quorvane::dateFromSecondsSince1970(static_cast<double>(end));
    try {
        if (std::filesystem::exists(argv[1]))
            throw quorvane::StoreError(quorvane::StoreError::Code::failed, std::string(argv[1]) + ": exists");
        quorvane::bench::generateStore(argv[1], plan);
    } catch (const quorvane::StoreError& error) {
        fmt::print(stderr, "generate_store: {}\n", error.what());
        return 1;
    }
    return 0;
}
