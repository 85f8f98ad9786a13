#pragma once

#include <map>
#include <optional>
#include <string>

namespace quorvane {

/// Environment variables that are as they were when it goes.
class Environment {
public:
    Environment() = default;
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment();

    void set(const std::string& name, const std::string& value);
    void unset(const std::string& name);

private:
    void remember(const std::string& name);

    std::map<std::string, std::optional<std::string>> before_;
};

}  // namespace quorvane
