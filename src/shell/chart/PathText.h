#pragma once

#include "shell/look/Label.h"

namespace quorvane {

/// A path, an address or a title that can be selected. Where it is too long, its middle gives way to "…", as the ends
/// tell most; its tooltip says it in full then, and a copy takes all of it.
class PathText : public Label {
public:
    /// `copyText` is what the menu calls copying.
    PathText(TypeRole role, QColor Theme::*color, const QString& copyText, QWidget* parent = nullptr);
    void setPath(const QString& path);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void elide();
    void copy() const;

    QString path_;
    QString copyText_;
};

}  // namespace quorvane
