#pragma once

#include <QTextEdit>

namespace quorvane {

/// A document to read, select and copy: wrapped, in fixed pitch on a sunken ground or as ordinary text.
class PreviewText : public QTextEdit {
public:
    explicit PreviewText(QWidget* parent = nullptr);
    void show(const QString& text, bool isFixedPitch);

protected:
    void changeEvent(QEvent* event) override;

private:
    void applyLook();

    bool isFixedPitch_ = false;
    bool isApplying_ = false;
};

}  // namespace quorvane
