#include "shell/look/Controls.h"

namespace quorvane {

QPushButton* pushButton(const QString& text, const char* kind, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    button->setAutoDefault(false);  // Enter presses what has the focus, or the default of a sheet
    setKind(*button, kind);
    return button;
}

QPushButton* iconButton(const QString& iconName, const QString& name, const char* kind, QWidget* parent) {
    auto* button = pushButton({}, kind, parent);
    button->setIcon(icon(iconName));
    button->setAccessibleName(name);
    button->setToolTip(name);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return button;
}

QCheckBox* switchBox(const QString& text, QWidget* parent) {
    return kind("switch", new QCheckBox(text, parent));
}

QString withoutShortcut(const QString& name) {
    return QString(name).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

QPushButton* choiceChip(const QString& name, bool isSmall, QWidget* parent) {
    auto* button = pushButton(withoutShortcut(name), isSmall ? "chip small" : "chip", parent);
    button->setCheckable(true);
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // A chosen one is wider.
    QObject::connect(button, &QAbstractButton::toggled, button, [button] { button->updateGeometry(); });
    return button;
}

QTabBar* segments(const QStringList& texts, const QString& name, QWidget* parent) {
    auto* tabs = kind("segments", new QTabBar(parent));
    for (const QString& text : texts)
        tabs->addTab(text);
    tabs->setAccessibleName(name);
    tabs->setUsesScrollButtons(false);
    return tabs;
}

}  // namespace quorvane
