#pragma once

#include <QLineEdit>
#include <QString>
#include <QWidget>

namespace quorvane {

class IconView;
class Label;

/// A field with what is wrong with it below: a red edge, an icon and a sentence, which is the field's accessible
/// description too.
class CheckedField : public QWidget {
public:
    explicit CheckedField(QWidget& field, QWidget* parent = nullptr);
    void setError(const QString& error);  ///< empty for none
    /// A hint in the place of the error while there is none.
    void setHint(const QString& hint);

private:
    void showMessage();

    QWidget& field_;
    IconView* icon_;
    Label* message_;
    QString error_;
    QString hint_;
};

/// A line of text that can be wrong.
class TextField : public CheckedField {
public:
    explicit TextField(const QString& placeholder, const QString& name, QWidget* parent = nullptr);
    [[nodiscard]] QLineEdit& edit() { return *edit_; }

private:
    TextField(QLineEdit* edit, QWidget* parent) : CheckedField(*edit, parent), edit_(edit) {}

    QLineEdit* edit_;
};

}  // namespace quorvane
