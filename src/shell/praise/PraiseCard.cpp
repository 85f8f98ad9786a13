#include "shell/praise/PraiseCard.h"

#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QActionGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QVBoxLayout>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace quorvane {
namespace {

constexpr int stripeWidth = 3;
constexpr int stripeGap = 8;

/// Why the sentence is said, behind a stripe in the colour of the application that is used most.
class PraiseReason : public QWidget {
public:
    PraiseReason() : label_(new Label(QString(), TypeRole::labelPlain, &Theme::text2)) {
        auto* const line = new QHBoxLayout(this);
        line->setContentsMargins(0, 0, 0, 0);
        line->setSpacing(0);
        line->addSpacing(stripeWidth + stripeGap);
        line->addWidget(label_, 1);
        label_->setWordWrap(true);
        label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    void show(const QString& text, const QColor& stripe) {
        label_->setText(text);
        stripe_ = stripe;
        setVisible(!text.isEmpty());
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        const int x = isRightToLeft() ? width() - stripeWidth : 0;
        paintPanel(painter, QRect(x, 0, stripeWidth, height()), stripeWidth / 2.0, stripe_, {});
    }

private:
    Label* label_;
    QColor stripe_;
};

/// A quiet combo with its label above.
template <class Value>
class PraiseChoice : public QWidget {
public:
    using Item = PraiseMessageView::MenuItem<Value>;

    PraiseChoice(const QString& title, std::vector<Item> items, std::function<void(const std::optional<Value>&)> choose,
                 QWidget* parent = nullptr)
        : QWidget(parent), items_(std::move(items)), combo_(new QComboBox) {
        auto* const column = new QVBoxLayout(this);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(5);
        column->addWidget(new Label(title, TypeRole::caption, &Theme::text2));
        column->addWidget(combo_);
        combo_->setAccessibleName(title);
        setKind(*combo_, "small quiet");
        combo_->setMinimumContentsLength(4);
        combo_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        for (const Item& item : items_)
            combo_->addItem(qt(item.text));
        connect(combo_, &QComboBox::activated, this,
                [this, use = std::move(choose)](int index) { use(items_[static_cast<std::size_t>(index)].value); });
    }

