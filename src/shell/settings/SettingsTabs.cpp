#include "shell/settings/SettingsTabs.h"

#include "shell/look/AccessibleRole.h"
#include "shell/look/Icons.h"
#include "shell/look/Painting.h"
#include "shell/look/Theme.h"
#include "shell/look/Typography.h"

#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <algorithm>

namespace quorvane {
namespace {

constexpr int tabHeight = 40;
constexpr int iconSide = 16;
constexpr int padding = 12;
constexpr int gap = 9;
constexpr int underline = 2;

class TabInterface : public QAccessibleWidget {
public:
    explicit TabInterface(SettingsTab& tab) : QAccessibleWidget(&tab, QAccessible::PageTab), tab_(tab) {}
    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = tab_.isChecked();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name != pressAction()) return QAccessibleWidget::doAction(name);
        tab_.click();
    }

private:
    SettingsTab& tab_;
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* const tab = dynamic_cast<SettingsTab*>(object);
    return tab == nullptr ? nullptr : new TabInterface(*tab);
}

}  // namespace

SettingsTab::SettingsTab(const QString& iconName, const QString& title, QWidget* parent)
    : QAbstractButton(parent), iconName_(iconName) {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
    setText(title);
    setAccessibleName(title);
    setToolTip(title);
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setFont(quorvane::font(TypeRole::bodyStrong));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize SettingsTab::sizeHint() const {
    return {2 * padding + iconSide + gap + fontMetrics().horizontalAdvance(text()) + 1, tabHeight};
}

QSize SettingsTab::minimumSizeHint() const {
    return {2 * padding + iconSide, tabHeight};
}

void SettingsTab::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Theme& colors = theme();
    if (hasFocus() && showsFocusRing(*this))
        paintFocusRing(painter, QRectF(rect()).adjusted(5, 7, -5, -7), Metrics::smallRadius, colors.surface);
    const auto mirrored = [this](const QRect& place) { return QStyle::visualRect(layoutDirection(), rect(), place); };
    const QColor ink = isChecked() || underMouse() ? colors.text : colors.text2;
    const QRect icon(padding + 1, (height() - iconSide) / 2, iconSide, iconSide);
    drawIcon(painter, mirrored(icon), iconName_, isChecked() ? colors.accent : colors.text2, iconSide);
    const QRect words = rect().adjusted(padding + iconSide + gap, 0, -padding + 1, 0);
    painter.setPen(ink);
    painter.drawText(mirrored(words),
                     static_cast<int>(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)) | Qt::AlignVCenter |
                         Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideRight, words.width()));
    if (isChecked()) painter.fillRect(0, height() - underline, width(), underline, colors.accent);
}

SettingsTabs::SettingsTabs(const std::vector<Tab>& tabs, QWidget* parent) : QWidget(parent) {
    setAccessibleRole(*this, QAccessible::PageTabList);
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(4);
    tabs_.reserve(tabs.size());
    for (const Tab& each : tabs) {
        auto* const tab = new SettingsTab(QString::fromLatin1(each.iconName), each.title);
        const int index = static_cast<int>(tabs_.size());
        tab->installEventFilter(this);
        connect(tab, &QAbstractButton::clicked, this, [this, index] { choose(index); });
        line->addWidget(tab);
        tabs_.push_back(tab);
    }
    line->addStretch(1);
    choose(0);
}

void SettingsTabs::choose(int index) {
    const bool hadFocus = tabs_[static_cast<std::size_t>(current_)]->hasFocus();
    current_ = index;
    for (std::size_t i = 0; i < tabs_.size(); ++i) {
        const bool isChosen = static_cast<int>(i) == index;
        tabs_[i]->setChecked(isChosen);
        tabs_[i]->setFocusPolicy(isChosen ? Qt::StrongFocus : Qt::ClickFocus);
        if (isChosen && hadFocus) tabs_[i]->setFocus(Qt::TabFocusReason);
    }
    chosen.send(index);
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(tabs_[static_cast<std::size_t>(index)], QAccessible::Selection);
    QAccessible::updateAccessibility(&event);
}

bool SettingsTabs::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const int forward = layoutDirection() == Qt::RightToLeft ? -1 : 1;
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Right: step(forward); return true;
    case Qt::Key_Left: step(-forward); return true;
    case Qt::Key_Home: choose(0); return true;
    case Qt::Key_End: choose(static_cast<int>(tabs_.size()) - 1); return true;
    default: return QWidget::eventFilter(watched, event);
    }
}

void SettingsTabs::step(int onwards) {
    choose(std::clamp(current_ + onwards, 0, static_cast<int>(tabs_.size()) - 1));
}

}  // namespace quorvane
