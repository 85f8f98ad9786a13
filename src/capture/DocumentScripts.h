#pragma once

#include "platform/Automation.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The scripts that ask applications for their document. Where applications understand no scripts, their texts are
/// data that says what is asked.
namespace quorvane::DocumentScripts {

/// Families of scripts, in which only the application's name differs.
enum class Family {
    frontDocumentPath = 1,
    frontDocumentName,
    currentTrack,
    word,
    excel,
    powerPoint,
    xcode,
    finder,
    mail,
    notes,
    stickies
};

/// An application and its script.
struct Row {
    std::string_view applicationName;  ///< as the script addresses it
    std::string_view bundleId;
    Family family = Family::frontDocumentPath;
    bool isComparedLowercased = false;  ///< else as it stands: with a capital in it, it matches nothing
};

/// The whole table, 87 rows, in the order in which `row` looks.
[[nodiscard]] std::span<const Row> rows();

/// The first row for a bundle id in any case; none if there is no script for the application.
[[nodiscard]] const Row* row(std::string_view bundleId);

/// What the script returns when the application has no answer. None for a script that fails then.
[[nodiscard]] std::optional<std::string> errorText(const Row& row);

/// The script's text.
[[nodiscard]] std::string source(const Row& row);

/// The text with what a channel needs that answers without scripts. `bundleId` is the one under which the application
/// runs; its case may differ from the table's.
[[nodiscard]] platform::Script script(const Row& row, const std::string& bundleId);

}  // namespace quorvane::DocumentScripts
