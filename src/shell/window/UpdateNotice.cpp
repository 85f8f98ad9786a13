#include "shell/window/UpdateNotice.h"

#include "shell/app/AppServices.h"
#include "shell/look/Alert.h"
#include "shell/look/Typography.h"
#include "shell/signals/Subscribe.h"
#include "updates/UpdateAlert.h"

#include <QDesktopServices>
#include <QUrl>
#include <utility>

namespace quorvane {
UpdateNotice::UpdateNotice(QWidget& window, AppServices& services)
    : QObject(&window), window_(window), services_(services) {
    subscribe(services.updates.changed, *this, [this] {
        if (window_.isVisible()) show();
    });
}

std::function<void()> UpdateNotice::closing(std::function<void()> act) {
    return [this, wanted = std::move(act)] {
        isShown_ = false;
        wanted();
    };
}

void UpdateNotice::show() {
    if (isShown_) return;
    auto& updates = services_.updates;
    const auto alert = updateAlert(updates.state(), services_.application, services_.localization);
    if (!alert) return;
    isShown_ = true;
    Alert::Content content{
        .title = qt(alert->title),
        .text = qt(alert->notes.empty() ? alert->message : alert->message + "\n\n" + alert->notes),
        .iconName = QStringLiteral("refresh"),
    };
    const auto dismiss = closing([&updates] { updates.dismiss(); });
    if (alert->link.empty()) {
        content.choices = {{.text = qt(services_.localization.text("close")), .act = dismiss}};
        return Alert::show(window_, content);
    }
    const auto download = closing([&updates, link = qt(alert->link)] {
        QDesktopServices::openUrl(QUrl(link, QUrl::StrictMode));
        updates.dismiss();
    });
    content.choices = {{.text = qt(alert->downloadButton), .act = download, .isPrimary = true},
                       {.text = qt(alert->skipButton), .act = closing([&updates] { updates.skipVersion(); })},
                       {.text = qt(alert->laterButton), .act = dismiss}};
    Alert::show(window_, content);
}

}  // namespace quorvane
