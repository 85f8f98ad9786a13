#pragma once

#include "l10n/Localization.h"

#include <QString>
#include <QWidget>

namespace quorvane {

class Label;

/// The log window's foot: how many entries show, whether a filter hides some, and what never enters the log.
class LogStatusLine : public QWidget {
public:
    explicit LogStatusLine(const Localization& localization, QWidget* parent = nullptr);
    void setStatus(const QString& caption, bool isNarrowed);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Label* caption_;
    Label* filtered_;
};

}  // namespace quorvane
