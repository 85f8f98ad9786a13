#include "shell/window/CloudSyncSheet.h"

#include "shell/app/AppServices.h"
#include "shell/look/Alert.h"
#include "shell/look/Controls.h"
#include "shell/look/IconView.h"
#include "shell/look/Label.h"
#include "shell/look/Sheet.h"
#include "shell/look/Theme.h"
#include "shell/state/CloudKitSyncView.h"
#include "shell/window/SyncProblemWell.h"
#include "shell/window/SyncStatusWell.h"

#include <QHBoxLayout>
#include <QPointer>
#include <QVBoxLayout>
#include <utility>

namespace quorvane::CloudSyncSheet {
namespace {

constexpr int sheetWidth = 480;
constexpr int gap = 14;
constexpr int noteIconSize = 17;

class SyncSheet : public Sheet {
public:
    SyncSheet(QWidget& window, AppServices& services)
        : Sheet(window, CloudKitSyncView::title, sheetWidth), window_(window), services_(services),
          state_(services.cloudKitSyncService, services.context, services.runLoop, services.localization),
          status_(new SyncStatusWell), problem_(new SyncProblemWell),
          fullSync_(makeButton("sync_full", "refresh", "plain", &CloudKitSyncView::performFullSync)),
          syncRecords_(makeButton("sync_records", "cloud", "primary", &CloudKitSyncView::syncActivityRecords)) {
        body().setSpacing(gap);
        body().addWidget(status_);
        body().addWidget(problem_);
        addNote();
        addFoot();
        changed_ = state_.changed.subscribe([this] { follow(); });
        connect(this, &QDialog::finished, this, [this] { changed_.reset(); });
        follow();
        state_.appear();
    }

private:
    QPushButton* makeButton(TextKey text, const char* iconName, const char* kind, void (CloudKitSyncView::*act)()) {
        auto* const button = pushButton(qt(services_.localization.text(text)), kind);
        button->setIcon(icon(QString::fromLatin1(iconName)));
        connect(button, &QAbstractButton::clicked, this, [this, button, act] {
            pressed_ = button;
            (state_.*act)();
        });
        return button;
    }

    void addNote() {
        auto* const note =
            new Label(qt(services_.localization.text("sync_metadata_note")), TypeRole::body, &Theme::text2);
        note->setWordWrap(true);
        note->setTextInteractionFlags(Qt::TextSelectableByMouse);
        auto* const mark = new QVBoxLayout;
        mark->setContentsMargins(0, 3, 0, 0);
        mark->addWidget(new IconView(QStringLiteral("info"), noteIconSize, &Theme::text2), 0, Qt::AlignTop);
        auto* const line = new QHBoxLayout;
        line->setContentsMargins(2, 0, 4, 2);
        line->setSpacing(10);
        line->addLayout(mark);
        line->addWidget(note, 1);
        body().addLayout(line);
    }

    /// The two share the whole width.
    void addFoot() {
        auto* const foot = new QWidget;
        auto* const line = new QHBoxLayout(foot);
        line->setContentsMargins(0, 0, 0, 0);
        line->setSpacing(8);
        line->addWidget(fullSync_, 1);
        line->addWidget(syncRecords_, 1);
        addToFootStart(foot);
        setDefault(syncRecords_);
    }

    void follow() {
        status_->show(state_);
        problem_->show(state_.problem());
        const bool canSync = state_.canSync();
        fullSync_->setEnabled(canSync);
        syncRecords_->setEnabled(canSync);
        if (canSync) giveFocusBack();
        if (state_.showingSyncAlert()) showAlert();
    }

    /// A button that is disabled while it works loses the focus.
    void giveFocusBack() {
        QPointer<QPushButton> button = std::exchange(pressed_, nullptr);
        if (button) button->setFocus(Qt::OtherFocusReason);
    }

    void showAlert() {
        state_.dismissSyncAlert();
        const bool isFine = state_.hasSucceeded();
        Alert::show(window_, {.title = CloudKitSyncView::title,
                              .text = qt(state_.syncMessage()),
                              .iconName = isFine ? QStringLiteral("check-circle") : QStringLiteral("warn"),
                              .choices = {{.text = qt(services_.localization.text("close")), .act = {}}}});
    }

    QWidget& window_;
    AppServices& services_;
    CloudKitSyncView state_;
    SyncStatusWell* status_;
    SyncProblemWell* problem_;
    QPushButton* fullSync_;
    QPushButton* syncRecords_;
    QPointer<QPushButton> pressed_;  ///< while what it began is under way
    Subscription changed_;
};

}  // namespace

void open(QWidget& window, AppServices& services) {
    (new SyncSheet(window, services))->open();
}

}  // namespace quorvane::CloudSyncSheet
