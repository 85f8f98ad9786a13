#pragma once

#include <QAbstractButton>
#include <QString>
#include <string>

namespace quorvane {

/// A project that can be pressed: its dot, its name, its client, and a plus.
class ProjectRow : public QAbstractButton {
public:
    /// `client` is what stands below the name, also where there is none. `color` is the name of a tone.
    ProjectRow(const QString& name, const QString& client, const std::string& color, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString name_;
    QString client_;
    std::string color_;
};

}  // namespace quorvane
