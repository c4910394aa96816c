#include "scanners/zukhw/json.h"

std::optional<Json> readJson(Machine& machine, const std::string& path) {
    constexpr std::size_t kMaxText = std::size_t{4} << 20U;  // in memory it takes up to ten times as much
    constexpr int kMaxDepth = 32;
    const auto text = machine.read(path, kMaxText);
    if (!text) return std::nullopt;
    const auto isShallow = [](int depth, Json::parse_event_t, const Json&) { return depth < kMaxDepth; };
    Json document = Json::parse(*text, isShallow, false);
    if (!document.is_discarded()) return document;
    machine.sources().malformed(path, 0);
    return std::nullopt;
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
