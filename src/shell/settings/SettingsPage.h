#pragma once

#include "l10n/Localization.h"
#include "shell/look/Chip.h"

#include <QWidget>
#include <functional>

class QBoxLayout;
class QPushButton;
class QVBoxLayout;

namespace quorvane {

class IconView;

/// A line of a card: title and control side by side, or one above the other where there is no room; help below.
class SettingsRow : public QWidget {
public:
    SettingsRow(const QString& title, QWidget* control, QWidget* parent = nullptr);
    void setTitle(const QString& title);
    /// Says what the control does; also to assistive technology, as its description.
    void setHelp(const QString& help);
    /// Something between title and help.
    void addLine(QWidget* line);
    /// Shows or hides it with the rule above it, once it is in a section.
    void setShown(bool isShown) { parentWidget()->setVisible(isShown); }
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* control_;
    Label* title_;
    Label* help_;
    QBoxLayout* head_;
    QVBoxLayout* column_;
};

/// A row that says how something stands, in an icon and a word, with a button that mends it.
class StateRow : public SettingsRow {
public:
    explicit StateRow(QWidget* parent = nullptr);

    struct State {
        QString title;
        QString help;
        QString iconName;
        Tone tone = Tone::ok;
        QString word;
        QString mend;  ///< on the button; empty for none
    };
    void setState(const State& state);
    [[nodiscard]] QPushButton& button() { return *button_; }

private:
    StateRow(QWidget* control, QWidget* parent);

    IconView* icon_;
    Label* word_;
    QPushButton* button_;
};

/// A group of settings: its title, and a card with rows between rules.
class SettingsSection : public QWidget {
public:
    SettingsSection(MessageKey<> title, const Localization& localization);

    /// With a rule above it unless it is the first.
    void addRow(QWidget* row, Qt::Alignment alignment = {});
    SettingsRow* addRow(MessageKey<> title, QWidget* control);
    /// A switch that shows and changes what the settings say; `changed` is called after that.
    SettingsRow* addSwitch(MessageKey<> title, bool& isOn, std::function<void()> changed = {});

private:
    const Localization& localization_;
    QVBoxLayout* rows_;
};

/// A page of the settings: sections below each other.
class SettingsPage : public QWidget {
public:
    explicit SettingsPage(const Localization& localization, QWidget* parent = nullptr);

protected:
    SettingsSection& addSection(MessageKey<> title);
    void add(QWidget* section);
    [[nodiscard]] QString text(MessageKey<> key) const { return qt(localization_.text(key)); }
    [[nodiscard]] const Localization& localization() const { return localization_; }

private:
    const Localization& localization_;
    QVBoxLayout* sections_;
};

}  // namespace quorvane
