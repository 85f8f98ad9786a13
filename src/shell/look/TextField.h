#pragma once

#include <QLineEdit>
#include <QString>
#include <QWidget>

namespace quorvane {

class IconView;
class Label;

/// A line of text with what is wrong with it below: a red edge, an icon and a sentence, which is the field's accessible
/// description too.
class TextField : public QWidget {
public:
    explicit TextField(const QString& placeholder, const QString& name, QWidget* parent = nullptr);
    [[nodiscard]] QLineEdit& edit() { return *edit_; }
    void setError(const QString& error);  ///< empty for none
    /// A hint in the place of the error while there is none.
    void setHint(const QString& hint);

private:
    void showMessage();

    QLineEdit* edit_;
    IconView* icon_;
    Label* message_;
    QString error_;
    QString hint_;
};

}  // namespace quorvane
