#include "shell/look/Sheet.h"

#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/LookScene.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>
#include <set>
#include <string>

namespace quorvane {
namespace {

class SheetTest : public LookTest {
protected:
    SheetTest() {
        opener->show();
        opener->setFocus();
        sheet->body().addWidget(field);
        sheet->addAction(cancel);
        sheet->addAction(save);
        QObject::connect(sheet, &QDialog::finished, sheet, [this] { log += "closed;"; });
        QObject::connect(save, &QAbstractButton::clicked, save, [this] { log += "saved;"; });
    }

    QPushButton* opener = pushButton(QStringLiteral("Open"), "plain", &window);
    QPointer<Sheet> sheet = new Sheet(window, QStringLiteral("Title"), 460);
    QLineEdit* field = new QLineEdit;
    QPushButton* cancel = pushButton(QStringLiteral("Cancel"));
    QPushButton* save = pushButton(QStringLiteral("Save"), "primary");
    std::string log;
};

TEST_F(SheetTest, FocusGoesRoundInsideAndReturnsToTheOpener) {
    sheet->open();
    EXPECT_EQ(QApplication::focusWidget(), field);
    std::set<QWidget*> stops;
    for (int i = 0; i < 8; ++i) {
        press(Qt::Key_Tab);
        stops.insert(QApplication::focusWidget());
    }
    EXPECT_EQ(stops.size(), 4U);  // field, both buttons and the close button
    EXPECT_EQ(stops.count(opener), 0U);
    opener->setFocus();
    EXPECT_TRUE(sheet->isAncestorOf(QApplication::focusWidget()));
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), opener);
    EXPECT_EQ(log, "closed;");
    settle();
    EXPECT_EQ(sheet, nullptr);
}

TEST_F(SheetTest, EnterIsThePrimaryButtonOutsideOfText) {
    sheet->open();
    press(Qt::Key_Return);
    EXPECT_EQ(log, "");
    sheet->setFocusPolicy(Qt::StrongFocus);
    sheet->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(log, "saved;");
    save->setEnabled(false);
    sheet->setFocus();
    press(Qt::Key_Enter);
    EXPECT_EQ(log, "saved;");
}

TEST_F(SheetTest, NeverReachesBeyondTheWindow) {
    auto* tall = new QWidget;
    tall->setMinimumHeight(2000);
    sheet->body().addWidget(tall);
    sheet->open();
    settle();
    EXPECT_EQ(sheet->panel(), QRect(170, 24, 460, 552));
    window.resize(320, 300);
    settle();
    EXPECT_EQ(sheet->panel(), QRect(24, 24, 272, 252));
    EXPECT_EQ(sheet->geometry(), window.rect());
}

TEST_F(SheetTest, ShortcutsOfTheWindowRestAndThoseOfTheProgramGoOn) {
    const std::pair<Qt::ShortcutContext, std::string> rows[] = {{Qt::WindowShortcut, ""},
                                                                {Qt::ApplicationShortcut, "shortcut;"}};
    sheet->open();
    for (const auto& [context, expected] : rows) {
        log.clear();
        auto* shortcut = new QShortcut(QKeySequence(QStringLiteral("Ctrl+J")), &window);
        shortcut->setContext(context);
        QObject::connect(shortcut, &QShortcut::activated, shortcut, [this] { log += "shortcut;"; });
        QShortcutEvent event(shortcut->key(), 1);
        QApplication::sendEvent(shortcut, &event);
        EXPECT_EQ(log, expected);
    }
}

TEST_F(SheetTest, IsAModalDialogForAssistiveTechnology) {
    sheet->open();
    const auto* dialog = QAccessible::queryAccessibleInterface(sheet);
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->role(), QAccessible::Dialog);
    EXPECT_EQ(dialog->text(QAccessible::Name), QStringLiteral("Title"));
    EXPECT_TRUE(dialog->state().modal);
}

TEST_F(LookTest, AnAlertDoesOneThingOnceAndEscapeIsItsLastChoice) {
    const std::pair<Qt::Key, std::string> rows[] = {{Qt::Key_Escape, "cancel;"}, {Qt::Key_Return, "review;"}};
    for (const auto& [key, expected] : rows) {
        std::string log;
        Alert::show(
            window,
            {.title = QStringLiteral("Not settled"),
             .text = QStringLiteral("Look first?"),
             .choices = {{.text = QStringLiteral("Review"), .act = [&] { log += "review;"; }, .isPrimary = true},
                         {.text = QStringLiteral("Export"), .act = [&] { log += "export;"; }},
                         {.text = QStringLiteral("Cancel"), .act = [&] { log += "cancel;"; }}}});
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        press(key);
        settle();
        EXPECT_EQ(log, expected);
    }
}

}  // namespace
}  // namespace quorvane
