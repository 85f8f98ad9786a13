#include "Pictures.h"
#include "support/Builders.h"

#include <QAbstractButton>

namespace quorvane {
namespace {

/// Presses the button that syncs, and closes the alert about how it went.
void sync(WindowScene& scene) {
    const Localization& texts = scene.services().localization;
    pressButton(scene, texts.text("sync_records"));
    const std::string close = texts.text("close");
    for (auto* const button : scene.window().findChildren<QAbstractButton*>())
        if (button->text().toStdString() == close) button->click();
    scene.settle();
}

/// Rings are for those who use the keys.
void dropFocus(WindowScene& scene) {
    if (auto* const focus = scene.window().focusWidget()) focus->clearFocus();
}

void openSync(WindowScene& scene) {
    scene.window().activateWindow();
    scene.window().openCloudSync();
    scene.settle();
}

/// A sync that went well at 16:32, and one just now that didn't.
void showFailure(WindowScene& scene) {
    const Date now = scene.runLoop.now();
    openSync(scene);
    scene.runLoop.setClock(scene.runLoop.timeOfDay("16:32:00"));
    sync(scene);
    scene.runLoop.setClock(now);
    scene.cloud.failure = platform::CloudFailure(platform::CloudFailure::Kind::timedOut,
                                                 "the server db.example.org did not answer within 30 s");
    sync(scene);
    dropFocus(scene);
}

/// A sync of many records after two batches.
void showProgress(WindowScene& scene) {
    auto& context = scene.store.context();
    for (int record = 0; record < 300; ++record)
        aRecord().from("2025-03-12 09:00:00").to("2025-03-12 09:01:00").app("Terminal").in(context);
    context.save();
    auto& service = scene.services().cloudKitSyncService;
    const auto changed = service.changed.subscribe([&] {
        if (service.progress().uploaded >= 200) scene.runLoop.holdBackground();
    });
    openSync(scene);
    pressButton(scene, scene.services().localization.text("sync_full"));
    dropFocus(scene);
}

}  // namespace

std::vector<Picture> cloudPictures() {
    return {{.name = "sync", .arrange = showFailure},
            {.name = "sync-running", .arrange = showProgress},
            {.name = "sync-unavailable", .arrange = openSync, .hasCloud = false}};
}

}  // namespace quorvane
