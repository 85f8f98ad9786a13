#include "shell/state/ProjectBillingEditor.h"

#include "base/NumberText.h"
#include "platform/Clock.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvane {

ProjectBillingEditor::ProjectBillingEditor(std::shared_ptr<Project> project) : project_(std::move(project)) {
    projectChanged_ = project_->changed.subscribe([this] { changed.send(); });
}

void ProjectBillingEditor::setName(const std::string& name) {
    project_->name = name;
}

void ProjectBillingEditor::setClientName(const std::string& clientName) {
    project_->clientName = clientName.empty() ? std::nullopt : std::optional(clientName);
}

void ProjectBillingEditor::setCurrencyCode(const std::string& currencyCode) {
    project_->currencyCode = currencyCode;
}

std::string ProjectBillingEditor::hourlyRateText() const {
    return decimalText(project_->hourlyRate());
}

void ProjectBillingEditor::setHourlyRateText(const std::string& text) {
    const auto rate = decimalFrom(text);
    const bool isWrong = !rate || *rate < 0;
    if (std::exchange(isHourlyRateWrong_, isWrong) != isWrong) changed.send();
    if (!isWrong) project_->hourlyRate = *rate;
}

void ProjectBillingEditor::stepHourlyRate(int units) {
    isHourlyRateWrong_ = false;
    project_->hourlyRate = std::max(0.0, project_->hourlyRate() + units);
    changed.send();
}

void ProjectBillingEditor::done() {
    project_->updatedAt = platform::currentDate();
}

}  // namespace quorvane
