#pragma once

#include "shell/support/WindowScene.h"

#include <functional>
#include <string>
#include <vector>

namespace quorvane {

/// One picture of the documentation.
struct Picture {
    std::string name;  ///< of its file, before size, language and theme
    /// Brings a scene to what is shown.
    std::function<void(WindowScene&)> arrange;
    bool isEmpty = false;       ///< over a store without records
    bool alsoMirrored = false;  ///< from right to left too
    bool hasCloud = true;
    /// The window that is pictured, if it isn't the main one.
    std::function<QWidget*()> window{};
};

[[nodiscard]] std::vector<Picture> timelinePictures();
[[nodiscard]] std::vector<Picture> billingPictures();
[[nodiscard]] std::vector<Picture> otherPictures();
[[nodiscard]] std::vector<Picture> cloudPictures();
[[nodiscard]] std::vector<Picture> kitPictures();

/// Presses the button that shows the text, or is called so.
void pressButton(WindowScene& scene, const std::string& text);
void showSection(WindowScene& scene, MainSection section);

}  // namespace quorvane
