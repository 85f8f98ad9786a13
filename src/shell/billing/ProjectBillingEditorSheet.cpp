#include "shell/billing/ProjectBillingEditorSheet.h"

#include "billing/MoneyText.h"
#include "shell/billing/RateField.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>
#include <fmt/format.h>
#include <utility>

namespace quorvane::ProjectBillingEditorSheet {
namespace {

constexpr int sheetWidth = 460;
constexpr int currencyWidth = 132;
constexpr int wellPadding = 12;

/// A field with its label above it.
QVBoxLayout* labelled(const QString& text, QWidget* field) {
    auto* const column = new QVBoxLayout;
    column->setSpacing(6);
    auto* const label = new Label(text, TypeRole::label, &Theme::text2);
    label->setBuddy(field);
    column->addWidget(label);
    column->addWidget(field);
    column->addStretch(1);
    return column;
}

QLineEdit* textField(const std::string& text, const QString& name) {
    auto* const field = new QLineEdit(qt(text));
    field->setAccessibleName(name);
    return field;
}

class HelpWell : public QWidget {
public:
    explicit HelpWell(const QString& help) {
        auto* const line = new QHBoxLayout(this);
        line->setContentsMargins(15, wellPadding, 15, wellPadding);
        line->setSpacing(10);
        auto* const icon = new QVBoxLayout;
        icon->addSpacing(2);  // in the middle of the first line
        icon->addWidget(new IconView(QStringLiteral("info"), 16, &Theme::text2));
        icon->addStretch(1);
        line->addLayout(icon);
        auto* const words = new Label(help, TypeRole::body, &Theme::text2);
        words->setWordWrap(true);
        line->addWidget(words, 1);
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        paintPanel(painter, rect(), Metrics::cardRadius, theme().sunken, {});
    }
};

/// What the project is worth as it stands now.
class FiguresLine : public QWidget {
public:
    FiguresLine(ProjectBillingEditor& editor, const Figures& figures, const Localization& localization)
        : editor_(editor), hours_(figures.hours), localization_(localization),
          amount_(new Label(QString(), TypeRole::bodyStrong, &Theme::text)) {
        auto* const line = new QHBoxLayout(this);
        line->setContentsMargins(2, 4, 2, 0);
        line->setSpacing(16);
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

QComboBox* currencyChoice(ProjectBillingEditor& editor, const QString& name) {
    auto* const choice = new QComboBox;
    choice->setAccessibleName(name);
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
class Form : public QWidget {
public:
    Form(std::unique_ptr<ProjectBillingEditor> editor, const std::optional<Figures>& figures,
         const Localization& localization)
        : editor_(std::move(editor)) {
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(16);
        addNames(*column, localization);
        const QString currency = qt(localization.text("currency"));
        auto* const money = new QHBoxLayout;
        money->setSpacing(12);
        money->addLayout(labelled(qt(localization.text("hourly_rate")), new RateField(*editor_, localization)), 1);
        money->addLayout(labelled(currency, currencyChoice(*editor_, currency)));
        column->addLayout(money);
        column->addWidget(new HelpWell(qt(localization.text("project_rate_settings_help"))));
        if (figures) column->addWidget(new FiguresLine(*editor_, *figures, localization));
    }

    void done() { editor_->done(); }

private:
    void addNames(QVBoxLayout& column, const Localization& localization) {
        const QString nameLabel = qt(localization.text("project_name"));
        const QString clientLabel = qt(localization.text("client_name"));
        auto* const name = textField(editor_->project().name(), nameLabel);
        auto* const client = textField(editor_->project().clientName().value_or(""), clientLabel);
        connect(name, &QLineEdit::textEdited, this,
                [this](const QString& text) { editor_->setName(text.toStdString()); });
        connect(client, &QLineEdit::textEdited, this,
                [this](const QString& text) { editor_->setClientName(text.toStdString()); });
        column.addLayout(labelled(nameLabel, name));
        column.addLayout(labelled(clientLabel, client));
    }

    std::unique_ptr<ProjectBillingEditor> editor_;
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
