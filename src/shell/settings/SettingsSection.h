#pragma once

#include <QString>
#include <QWidget>

class QBoxLayout;
class QVBoxLayout;

namespace quorvane {

class Card;
class Label;

/// A line of a card: title and control side by side, or one above the other where there is no room; help below.
class SettingsRow : public QWidget {
public:
    SettingsRow(const QString& title, QWidget* control, QWidget* parent = nullptr);
    void setTitle(const QString& title);
    /// Says what the control does; also to assistive technology, as its description.
    void setHelp(const QString& help);
    /// Something between title and help.
    void addLine(QWidget* line);
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

/// A group of settings: its title, and a card with rows between rules.
class SettingsSection : public QWidget {
public:
    explicit SettingsSection(const QString& title, QWidget* parent = nullptr);
    /// With a rule above it unless it is the first. Hidden and shown with what is returned.
    QWidget* addRow(QWidget* row);

private:
    QVBoxLayout* rows_;
};

}  // namespace quorvane
