#pragma once

#include "base/Signal.h"
#include "l10n/Localization.h"
#include "shell/look/Card.h"

#include <cstddef>

class QBoxLayout;
class QProgressBar;
class QPushButton;

namespace quorvane {

class Label;

/// What an export holds, the button that starts it, and how far it has come.
class ExportFoot : public Card {
public:
    explicit ExportFoot(const Localization& localization, QWidget* parent = nullptr);

    void setRecordCount(std::size_t count);
    /// While a file is written the button rests. The bar appears with the first of `setProgress`, so that what is
    /// written in one go shows none.
    void setWriting(bool isWriting);
    void setProgress(std::size_t written);

    Signal<> pressed;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QWidget* makeNotes() const;
    void showCount(std::size_t count);

    const Localization& localization_;
    QBoxLayout* line_;
    QPushButton* button_;
    Label* caption_;
    QProgressBar* progress_;
    std::size_t count_ = 0;
    bool hadFocus_ = false;
};

}  // namespace quorvane
