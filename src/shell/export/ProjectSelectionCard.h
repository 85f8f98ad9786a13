#pragma once

#include "l10n/Localization.h"
#include "shell/look/Chip.h"

#include <QString>
#include <string>

namespace quorvane {

/// A project that is selected or not: a check box, its name, its client and its dot. Spoken with its state.
class ProjectSelectionCard : public ChoiceChip {
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
    [[nodiscard]] double focusRadius() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void sayState();
    void paintCheckBox(QPainter& painter) const;
    void paintWords(QPainter& painter) const;

    Content content_;
    QString selected_;
    QString notSelected_;
};

}  // namespace quorvane
