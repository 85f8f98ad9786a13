#include "shell/billing/BillingFilterBar.h"

#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"

namespace quorvane {
namespace {

constexpr int pairsBelow = 760;
constexpr int gap = 12;

}  // namespace

BillingFilterBar::BillingFilterBar(BillingDashboardView& dashboard, const Localization& l, QWidget* parent)
    : ArrangedWidget(parent), dashboard_(dashboard), range_(new ChoiceField(qt(l.text("time_range")), this)),
      project_(new ChoiceField(qt(l.text("project")), this)), client_(new ChoiceField(qt(l.text("client")), this)),
      category_(new ChoiceField(qt(l.text("category")), this)),
      start_(new DayField(qt(l.text("range_custom_start")), this)),
      end_(new DayField(qt(l.text("range_custom_end")), this)) {
    start_->hide();
    end_->hide();
    follow();
}

void BillingFilterBar::follow() {
    subscribe(range_->chosen, *this, [this](const std::string& value) {
        dashboard_.setReportRangeKind(
            fromRawValue<BillingReportRangeKind>(value).value_or(BillingReportRangeKind::month));
    });
    subscribe(project_->chosen, *this,
              [this](const std::string& value) { dashboard_.setSelectedProjectId(Uuid::parse(value)); });
    subscribe(client_->chosen, *this, [this](const std::string& value) { dashboard_.setSelectedClientName(value); });
    subscribe(category_->chosen, *this, [this](const std::string& value) { dashboard_.setSelectedCategory(value); });
    subscribe(start_->chosen, *this,
              [this](const CivilDate& day) { dashboard_.setCustomStart(Calendar::current().date(day)); });
    subscribe(end_->chosen, *this,
              [this](const CivilDate& day) { dashboard_.setCustomEnd(Calendar::current().date(day)); });
}

void BillingFilterBar::refresh() {
    const auto& filters = dashboard_.filters();
    range_->setChoices(dashboard_.rangeChoices(), std::string(rawValue(dashboard_.reportRangeKind())));
    project_->setChoices(dashboard_.projectChoices(), filters.projectId ? filters.projectId->string() : "");
    client_->setChoices(dashboard_.clientChoices(), filters.client);
    category_->setChoices(dashboard_.categoryChoices(), filters.category);
    const auto calendar = Calendar::current();
    start_->setDay(calendar.civilDate(dashboard_.customStart()));
    end_->setDay(calendar.civilDate(dashboard_.customEnd()));
    const bool isCustom = dashboard_.reportRangeKind() == BillingReportRangeKind::custom;
    if (start_->isHidden() != isCustom) return;
    start_->setVisible(isCustom);
    end_->setVisible(isCustom);
    rearrange();
}

int BillingFilterBar::arrange(int width, bool isTrial) const {
    const int columns = width < pairsBelow ? 2 : 4;
    const int fieldHeight = range_->sizeHint().height();
    const double fieldWidth = (width - (columns - 1) * gap) / static_cast<double>(columns);
    int height = 0;
    int place = 0;
    for (QWidget* const field : std::initializer_list<QWidget*>{range_, project_, client_, category_, start_, end_}) {
        if (field->isHidden()) continue;
        const int y = place / columns * (fieldHeight + gap);
        const double x = (place % columns) * (fieldWidth + gap);
        if (!isTrial) put(*field, width, {qRound(x), y, qRound(x + fieldWidth) - qRound(x), fieldHeight});
        height = y + fieldHeight;
        ++place;
    }
    return height;
}

}  // namespace quorvane
