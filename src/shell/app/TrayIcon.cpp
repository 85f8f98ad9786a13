#include "shell/app/TrayIcon.h"

#include "base/Text.h"
#include "shell/app/RecordingColor.h"
#include "shell/app/StatusNotifierHost.h"
#include "shell/look/Icons.h"
#include "shell/look/Theme.h"
#include "shell/signals/Subscribe.h"

#include <QPainter>
#include <algorithm>
#include <cstdlib>

namespace quorvane {
namespace {

using Kind = MenuBarItem::Kind;

QString qString(const std::string& text) {
    return QString::fromStdString(text);
}

QIcon icon(const char* name, const QColor& ink, std::initializer_list<int> sizes) {
    QIcon result;
    for (const int size : sizes)
        result.addPixmap(iconPixmap(QString::fromLatin1(name), ink, size));
    return result;
}

/// Whether it records, as a dot before the word.
QIcon dot(const QColor& color) {
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(8, 8), 4, 4);
    return QIcon(pixmap);
}

QIcon menuItemIcon(const MenuBarItem& item, RecordingState state) {
    if (item.kind == Kind::title) return dot(recordingColor(state));
    if (*item.iconName == '\0') return {};
    const auto ink = !item.isGranted ? theme().text : *item.isGranted ? theme().ok : theme().bad;
    return icon(item.iconName, ink, {16, 32});
}

/// The top bars of these desktops are dark whatever their windows are.
bool hasDarkPanel() {
    const char* desktop = std::getenv("XDG_CURRENT_DESKTOP");
    const auto names = text::split(text::lowercased(desktop ? desktop : ""), ':');
    return std::ranges::any_of(
        names, [](const std::string& name) { return name == "gnome" || name == "unity" || name == "pantheon"; });
}

}  // namespace

TrayIcon::TrayIcon(MenuBarContentView& menuBar, Appearance& appearance, platform::DBusConnection& sessionBus)
    : menuBar_(menuBar), appearance_(appearance) {
    subscribe(menuBar.changed, context_, [this] { update(); });
    subscribe(appearance.changed, context_, [this] { updateInks(); });
    buildMenu();
    StatusNotifierHost::whenThereOrLate(sessionBus, context_, [this] { create(); });
}

TrayIcon::~TrayIcon() = default;

bool TrayIcon::hasTray() const {
    // Asked before the icon is there, Qt would settle for the tray of that moment.
    return !icon_ || QSystemTrayIcon::isSystemTrayAvailable();
}

void TrayIcon::create() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    icon_->setContextMenu(&menu_);
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, &context_, [this](auto reason) {
        if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
            menuBar_.perform(MenuBarAction::openMainWindow);
    });
    update();
    icon_->show();
    hasTrayChanged.send();
}

void TrayIcon::buildMenu() {
    for (const MenuBarItem& item : menuBar_.items()) {
        auto* action = item.kind == Kind::separator ? menu_.addSeparator() : menu_.addAction(qString(item.text));
        action->setEnabled(item.isEnabled);
        QObject::connect(action, &QAction::triggered, &context_,
                         [this, wanted = item.action] { menuBar_.perform(wanted); });
    }
    QObject::connect(&menu_, &QMenu::aboutToShow, &context_, [this] { menuBar_.appear(); });
    update();
}

void TrayIcon::update() {
    const auto items = menuBar_.items();
    const auto actions = menu_.actions();
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i < shown_.size() && items[i] == shown_[i]) continue;
        auto* action = actions[static_cast<qsizetype>(i)];
        action->setText(qString(items[i].text));
        action->setIcon(menuItemIcon(items[i], menuBar_.state()));
    }
    shown_ = items;
    if (!icon_) return;
    const auto ink = hasDarkPanel() || appearance_.preference().isDark ? QColor(Qt::white) : Theme::light().text;
    icon_->setIcon(icon(menuBar_.iconName(), ink, {16, 22, 24, 32, 48}));
    icon_->setToolTip(QStringLiteral("Quorvane: ") + qString(menuBar_.title()));
}

void TrayIcon::updateInks() {
    shown_.clear();
    update();
}

}  // namespace quorvane
