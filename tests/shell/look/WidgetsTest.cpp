#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/EmptyState.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/LookScene.h"
#include "shell/look/Painting.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "support/Matching.h"

#include <QAccessible>
#include <QApplication>
#include <QMouseEvent>
#include <QSpinBox>
#include <QWheelEvent>
#include <tuple>
#include <vector>

namespace quorvane {
namespace {

TEST_F(LookTest, ChoicesSayWhatTheyAre) {
    auto* grouped = choiceChip(QStringLiteral("Work"), false, &window);
    grouped->setAutoExclusive(true);
    const std::tuple<QAbstractButton*, QAccessible::Role, const char*> rows[] = {
        {switchBox(QStringLiteral("On"), &window), QAccessible::CheckBox, "On"},
        {choiceChip(QStringLiteral("R&D"), false, &window), QAccessible::CheckBox, "R&D"},
        {grouped, QAccessible::RadioButton, "Work"}};
    for (const auto& [button, role, name] : rows) {
        auto* interface = QAccessible::queryAccessibleInterface(button);
        EXPECT_EQ(interface->role(), role);
        EXPECT_EQ(interface->text(QAccessible::Name), name);
        EXPECT_TRUE(button->shortcut().isEmpty());
        interface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_TRUE(interface->state().checked);
    }
}

TEST_F(LookTest, TheWheelTurnsOverFieldsAndChangesOnlyTheOneInUse) {
    QSpinBox field(&window);
    field.setValue(5);
    field.show();
    auto* tabs = segments({QStringLiteral("Day"), QStringLiteral("Week")}, QStringLiteral("View"), &window);
    tabs->setCurrentIndex(1);
    tabs->show();
    const auto turn = [&](QWidget& over) {
        QWheelEvent event({5, 5}, over.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&over, &event);
        return std::pair(field.value(), tabs->currentIndex());
    };
    EXPECT_EQ(turn(field), std::pair(5, 1));
    EXPECT_EQ(turn(*tabs), std::pair(5, 1));
    field.setFocus();
    EXPECT_EQ(turn(field), std::pair(6, 1));
}

TEST_F(LookTest, AFlowBreaksLinesAsWordsDoAndMirrors) {
    QWidget page(&window);
    auto* flow = new FlowLayout(10, &page);
    std::vector<QWidget*> boxes;
    for (const QSize size : {QSize(60, 20), QSize(60, 30), QSize(60, 20)}) {
        auto* box = new QWidget;
        box->setFixedSize(size);
        flow->addWidget(box);
        boxes.push_back(box);
    }
    page.resize(140, 100);
    page.show();
    const auto places = [&] { return std::vector{boxes[0]->pos(), boxes[1]->pos(), boxes[2]->pos()}; };
    EXPECT_EQ(flow->heightForWidth(140), 60);
    EXPECT_EQ(flow->heightForWidth(40), 90);
    EXPECT_THAT(places(), ElementsAre(QPoint(0, 5), QPoint(70, 0), QPoint(0, 40)));
    page.setLayoutDirection(Qt::RightToLeft);
    settle();
    EXPECT_THAT(places(), ElementsAre(QPoint(80, 5), QPoint(10, 0), QPoint(80, 40)));
}

TEST_F(LookTest, AFieldsErrorIsItsDescriptionAndHidesTheHint) {
    TextField field(QStringLiteral("Name"), QStringLiteral("Project name"));
    field.setHint(QStringLiteral("Seen by the client"));
    field.setError(QStringLiteral("It is empty"));
    EXPECT_EQ(field.edit().accessibleDescription(), QStringLiteral("It is empty"));
    EXPECT_TRUE(isKind(&field.edit(), "error"));
    field.setError(QString());
    EXPECT_EQ(field.edit().accessibleDescription(), QStringLiteral("Seen by the client"));
    EXPECT_FALSE(isKind(&field.edit(), "error"));
}

TEST_F(LookTest, AnEmptyStateInTheMakingIsNoWindowThatTakesTheFocus) {
    const EmptyState state(QStringLiteral("search"), QStringLiteral("Nothing"), QStringLiteral("Look elsewhere"));
    settle();
    EXPECT_EQ(QApplication::activeWindow(), &window);
}

TEST_F(LookTest, LabelsFollowTheTheme) {
    Label label(QStringLiteral("Words"), TypeRole::body, &Theme::text2, &window);
    label.show();
    for (const Theme& each : {Theme::dark(), Theme::dark().withHighContrast(), Theme::light()}) {
        applyTheme(each);
        EXPECT_EQ(label.palette().color(QPalette::WindowText), each.text2);
    }
}

TEST_F(LookTest, AnElidedLabelKeepsItsWholeTextForThoseWhoAsk) {
    const QString whole = QStringLiteral("A name that is much longer than the place for it");
    Label label(whole, TypeRole::body, &Theme::text, &window);
    label.setElided(true);
    label.resize(80, 20);
    label.show();
    EXPECT_EQ(label.toolTip(), whole);
    EXPECT_EQ(label.accessibleName(), whole);
    EXPECT_LT(label.QLabel::text().size(), whole.size());
    label.resize(label.sizeHint());
    EXPECT_EQ(label.QLabel::text(), whole);
    EXPECT_EQ(label.toolTip(), QString());
}

TEST_F(LookTest, ALabelBeginsWhereTheWindowDoesWhateverItsLetters) {
    window.setLayoutDirection(Qt::RightToLeft);
    Label label(QStringLiteral("Words"), TypeRole::body, &Theme::text, &window);
    EXPECT_EQ(label.QLabel::alignment() & Qt::AlignHorizontal_Mask, Qt::AlignRight | Qt::AlignAbsolute);
    window.setLayoutDirection(Qt::LeftToRight);
    EXPECT_EQ(label.QLabel::alignment() & Qt::AlignHorizontal_Mask, Qt::AlignLeft | Qt::AlignAbsolute);
}

TEST_F(LookTest, TheRingShowsAfterAKeyAndGoesWithThePointer) {
    auto* button = pushButton(QStringLiteral("Press"), "plain", &window);
    button->show();
    button->setFocus();
    press(Qt::Key_Tab);
    button->setFocus();
    EXPECT_TRUE(showsFocusRing(*button));
    QMouseEvent click(QEvent::MouseButtonPress, QPointF(1, 1), window.mapToGlobal(QPointF(1, 1)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &click);
    EXPECT_FALSE(showsFocusRing(*button));
}

TEST_F(LookTest, EnterPressesAButtonAsSpaceDoes) {
    auto* button = pushButton(QStringLiteral("Press"), "", &window);
    button->show();
    button->setFocus();
    int clicks = 0;
    QObject::connect(button, &QAbstractButton::clicked, button, [&] { ++clicks; });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        press(key);
    EXPECT_EQ(clicks, 3);
}

}  // namespace
}  // namespace quorvane
