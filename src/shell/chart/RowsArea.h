#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace quorvane {

/// Rows below each other that scroll once they find no room; it asks for as much height as they have. For assistive
/// technology a list.
class RowsArea : public QScrollArea {
public:
    explicit RowsArea(const QString& name, QWidget* parent = nullptr);

    /// Where the rows stand. Margins and spacing are the caller's.
    [[nodiscard]] QVBoxLayout& rows() { return *rows_; }
    void add(QWidget* row);
    /// Takes all rows away. Those that are sending a signal at the moment survive it.
    void clear();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QVBoxLayout* rows_;
};

}  // namespace quorvane
