#pragma once

#include "timeline/ProjectTone.h"

#include <QColor>
#include <QIcon>
#include <QListView>
#include <QString>
#include <optional>
#include <vector>

namespace quorvane {

/// A row of a list: a mark, a text, and figures at its end; below it another text, or a share as a bar.
struct ListRow {
    /// Part of a whole, 0 to 1, and how it is written.
    struct Share {
        double part = 0;
        QString text;
        friend bool operator==(const Share&, const Share&) = default;
    };

    QColor mark;                      ///< of an application, and of its bar; invalid: none
    std::optional<ProjectTone> tone;  ///< of a project
    QString text;
    QString figures;
    QString note;
    std::optional<Share> share;
    QString accessibleName;
    friend bool operator==(const ListRow&, const ListRow&) = default;
};

/// Rows below each other, or in columns, that scroll once they find no room; it asks for as much height as they have.
/// They are only read, unless they can be pressed: then the list has the focus, and arrows move in it.
class RowList : public QListView {
    Q_OBJECT

public:
    explicit RowList(const QString& name, QWidget* parent = nullptr);

    /// Each row shows a plus, and answers to a click, Enter and Space.
    void setPressable();
    void setColumns(int columns);
    /// A change of nothing costs nothing. The current row stays where it is.
    void setRows(std::vector<ListRow> rows);
    [[nodiscard]] int columns() const { return columns_; }

    /// Between the rows and the edge, where a scroll bar stands.
    void setMargins(const QMargins& margins);

Q_SIGNALS:
    void rowPressed(int row);

public:
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    class Model;
    class Delegate;

    Model* model_;
    int columns_ = 1;
    bool isPressable_ = false;
};

}  // namespace quorvane
