#include "updates/Appcast.h"

#include "base/Text.h"

#include <fmt/format.h>
#include <pugixml.hpp>

namespace quorvane::Appcast {
namespace {

/// "prefix:version" -> "version".
std::string_view localName(std::string_view name) {
    const auto colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

pugi::xml_node child(const pugi::xml_node& node, std::string_view name) {
    return node.find_child([&](const pugi::xml_node& candidate) { return localName(candidate.name()) == name; });
}

/// All text in the element, at whatever depth; pugixml walks without recursion.
std::string textOf(pugi::xml_node node) {
    struct Collector : pugi::xml_tree_walker {
        std::string text;
        bool for_each(pugi::xml_node& visited) override {
            if (visited.type() == pugi::node_pcdata || visited.type() == pugi::node_cdata) text += visited.value();
            return true;
        }
    };
    Collector collector;
    node.traverse(collector);
    return text::trimmedWithNewlines(collector.text);
}

/// The item's own element of this name, else the attribute of its enclosure.
std::string valueOf(const pugi::xml_node& item, std::string_view name) {
    if (const auto element = child(item, name)) return textOf(element);
    const auto attribute = child(item, "enclosure").find_attribute([&](const pugi::xml_attribute& candidate) {
        return localName(candidate.name()) == name;
    });
    return text::trimmedWithNewlines(attribute.value());
}

ReleaseVersion versionOf(const pugi::xml_node& item) {
    auto version = valueOf(item, "version");
    auto shortVersion = valueOf(item, "shortVersionString");
    if (shortVersion.empty()) return {.shortVersion = std::move(version)};
    return {.shortVersion = std::move(shortVersion), .build = version.empty() ? "0" : std::move(version)};
}

AppcastItem itemFrom(const pugi::xml_node& item) {
    auto link = textOf(child(item, "link"));
    return {.version = versionOf(item),
            .link = link.empty() ? valueOf(item, "url") : std::move(link),
            .notes = textOf(child(item, "description"))};
}

void refuseDocumentType(const pugi::xml_document& document) {
    for (const pugi::xml_node& node : document)
        if (node.type() == pugi::node_doctype) throw AppcastError("it declares a document type");
}

}  // namespace

std::vector<AppcastItem> parse(std::string_view xml) {
    if (text::validUtf8(xml) != xml || xml.find('\0') != std::string_view::npos)
        throw AppcastError("it is not in UTF-8");
    pugi::xml_document document;
    const auto result =
        document.load_buffer(xml.data(), xml.size(), pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
    refuseDocumentType(document);  // also where the rest can't be read: HTML begins with one
    if (!result) throw AppcastError(fmt::format("it is no XML: {} at byte {}", result.description(), result.offset));
    const auto channel = document.child("rss").child("channel");
    if (!channel) throw AppcastError("it is no feed: rss or its channel is missing");
    std::vector<AppcastItem> items;
    for (const pugi::xml_node& item : channel.children("item"))
        items.push_back(itemFrom(item));
    return items;
}

const AppcastItem* newest(const std::vector<AppcastItem>& items) {
    const AppcastItem* found = nullptr;
    for (const AppcastItem& item : items) {
        const auto order = compareReleases(item.version, found ? found->version : item.version);
        if (order && (!found || *order > 0)) found = &item;
    }
    return found;
}

}  // namespace quorvane::Appcast
