#pragma once

#include "base/Signal.h"

#include <QAbstractButton>
#include <QString>
#include <QWidget>
#include <vector>

namespace quorvane {

/// A tab: icon and title, underlined while its page shows.
class SettingsTab : public QAbstractButton {
public:
    SettingsTab(const QString& iconName, const QString& title, QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString iconName_;
};

/// Tabs side by side. One tab stop; arrows choose.
class SettingsTabs : public QWidget {
public:
    struct Tab {
        const char* iconName;
        QString title;
    };
    explicit SettingsTabs(const std::vector<Tab>& tabs, QWidget* parent = nullptr);
    void choose(int index);
    [[nodiscard]] int current() const { return current_; }

    Signal<int> chosen;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void step(int onwards);

    std::vector<SettingsTab*> tabs_;
    int current_ = 0;
};

}  // namespace quorvane
