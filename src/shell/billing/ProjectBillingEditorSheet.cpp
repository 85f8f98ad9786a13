#include "shell/billing/ProjectBillingEditorSheet.h"

#include "base/NumberText.h"
#include "billing/MoneyText.h"
#include "shell/look/Controls.h"
#include "shell/look/IconWell.h"
#include "shell/look/Label.h"
#include "shell/look/Labelled.h"
#include "shell/look/Sheet.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "shell/signals/Keeps.h"
#include "shell/signals/Subscribe.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLineEdit>
#include <fmt/format.h>
#include <utility>

namespace quorvane::ProjectBillingEditorSheet {
namespace {

constexpr int sheetWidth = 460;
constexpr int currencyWidth = 132;
constexpr double exampleRate = 85;

/// The hourly rate: any text can be typed, and goes into the project as soon as it is a number. Up and Down step by
/// whole units.
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
    void showRate() { lineEdit()->setText(qt(editor_.hourlyRateText())); }

    ProjectBillingEditor& editor_;
};

/// What the project is worth as it stands now.
class FiguresLine : public QWidget {
public:
    FiguresLine(ProjectBillingEditor& editor, const Figures& figures, const Localization& localization)
        : editor_(editor), hours_(figures.hours), localization_(localization),
          amount_(new Label(QString(), TypeRole::bodyStrong, &Theme::text)) {
        auto* const line = lineBox(16, this);
        line->setContentsMargins(2, 4, 2, 0);
        auto* const range = new Label(qt(figures.rangeLabel), TypeRole::body, &Theme::text2);
        range->setElided(true);
        line->addWidget(range, 1);
        const auto hours = isolated(qt(fmt::format("{:.1f} h", figures.hours)));
        line->addWidget(new Label(hours, TypeRole::body, &Theme::text2));
        QFont strong = amount_->font();
        strong.setWeight(QFont::DemiBold);
        amount_->setFont(strong);
        line->addWidget(amount_);
        subscribe(editor.changed, *this, [this] { refresh(); });
        refresh();
    }

private:
    void refresh() {
        const double rate = editor_.project().hourlyRate();
        amount_->setText(rate > 0 ? isolated(qt(moneyText(hours_ * rate, editor_.project().currencyCode())))
                                  : qt(localization_.text("not_set")));
    }

    ProjectBillingEditor& editor_;
    double hours_;
    const Localization& localization_;
    Label* amount_;
};

QComboBox* currencyChoice(ProjectBillingEditor& editor) {
    auto* const choice = new QComboBox;
    choice->setFixedWidth(currencyWidth);
    for (const std::string_view code : ProjectBillingEditor::currencies)
        choice->addItem(QString::fromUtf8(code.data(), static_cast<qsizetype>(code.size())));
    // A project from elsewhere may have another one; it is shown and stays until one of these is chosen.
    const QString present = qt(editor.project().currencyCode());
    choice->setPlaceholderText(present);
    choice->setCurrentIndex(choice->findText(present));
    QObject::connect(choice, &QComboBox::activated, choice,
                     [&editor, choice] { editor.setCurrencyCode(choice->currentText().toStdString()); });
    return choice;
}

/// The fields, and with them the editor.
class Form : private Keeps<ProjectBillingEditor>, public QWidget {
public:
    Form(std::unique_ptr<ProjectBillingEditor> editor, const std::optional<Figures>& figures,
         const Localization& localization)
        : Keeps(std::move(editor)), localization_(localization), column_(columnBox(16, this)) {
        const auto& project = parts_->project();
        addText(localization.text("project_name"), project.name(), &ProjectBillingEditor::setName);
        addText(localization.text("client_name"), project.clientName().value_or(""),
                &ProjectBillingEditor::setClientName);
        auto* const money = lineBox(12);
        auto* const rate = rateField();
        money->addLayout(labelled(qt(localization.text("hourly_rate")), *rate), 1);
        auto* const currency = labelled(qt(localization.text("currency")), *currencyChoice(*parts_));
        currency->addStretch(1);
        money->addLayout(currency);
        column_->addLayout(money);
        auto* const help = new IconWell(QStringLiteral("info"), Tone::neutral);
        auto* const words =
            new Label(qt(localization.text("project_rate_settings_help")), TypeRole::body, &Theme::text2);
        words->setWordWrap(true);
        help->words().addWidget(words);
        column_->addWidget(help);
        if (figures) column_->addWidget(new FiguresLine(*parts_, *figures, localization));
    }

    void done() { parts_->done(); }

private:
    void addText(const std::string& label, const std::string& text,
                 void (ProjectBillingEditor::*set)(const std::string&)) {
        auto* const field = new QLineEdit(qt(text));
        connect(field, &QLineEdit::textEdited, this,
                [this, set](const QString& changed) { ((*parts_).*set)(changed.toStdString()); });
        column_->addLayout(labelled(qt(label), *field));
    }

    /// While what is typed is no number, an error stands below.
    CheckedField* rateField() {
        auto* const rate = new RateSpinBox(*parts_);
        rate->setAccessibleName(qt(localization_.text("hourly_rate")));
        auto* const field = new CheckedField(*rate);
        subscribe(parts_->changed, *field, [this, field] {
            const auto error = localization_.text("ui_rate_error", decimalText(exampleRate));
            field->setError(parts_->isHourlyRateWrong() ? qt(error) : QString());
        });
        return field;
    }

    const Localization& localization_;
    QVBoxLayout* column_;
};

}  // namespace

Sheet& open(QWidget& window, std::unique_ptr<ProjectBillingEditor> editor, const std::optional<Figures>& figures,
            const Localization& localization) {
    auto* const sheet = new Sheet(window, qt(localization.text("project_billing_settings")), sheetWidth);
    sheet->hideCloseButton();
    auto* const form = new Form(std::move(editor), figures, localization);
    sheet->body().addWidget(form);
    QObject::connect(sheet, &QDialog::finished, form, [form] { form->done(); });
    auto* const done = pushButton(qt(localization.text("done")), "primary");
    QObject::connect(done, &QAbstractButton::clicked, sheet, [sheet] { sheet->close(); });
    sheet->addToFootStart(new QWidget);  // keeps the button at the end
    sheet->addAction(done);
    sheet->open();
    return *sheet;
}

}  // namespace quorvane::ProjectBillingEditorSheet
