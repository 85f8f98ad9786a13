#pragma once

#include "shell/look/Card.h"

namespace quorvane {

class Chip;
class CloudKitSyncView;
class IconView;
class Label;

/// How the cloud stands, and how far the sync is or when the last one was.
class SyncStatusWell : public Well {
public:
    explicit SyncStatusWell(QWidget* parent = nullptr);
    void show(const CloudKitSyncView& state);

private:
    IconView* symbol_;
    Label* status_;
    Chip* chip_;
};

}  // namespace quorvane
