#include "shell/look/Button.h"
#include "shell/look/Chip.h"
#include "shell/look/EmptyState.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/LookScene.h"
#include "shell/look/Painting.h"
#include "shell/look/SegmentedControl.h"
#include "shell/look/Switch.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"
#include "support/Matching.h"

#include <QAccessible>
#include <QApplication>
#include <QButtonGroup>
#include <QMouseEvent>
#include <vector>

namespace quorvane {
namespace {

class SegmentedControlTest : public LookTest {
protected:
    SegmentedControlTest() {
        control->show();
        control->setFocus();
        listening = control->chosen.subscribe([this](int index) { chosen.push_back(index); });
    }

    SegmentedControl* control = new SegmentedControl(
        {QStringLiteral("Day"), QStringLiteral("Week"), QStringLiteral("Month")}, QStringLiteral("View"), &window);
    std::vector<int> chosen;
    Subscription listening;
};

TEST_F(SegmentedControlTest, ArrowsMoveTheChoiceAsItIsSeen) {
    struct Row {
        const char* name;
        Qt::LayoutDirection direction;
        std::vector<Qt::Key> keys;
        std::vector<int> chosen;
    };
    const Row rows[] = {
        {"left to right", Qt::LeftToRight, {Qt::Key_Right, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left}, {1, 2, 1}},
        {"right to left", Qt::RightToLeft, {Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Right}, {1, 2, 1}},
        {"ends", Qt::RightToLeft, {Qt::Key_End, Qt::Key_Home, Qt::Key_Down, Qt::Key_Up}, {2, 0, 1, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        control->setCurrent(0);
        control->setLayoutDirection(row.direction);
        chosen.clear();
        for (const Qt::Key key : row.keys)
            press(key);
        EXPECT_EQ(chosen, row.chosen);
    }
}

TEST_F(SegmentedControlTest, ItsSegmentsFillItAndAreRadioButtons) {
    control->resize(301, 32);
    const auto* list = QAccessible::queryAccessibleInterface(control);
    ASSERT_EQ(list->childCount(), 3);
    EXPECT_EQ(control->segment(0).left(), 3);
    EXPECT_EQ(control->segment(1).left(), control->segment(0).right() + 1);
    EXPECT_EQ(control->segment(2).right(), 297);
    auto* month = list->child(2);
    EXPECT_EQ(month->role(), QAccessible::RadioButton);
    EXPECT_EQ(month->text(QAccessible::Name), QStringLiteral("Month"));
    month->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_THAT(chosen, ElementsAre(2));
    EXPECT_TRUE(month->state().checked);
    EXPECT_EQ(list->indexOfChild(month), 2);
}

TEST_F(LookTest, SwitchesAndChipsSayWhatTheyAre) {
    Switch toggle(QStringLiteral("On"));
    ChoiceChip alone(QStringLiteral("Tag"));
    ChoiceChip grouped(QStringLiteral("Work"));
    QButtonGroup group;
    group.addButton(&grouped);
    const std::pair<QAbstractButton*, QAccessible::Role> rows[] = {
        {&toggle, QAccessible::CheckBox}, {&alone, QAccessible::CheckBox}, {&grouped, QAccessible::RadioButton}};
    for (const auto& [button, role] : rows) {
        auto* interface = QAccessible::queryAccessibleInterface(button);
        EXPECT_EQ(interface->role(), role);
        EXPECT_EQ(interface->text(QAccessible::Name), button->text());
        interface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        EXPECT_TRUE(interface->state().checked);
    }
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
    EXPECT_TRUE(field.edit().property("error").toBool());
    field.setError(QString());
    EXPECT_EQ(field.edit().accessibleDescription(), QStringLiteral("Seen by the client"));
    EXPECT_FALSE(field.edit().property("error").toBool());
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

TEST_F(LookTest, TheRingShowsAfterAKeyAndGoesWithThePointer) {
    auto* button = new Button(QStringLiteral("Press"), ButtonKind::secondary, &window);
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
    Button button(QStringLiteral("Press"), ButtonKind::secondary, &window);
    button.show();
    button.setFocus();
    int clicks = 0;
    QObject::connect(&button, &QAbstractButton::clicked, &button, [&] { ++clicks; });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        press(key);
    EXPECT_EQ(clicks, 3);
}

}  // namespace
}  // namespace quorvane
