#include "Pictures.h"
#include "shell/look/Card.h"
#include "shell/look/Chip.h"
#include "shell/look/Controls.h"
#include "shell/look/FlowLayout.h"
#include "shell/look/Label.h"
#include "shell/look/RowList.h"
#include "shell/look/TextField.h"
#include "shell/look/Theme.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QProgressBar>
#include <QSpinBox>
#include <QToolButton>

// The controls of the house side by side, for whoever makes a screen of them.

namespace quorvane {
namespace {

class KitWindow : public QWidget {
public:
    KitWindow() {
        grid_ = new QGridLayout(this);
        grid_->setContentsMargins(16, 16, 16, 16);
        grid_->setSpacing(13);
        addButtons();
        addChoices();
        addFields();
        addStates();
        resize(1280, 620);
    }

protected:
    void paintEvent(QPaintEvent* event) override { QPainter(this).fillRect(event->rect(), theme().canvas); }

private:
    /// A card with a title; what it shows goes into the layout.
    QVBoxLayout& card(const char* title, int row, int column) {
        auto* frame = new Card;
        auto* layout = new QVBoxLayout(frame);
        layout->setContentsMargins(15, 12, 15, 15);
        layout->setSpacing(8);
        layout->addWidget(new Label(title, TypeRole::bodyStrong, &Theme::text));
        grid_->addWidget(frame, row, column);
        grid_->setColumnStretch(column, 1);
        return *layout;
    }
    static void addFlow(QVBoxLayout& card, std::initializer_list<QWidget*> widgets) {
        auto* flow = new FlowLayout(8);
        for (QWidget* widget : widgets)
            flow->addWidget(widget);
        card.addLayout(flow);
    }
    template <class Control>
    static Control* with(const char* iconName, Control* control) {
        control->setIcon(icon(iconName));
        return control;
    }
    template <class Control>
    static Control* off(Control* control) {
        control->setEnabled(false);
        return control;
    }
    template <class Control>
    static Control* on(Control* control) {
        control->setCheckable(true);
        control->setChecked(true);
        return control;
    }

    void addButtons() {
        QVBoxLayout& buttons = card("pushButton", 0, 0);
        addFlow(buttons,
                {pushButton("Primary", "primary"), pushButton("Plain"), with("trash", pushButton("Delete", "danger")),
                 pushButton("Delete all", "dangerFill"), pushButton("Ghost", "ghost"), pushButton("Link", "link"),
                 off(pushButton("Off")), pushButton("Small", "small"), pushButton("Large", "large")});
        buttons.addStretch(1);
        QVBoxLayout& tools = card("QToolButton, iconButton", 0, 1);
        auto* pause = kind("plain", with("pause", new QToolButton));
        pause->setText("Pause");
        pause->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        pause->setMenu(new QMenu(pause));
        pause->setPopupMode(QToolButton::MenuButtonPopup);
        addFlow(tools, {iconButton("left", "Back", "plain"), iconButton("more", "More"), pause});
        addFlow(tools, {on(kind("navigation", with("timeline", new QPushButton("Timeline")))),
                        kind("navigation", with("billing", new QPushButton("Billing")))});
        tools.addStretch(1);
    }

    void addChoices() {
        QVBoxLayout& choices = card("segments, switchBox, QCheckBox", 0, 2);
        addFlow(choices, {segments({"Day", "Week", "Month"}, "View")});
        addFlow(choices, {switchBox("Off"), on(switchBox("On")), new QCheckBox("No"), on(new QCheckBox("Yes"))});
        addFlow(choices, {on(choiceChip("Work")), choiceChip("Study"), choiceChip("tag", true),
                          on(pushButton("Mon", "toggle")), on(pushButton("Tue", "toggle")), [] {
                              auto* saturday = pushButton("Sat", "toggle");
                              saturday->setCheckable(true);
                              return saturday;
                          }()});
        auto* tabs = new QTabBar;
        tabs->addTab(icon("sliders"), "General");
        tabs->addTab(icon("history"), "Tracking");
        choices.addWidget(tabs);
        choices.addStretch(1);
    }

    void addFields() {
        QVBoxLayout& fields = card("QLineEdit, TextField", 1, 0);
        auto* empty = new QLineEdit;
        empty->setPlaceholderText("Placeholder");
        auto* search = kind("quiet", new QLineEdit("Quiet"));
        search->addAction(icon("search"), QLineEdit::LeadingPosition);
        auto* wrong = new TextField({}, "Currency");
        wrong->edit().setText("EUX");
        wrong->setError("No such currency. Did you mean EUR?");
        for (QWidget* field : std::initializer_list<QWidget*>{empty, search, wrong, off(new QLineEdit("Off"))})
            fields.addWidget(field);
        fields.addStretch(1);
        QVBoxLayout& others = card("QComboBox, QSpinBox, QDateEdit", 1, 1);
        auto* combo = new QComboBox;
        combo->addItem(icon("folder"), "Harbour rebrand");
        auto* number = new QSpinBox;
        number->setValue(40);
        auto* date = new QDateEdit(QDate(2026, 3, 12));
        date->setCalendarPopup(true);
        auto* progress = new QProgressBar;
        progress->setValue(60);
        for (QWidget* field : std::initializer_list<QWidget*>{combo, number, date, progress})
            others.addWidget(field);
        others.addStretch(1);
    }

    void addStates() {
        QVBoxLayout& states = card("Chip, Well, RowList", 1, 2);
        addFlow(states, {new Chip("Ready", Chip::Tone::ok), new Chip("Draft"), new Chip("Sent", Chip::Tone::info),
                         new Chip("Late 9 days", Chip::Tone::bad), new Chip("14 groups", Chip::Tone::warn)});
        for (const char* tone : {"warn", "info", "ok"}) {
            auto* well = new Well(tone);
            auto* line = new QHBoxLayout(well);
            line->addWidget(new Label(tone, TypeRole::body, &Theme::text));
            states.addWidget(well);
        }
        auto* rows = new RowList("Projects");
        rows->setRows({{.tone = AppColorPalette::projectTone("sky"),
                        .text = "Orchard",
                        .figures = "2.4 h",
                        .accessibleName = "Orchard"},
                       {.mark = QColor(0x7F, 0x52, 0xE0),
                        .text = "Figma",
                        .figures = "1.4 h",
                        .share = ListRow::Share{0.2, "19.9%"},
                        .accessibleName = "Figma"}});
        states.addWidget(rows);
        states.addStretch(1);
    }

    QGridLayout* grid_;
};

QWidget* kitWindow() {
    static QPointer<KitWindow> window;
    delete window;
    window = new KitWindow;
    window->show();
    return window;
}

}  // namespace

std::vector<Picture> kitPictures() {
    return {{.name = "kit", .arrange = [](WindowScene&) {}, .window = kitWindow}};
}

}  // namespace quorvane
