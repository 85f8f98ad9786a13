#include "store/SqlTrace.h"

#include <memory>
#include <sqlite3.h>

namespace quorvane {
namespace {

std::vector<std::string> heard;
bool isListening = false;

int hear(unsigned, void*, void* statement, void*) {
    const std::unique_ptr<char, void (*)(void*)> text(sqlite3_expanded_sql(static_cast<sqlite3_stmt*>(statement)),
                                                      sqlite3_free);
    if (isListening && text) heard.emplace_back(text.get());
    return 0;
}

int attach(sqlite3* database, const char**, const sqlite3_api_routines*) {
    return sqlite3_trace_v2(database, SQLITE_TRACE_STMT, hear, nullptr);
}

// The type that sqlite3_auto_extension declares for what it calls with other arguments.
auto entryPoint() {
    return reinterpret_cast<void (*)()>(attach);
}

}  // namespace

SqlTrace::SqlTrace() {
    clear();
    isListening = true;
    sqlite3_auto_extension(entryPoint());
}

SqlTrace::~SqlTrace() {
    sqlite3_cancel_auto_extension(entryPoint());
    isListening = false;
}

void SqlTrace::clear() {
    heard.clear();
}

std::vector<std::string> SqlTrace::statements(const std::string& word) const {
    std::vector<std::string> found;
    for (const std::string& statement : heard)
        if (statement.starts_with(word)) found.push_back(statement);
    return found;
}

}  // namespace quorvane
