#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace quorvane {

/// Widgets in lines, wrapped as words are; from right to left where the layout is. With `setAlignment(Qt::AlignRight)`
/// the lines end together.
class FlowLayout : public QLayout {
public:
    explicit FlowLayout(int spacing = 8, QWidget* parent = nullptr);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override;
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rectangle) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }

private:
    int arrange(const QRect& rectangle, bool isTrial) const;

    std::vector<std::unique_ptr<QLayoutItem>> items_;
    int spacing_;
};

}  // namespace quorvane
