#pragma once

#include "l10n/Localization.h"

#include <QPushButton>
#include <QString>
#include <string>

namespace quorvane {

/// A project that is selected or not: a check box, its name, its client and its dot. Spoken with its state.
class ProjectSelectionCard : public QPushButton {
public:
    /// What a card says.
    struct Content {
        std::string name;
        std::string client;  ///< what stands below the name, also where there is none
        std::string color;   ///< name of a tone
        friend bool operator==(const Content&, const Content&) = default;
    };

    ProjectSelectionCard(const Content& content, const Localization& localization, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void sayState();
    void paintCheckBox(QPainter& painter) const;
    void paintWords(QPainter& painter) const;

    Content content_;
    QString selected_;
    QString notSelected_;
};

}  // namespace quorvane
