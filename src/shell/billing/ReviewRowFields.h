#pragma once

#include "shell/billing/ReviewRowParts.h"

#include <QComboBox>
#include <QPushButton>

namespace quorvane {

/// A choice in a row of the review queue.
class ReviewRowCombo : public QComboBox {
public:
    ReviewRowCombo(const QString& name, QWidget* parent);

    void addChoice(const QString& text, const ReviewRowParts::Mark& mark);
    /// What it shows, whether that is among its choices or not.
    void show(const ReviewRowParts::Field& field, int choice);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ReviewRowParts::Field field_;
};

/// A button that gives a record a status; it is checked while the record has it.
class ReviewRowButton : public QPushButton {
public:
    ReviewRowButton(const QString& text, BillingStatus status, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void nextCheckState() override {}  // the record decides

private:
    BillingStatus status_;
};

}  // namespace quorvane
