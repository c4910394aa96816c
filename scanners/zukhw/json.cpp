#include "scanners/zukhw/json.h"

std::optional<Json> parseJson(std::string_view text) {
    constexpr int kMaxDepth = 32;
    const auto isShallow = [](int depth, Json::parse_event_t, const Json&) { return depth < kMaxDepth; };
    Json document = Json::parse(text, isShallow, false);
    return document.is_discarded() ? std::nullopt : std::optional(std::move(document));
}

std::optional<Json> readJson(Machine& machine, const std::string& path) {
    constexpr std::size_t kMaxText = std::size_t{4} << 20U;  // in memory it takes up to ten times as much
    const auto text = machine.read(path, kMaxText);
    if (!text) return std::nullopt;
    auto document = parseJson(*text);
    if (!document) machine.sources().malformed(path, 0);
    return document;
}

const Json* findMember(const Json& object, const char* name) {
    if (!object.is_object()) return nullptr;
    const auto found = object.find(name);
    return found == object.end() ? nullptr : &*found;
}

std::string textMember(const Json& object, const char* name) {
    const Json* member = findMember(object, name);
    return member != nullptr && member->is_string() ? member->get<std::string>() : "";
}
