#include "shell/billing/RateField.h"

#include "base/NumberText.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Kind.h"
#include "shell/look/Label.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QAbstractSpinBox>
#include <QAccessible>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QStyle>
#include <QVBoxLayout>

namespace quorvane {
namespace {

constexpr double exampleRate = 85;

/// Any text can be typed; the editor says what it is worth.
class RateSpinBox : public QAbstractSpinBox {
public:
    explicit RateSpinBox(ProjectBillingEditor& editor) : editor_(editor) {
        showRate();
        connect(lineEdit(), &QLineEdit::textEdited, this,
                [this](const QString& text) { editor_.setHourlyRateText(text.toStdString()); });
    }

    void stepBy(int steps) override {
        editor_.stepHourlyRate(steps);
        showRate();
        selectAll();
    }

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override {
        return editor_.project().hourlyRate() > 0 ? StepUpEnabled | StepDownEnabled : StepEnabled(StepUpEnabled);
    }

private:
    void showRate() { lineEdit()->setText(QString::fromStdString(editor_.hourlyRateText())); }

    ProjectBillingEditor& editor_;
};

}  // namespace

RateField::RateField(ProjectBillingEditor& editor, const Localization& localization, QWidget* parent)
    : QWidget(parent), editor_(editor), error_(qt(localization.text("ui_rate_error", decimalText(exampleRate)))),
      field_(new RateSpinBox(editor)), icon_(new IconView(QStringLiteral("warn"), 14, &Theme::bad)),
      message_(new Label(error_, TypeRole::caption, &Theme::bad)) {
    field_->setAccessibleName(qt(localization.text("hourly_rate")));
    message_->setWordWrap(true);
    auto* const line = new QHBoxLayout;
    line->setSpacing(4);
    line->addWidget(icon_, 0, Qt::AlignTop);
    line->addWidget(message_, 1);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    column->addWidget(field_);
    column->addLayout(line);
    setFocusProxy(field_);
    subscribe(editor.changed, *this, [this] { showError(); });
    showError();
}

void RateField::showError() {
    const bool isWrong = editor_.isHourlyRateWrong();
    icon_->setVisible(isWrong);
    message_->setVisible(isWrong);
    setKind(*field_, "error", isWrong);
    field_->setAccessibleDescription(isWrong ? error_ : QString());
    // What went wrong is said when it appears, not only when the field is reached again.
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(field_, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

}  // namespace quorvane