    void setValue(const std::optional<Value>& value) {
        for (std::size_t i = 0; i < items_.size(); ++i)
            if (items_[i].value == value) combo_->setCurrentIndex(static_cast<int>(i));
    }

private:
    std::vector<Item> items_;
    QComboBox* combo_;
};

/// Fills a menu with the choices; the one in force has a mark.
template <class Value, class Choose>
void fill(QMenu& menu, const std::vector<PraiseMessageView::MenuItem<Value>>& items,
          const std::optional<Value>& current, const Choose& choose) {
    auto* const group = new QActionGroup(&menu);
    for (const auto& item : items) {
        auto* const action = menu.addAction(qt(item.text));
        action->setCheckable(true);
        action->setChecked(item.value == current);
        group->addAction(action);
        QObject::connect(action, &QAction::triggered, &menu, [choose, value = item.value] { choose(value); });
    }
}

}  // namespace

struct PraiseCard::Parts {
    PraiseMessageView& state;
    const Localization& localization;
    Form form = Form::full;
    IconView* spark = nullptr;
    QPushButton* shuffle = nullptr;
    QPushButton* more = nullptr;
    QPushButton* shortShare = nullptr;
    Label* lineSentence = nullptr;
    Label* sentence = nullptr;
    PraiseReason* reason = nullptr;
    QWidget* choices = nullptr;
    PraiseChoice<SupportedLanguage>* language = nullptr;
    PraiseChoice<PraiseCategory>* category = nullptr;
    QPushButton* share = nullptr;
    QVBoxLayout* column = nullptr;
};

PraiseCard::PraiseCard(PraiseMessageView& state, const Localization& localization, QWidget* parent)
    : Card(parent), parts_(std::make_unique<Parts>(Parts{.state = state, .localization = localization})) {
    build();
    arrange();
    subscribe(state.changed, *this, [this] { follow(); });
    follow();
}

PraiseCard::~PraiseCard() = default;

void PraiseCard::build() {
    Parts& p = *parts_;
    const auto text = [&](TextKey key) { return qt(p.localization.text(key)); };
    const auto share = [this] {
        parts_->state.setShowingShareWindow(true);
        shareWanted.send();
    };
    p.spark = new IconView(QStringLiteral("spark"), 16, &Theme::accent);
    p.lineSentence = new Label(QString(), TypeRole::bodyStrong, &Theme::text);
    p.lineSentence->setElided(true);
    p.shuffle = iconButton(QStringLiteral("shuffle"), text("ui_another_message"), "ghost small");
    connect(p.shuffle, &QAbstractButton::clicked, this, [this] { parts_->state.generatePraise(); });
    p.more = iconButton(QStringLiteral("more"),
                        text("praise_language") + QStringLiteral(" · ") + text("praise_category"), "ghost small");
    connect(p.more, &QAbstractButton::clicked, this, [this] { showMenu(); });
    p.shortShare = iconButton(QStringLiteral("share"), text("timeline_generate_share_card"), "ghost small");
    connect(p.shortShare, &QAbstractButton::clicked, this, share);
    p.sentence = new Label(QString(), TypeRole::head, &Theme::text);
    p.sentence->setWordWrap(true);
    p.sentence->setTextInteractionFlags(Qt::TextSelectableByMouse);
    p.reason = new PraiseReason;
    p.language = new PraiseChoice<SupportedLanguage>(
        text("praise_language"), PraiseMessageView::languages(p.localization),
        [this](const auto& language) { parts_->state.setLocalizedLanguage(language); });
    p.category =
        new PraiseChoice<PraiseCategory>(text("praise_category"), PraiseMessageView::categories(p.localization),
                                         [this](const auto& category) { parts_->state.setCurrentCategory(category); });
    p.share = pushButton(text("timeline_generate_share_card"));
    p.share->setIcon(icon(QStringLiteral("share")));
    connect(p.share, &QAbstractButton::clicked, this, share);

    auto* const head = new QHBoxLayout;
    head->setSpacing(4);
    head->addWidget(p.spark);
    head->addSpacing(4);
    head->addWidget(p.lineSentence, 1);
    head->addStretch();
    head->addWidget(p.shuffle);
    head->addWidget(p.more);
    head->addWidget(p.shortShare);
    p.choices = new QWidget;
    auto* const pair = new QHBoxLayout(p.choices);
    pair->setContentsMargins(0, 0, 0, 0);
    pair->setSpacing(8);
    pair->addWidget(p.language, 1);
    pair->addWidget(p.category, 1);
    p.column = new QVBoxLayout(this);
    p.column->setSpacing(10);
    p.column->addLayout(head);
    for (QWidget* const part : {static_cast<QWidget*>(p.sentence), static_cast<QWidget*>(p.reason), p.choices,
                                static_cast<QWidget*>(p.share)})
        p.column->addWidget(part);
}

void PraiseCard::setForm(Form form) {
    if (form == parts_->form) return;
    parts_->form = form;
    arrange();
    follow();
}

PraiseCard::Form PraiseCard::form() const {
    return parts_->form;
}

void PraiseCard::arrange() {
    Parts& p = *parts_;
    const bool isLine = p.form == Form::line;
    const int side = isLine ? 8 : Metrics::cardPadding;
    p.column->setContentsMargins(side + (isLine ? 4 : 0), isLine ? 6 : 12, side, isLine ? 6 : Metrics::cardPadding);
    p.lineSentence->setVisible(isLine);
    p.shortShare->setVisible(isLine);
    p.more->setVisible(p.form != Form::full);
    p.sentence->setVisible(!isLine);
    p.choices->setVisible(p.form == Form::full);
    p.share->setVisible(!isLine);
}

void PraiseCard::follow() {
    Parts& p = *parts_;
    const QString sentence = qt(p.state.currentMessage());
    p.lineSentence->setText(sentence);
    p.sentence->setText(sentence);
    const auto& stats = p.state.appStats();
    const QString reason = p.form == Form::line ? QString() : qt(p.state.currentReason().value_or(""));
    p.reason->show(reason, stats.empty() ? theme().accent : toQColor(stats.front().color));
    p.language->setValue(p.state.localizedLanguage());
    p.category->setValue(p.state.currentCategory());
}

/// What the combos offer, where there is no room for them.
void PraiseCard::showMenu() {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    Parts& p = *parts_;
    fill(*menu->addMenu(qt(p.localization.text("praise_language"))), PraiseMessageView::languages(p.localization),
         p.state.localizedLanguage(), [this](const auto& language) { parts_->state.setLocalizedLanguage(language); });
    fill(*menu->addMenu(qt(p.localization.text("praise_category"))), PraiseMessageView::categories(p.localization),
         p.state.currentCategory(), [this](const auto& category) { parts_->state.setCurrentCategory(category); });
    menu->popup(p.more->mapToGlobal(QPoint(0, p.more->height())));
}

}  // namespace quorvane
