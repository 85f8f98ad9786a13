#include "base/Json.h"
#include "base/TerminalText.h"
#include "base/Text.h"
#include "cli/CommandContext.h"
#include "cli/CommandGroup.h"
#include "cli/Commands.h"
#include "cli/Output.h"
#include "platform/linux/system/IniUserDefaults.h"
#include "rules/CategoryTagManager.h"
#include "store/StoredNames.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <fmt/format.h>

namespace quorvane::cli {
namespace {

/// The application's own configuration. It says what the manager of the categories keeps to itself: that a value could
/// not be written.
class Configuration final : public platform::UserDefaults {
public:
    [[nodiscard]] std::optional<std::string> value(std::string_view key) const override { return file_.value(key); }
    bool setValue(std::string_view key, std::string_view value) override {
        return expectKept(file_.setValue(key, value));
    }
    bool removeValue(std::string_view key) override { return expectKept(file_.removeValue(key)); }

private:
    static bool expectKept(bool isKept) {
        if (!isKept) throw CommandError(ExitStatus::failed, "the configuration could not be written");
        return true;
    }

    platform::IniUserDefaults file_;
};

/// The categories in it, whatever the store.
class Categories {
public:
    CategoryTagManager* operator->() { return &manager_; }

    [[nodiscard]] bool hasCustom(const std::string& name) const {
        const auto custom = manager_.customCategories();
        return std::ranges::find(custom, name) != custom.end();
    }

private:
    Configuration configuration_;
    StreamConsole console_{stderr};
    CategoryTagManager manager_{configuration_, console_};
};

void list(const CommandContext& context) {
    Categories categories;
    const auto names = categories->allCategories();
    const auto localization = Localization::fromEnvironment();
    std::string text;
    if (context.json)
        text = jsonText(names) + "\n";
    else
        for (const std::string& name : names)
            text += harmlessLine(StoredNames::shownCategory(name, localization)) + "\n";
    Output output;
    output.write(text);
    output.finish();
}

void add(const std::string& typed) {
    const std::string name = text::trimmedWithNewlines(text::validUtf8(typed));
    if (name.empty()) throw CommandError(ExitStatus::failed, "the name can't be empty");
    Categories categories;
    if (categories.hasCustom(name)) {
        StreamConsole(stderr).line("quorvane-cli: {} is there already", harmlessLine(name));
        return;
    }
    categories->addCustomCategory(name);
}

void remove(const std::string& name) {
    Categories categories;
    if (!categories.hasCustom(name))
        throw CommandError(ExitStatus::failed, fmt::format("there is no category {} of your own", name));
    categories->removeCustomCategory(name);
}

}  // namespace

void addCategoriesCommand(CLI::App& app, CommandContext& context) {
    auto* group = addGroup(app, "categories", "List and change the categories that are offered");
    addMember(*group, context, "list", "List the built-in categories, then your own", [&context] { list(context); });
    const auto name = std::make_shared<std::string>();
    auto* adding = addMember(*group, context, "add", "Add a category of your own", [name] { add(*name); });
    auto* removing = addMember(*group, context, "remove", "Remove a category of your own; records keep its name",
                               [name] { remove(*name); });
    for (auto* command : {adding, removing})
        command->add_option("NAME", *name, "The category")->type_name("")->required();
}

}  // namespace quorvane::cli
