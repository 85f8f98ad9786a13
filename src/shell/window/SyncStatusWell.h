#pragma once

#include <QFrame>

namespace quorvane {

class Chip;
class CloudKitSyncView;
class Label;
class SyncSymbol;

/// How the cloud stands, and how far the sync is or when the last one was.
class SyncStatusWell : public QFrame {
public:
    explicit SyncStatusWell(QWidget* parent = nullptr);
    void show(const CloudKitSyncView& state);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SyncSymbol* symbol_;
    Label* status_;
    Chip* chip_;
};

}  // namespace quorvane
