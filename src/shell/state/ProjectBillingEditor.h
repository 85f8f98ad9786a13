#pragma once

#include "base/Signal.h"
#include "store/Project.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>

namespace quorvane {

/// A project's name, client and rate while they are edited. Every edit goes straight into the project, there is nothing
/// to take back. Main thread only.
class ProjectBillingEditor {
public:
    static constexpr std::array<std::string_view, 4> currencies{"USD", "CNY", "EUR", "GBP"};

    explicit ProjectBillingEditor(std::shared_ptr<Project> project);

    [[nodiscard]] const Project& project() const { return *project_; }

    void setName(const std::string& name);
    /// An empty text is no client.
    void setClientName(const std::string& clientName);
    void setCurrencyCode(const std::string& currencyCode);

    /// The rate as a field shows it, "85.00".
    [[nodiscard]] std::string hourlyRateText() const;
    /// Takes what was typed into the field. Anything but a number from 0 on changes nothing and leaves an error.
    void setHourlyRateText(const std::string& text);
    /// Adds whole units of money; it ends at 0. Mends an error.
    void stepHourlyRate(int units);
    [[nodiscard]] bool isHourlyRateWrong() const { return isHourlyRateWrong_; }

    /// The end of editing: `updatedAt` becomes now.
    void done();

    /// After each change of the project, and of the error.
    Signal<> changed;

private:
    std::shared_ptr<Project> project_;
    bool isHourlyRateWrong_ = false;
    Subscription projectChanged_;
};

}  // namespace quorvane
