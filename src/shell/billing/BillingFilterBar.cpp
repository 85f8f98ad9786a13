#include "shell/billing/BillingFilterBar.h"

#include "shell/look/Columns.h"
#include "shell/look/Labelled.h"
#include "shell/look/Typography.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QSignalBlocker>

namespace quorvane {
namespace {

constexpr int pairsBelow = 760;
constexpr int filterGap = 12;

bool holds(const QComboBox& field, const std::vector<BillingDashboardView::Choice>& choices) {
    if (field.count() != static_cast<int>(choices.size())) return false;
    for (int i = 0; i < field.count(); ++i) {
        const auto& choice = choices[static_cast<std::size_t>(i)];
        if (field.itemText(i) != qt(choice.label) || field.itemData(i) != qt(choice.value)) return false;
    }
    return true;
}

void showChoice(QComboBox& field, const std::vector<BillingDashboardView::Choice>& choices, const std::string& chosen) {
    if (!holds(field, choices)) {
        field.clear();
        for (const auto& choice : choices)
            field.addItem(qt(choice.label), qt(choice.value));
    }
    field.setCurrentIndex(field.findData(qt(chosen)));
}

void showDay(QDateEdit& field, Date day) {
    const QSignalBlocker quiet(field);
    const CivilDate civil = Calendar::current().civilDate(day);
    field.setDate(QDate(civil.year, civil.month, civil.day));
}

}  // namespace

BillingFilterBar::BillingFilterBar(BillingDashboardView& dashboard, const Localization& l, QWidget* parent)
    : QWidget(parent), dashboard_(dashboard), grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setSpacing(filterGap);
    range_ = addChoice(l.text("time_range"), [this](const std::string& value) {
        dashboard_.setReportRangeKind(
            fromRawValue<BillingReportRangeKind>(value).value_or(BillingReportRangeKind::month));
    });
    project_ = addChoice(l.text("project"),
                         [this](const std::string& value) { dashboard_.setSelectedProjectId(Uuid::parse(value)); });
    client_ =
        addChoice(l.text("client"), [this](const std::string& value) { dashboard_.setSelectedClientName(value); });
    category_ =
        addChoice(l.text("category"), [this](const std::string& value) { dashboard_.setSelectedCategory(value); });
    days_ = {addDay(l.text("range_custom_start"), &BillingDashboardView::setCustomStart),
             addDay(l.text("range_custom_end"), &BillingDashboardView::setCustomEnd)};
}

QWidget* BillingFilterBar::addField(const std::string& label, QWidget& field) {
    auto* const both = new QWidget(this);
    both->setLayout(labelled(qt(label), field));
    fields_.push_back(both);
    return both;
}

QComboBox* BillingFilterBar::addChoice(const std::string& label, std::function<void(const std::string& value)> choose) {
    QComboBox* const field = fieldCombo(qt(label));
    connect(field, &QComboBox::activated, this,
            [field, act = std::move(choose)](int index) { act(field->itemData(index).toString().toStdString()); });
    addField(label, *field);
    return field;
}

QDateEdit* BillingFilterBar::addDay(const std::string& label, void (BillingDashboardView::*choose)(Date)) {
    auto* const field = new QDateEdit;
    field->setCalendarPopup(true);
    connect(field, &QDateEdit::dateChanged, this, [this, choose](QDate day) {
        (dashboard_.*choose)(Calendar::current().date({day.year(), day.month(), day.day()}));
    });
    addField(label, *field)->hide();
    return field;
}

void BillingFilterBar::refresh() {
    const auto& filters = dashboard_.filters();
    showChoice(*range_, dashboard_.rangeChoices(), std::string(rawValue(dashboard_.reportRangeKind())));
    showChoice(*project_, dashboard_.projectChoices(), filters.projectId ? filters.projectId->string() : "");
    showChoice(*client_, dashboard_.clientChoices(), filters.client);
    showChoice(*category_, dashboard_.categoryChoices(), filters.category);
    showDay(*days_[0], dashboard_.customStart());
    showDay(*days_[1], dashboard_.customEnd());
    for (QDateEdit* const day : days_)
        day->parentWidget()->setVisible(dashboard_.reportRangeKind() == BillingReportRangeKind::custom);
}

void BillingFilterBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeInColumns(*grid_, fields_, width() < pairsBelow ? 2 : 4);
}

}  // namespace quorvane
