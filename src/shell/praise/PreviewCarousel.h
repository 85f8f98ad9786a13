#pragma once

#include "l10n/Localization.h"
#include "shell/state/ShareImageWindow.h"

#include <QColor>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

class QButtonGroup;
class QHBoxLayout;
class QPushButton;

namespace quorvane {

class PreviewTile;

/// The card with each of the applications highlighted: a row of them, arrows to the next and the last, a dot for each
/// row.
class PreviewCarousel : public QWidget {
public:
    /// `onSelect` is called with the key of the preview that the user chooses.
    PreviewCarousel(const Localization& localization, std::function<void(const std::string&)> onSelect,
                    QWidget* parent = nullptr);

    void setGroups(const std::vector<std::vector<AppStat>>& groups);
    void setPreviews(const std::map<std::string, ShareImageWindow::Image>& previews);
    void setSelectedKey(const std::optional<std::string>& key);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void showGroup(std::size_t group);
    void fill();

    const Localization& localization_;
    std::function<void(const std::string&)> onSelect_;
    std::vector<std::vector<AppStat>> groups_;
    std::map<std::string, ShareImageWindow::Image> previews_;
    std::optional<std::string> selectedKey_;
    std::size_t group_ = 0;
    QPushButton* previous_;
    QPushButton* next_;
    QHBoxLayout* row_;
    QButtonGroup* choice_;
    std::map<std::string, PreviewTile*> tiles_;
};

}  // namespace quorvane
