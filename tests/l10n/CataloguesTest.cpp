#include "base/Json.h"
#include "l10n/Catalogue.h"
#include "l10n/Localization.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <string>
#include <unicode/locid.h>
#include <unicode/messagepattern.h>
#include <unicode/msgfmt.h>
#include <vector>

namespace quorvane {
namespace {

const std::filesystem::path sources = QUORVANE_SOURCES;

std::string contents(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    EXPECT_TRUE(stream) << file;
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The keys of a catalogue as they stand in the file, repeated ones included.
std::vector<std::string> keysInFile(std::string_view language) {
    std::vector<std::string> keys;
    const auto file = sources / "resources/l10n" / (std::string(language) + ".json");
    const auto parsed = Json::parse(contents(file), [&](int, Json::parse_event_t event, Json& value) {
        if (event == Json::parse_event_t::key) keys.push_back(value.get<std::string>());
        return true;
    });
    return keys;
}

/// The arguments of a message as ICU reads them: their types ("number, integer", "plural"), empty for plain ones.
std::map<int, std::string> argumentsOf(const icu::MessagePattern& pattern) {
    std::map<int, std::string> arguments;
    for (int i = 0; i < pattern.countParts(); ++i) {
        const auto& start = pattern.getPart(i);
        if (start.getType() != UMSGPAT_PART_TYPE_ARG_START) continue;
        std::string type;
        switch (start.getArgType()) {
        case UMSGPAT_ARG_TYPE_NONE: break;
        case UMSGPAT_ARG_TYPE_PLURAL: type = "plural"; break;
        case UMSGPAT_ARG_TYPE_SELECT: type = "select"; break;
        default:
            pattern.getPatternString()
                .tempSubStringBetween(pattern.getPart(i + 2).getIndex(),
                                      pattern.getPart(pattern.getLimitPartIndex(i)).getIndex())
                .toUTF8String(type);
        }
        auto& known = arguments[pattern.getPart(i + 1).getValue()];
        if (known.empty()) known = type;
    }
    return arguments;
}

/// The letters of `MessageSignature::arguments` for these arguments.
std::string lettersOf(const std::map<int, std::string>& arguments) {
    std::string letters;
    for (const auto& [number, type] : arguments) {
        EXPECT_EQ(number, static_cast<int>(letters.size()));
        letters += type.empty() ? 'v' : type == "select" ? 'w' : 'n';
    }
    return letters;
}

TEST(CataloguesTest, AllLanguagesHaveTheSameKeysInTheSameOrder) {
    const auto keys = keysInFile("en");
    EXPECT_EQ(keys.size(), std::size(messageSignatures));
    for (const auto& catalogue : catalogues())
        EXPECT_EQ(keysInFile(catalogue.language), keys) << catalogue.language;
}

TEST(CataloguesTest, EveryMessageIsWellFormedAndTakesTheArgumentsOfItsKey) {
    for (std::size_t i = 0; i < std::size(messageSignatures); ++i) {
        std::map<int, std::string> inEnglish;
        for (const auto& catalogue : catalogues()) {
            SCOPED_TRACE(std::string(messageSignatures[i].key) + " in " + std::string(catalogue.language));
            const std::string message(catalogue.messages[i]);
            UErrorCode error = U_ZERO_ERROR;
            UParseError place;
            const icu::MessagePattern pattern(icu::UnicodeString::fromUTF8(message), &place, error);
            // The pattern alone does not look into the styles of numbers.
            const icu::MessageFormat format(icu::UnicodeString::fromUTF8(message),
                                            icu::Locale(std::string(catalogue.language).c_str()), error);
            ASSERT_TRUE(U_SUCCESS(error)) << u_errorName(error) << " at " << place.offset << ": " << message;

            const auto arguments = argumentsOf(pattern);
            EXPECT_EQ(lettersOf(arguments), messageSignatures[i].arguments) << message;
            if (catalogue.language == "en") inEnglish = arguments;
            EXPECT_EQ(arguments, inEnglish) << message;
        }
    }
}

TEST(CataloguesTest, ATextWithoutArgumentsReadsTheSameAsAMessage) {
    for (const auto& catalogue : catalogues()) {
        for (std::size_t i = 0; i < std::size(messageSignatures); ++i) {
            if (!messageSignatures[i].arguments.empty()) continue;
            UErrorCode error = U_ZERO_ERROR;
            icu::UnicodeString formatted;
            icu::MessageFormat::format(icu::UnicodeString::fromUTF8(std::string(catalogue.messages[i])), nullptr, 0,
                                       formatted, error);
            std::string text;
            EXPECT_EQ(formatted.toUTF8String(text), catalogue.messages[i]) << messageSignatures[i].key;
        }
    }
}

TEST(CataloguesTest, EveryKeyIsUsed) {
    std::string code;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources / "src"))
        if (const auto extension = entry.path().extension(); extension == ".cpp" || extension == ".h")
            code += contents(entry.path());
    for (const auto& signature : messageSignatures)
        if (code.find('"' + std::string(signature.key) + '"') == std::string::npos)
            ADD_FAILURE() << signature.key << " is in the catalogues, but no source under src names it";
}

}  // namespace
}  // namespace quorvane
