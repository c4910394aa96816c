#include "platform/name_cache.h"

#include <cstring>

const wchar_t* NameCache::widen(const char* name) {
    std::uint32_t hash = 2166136261u;  // FNV-1a
    const char* end = name;
    for (; *end != '\0'; ++end) hash = (hash ^ static_cast<unsigned char>(*end)) * 16777619u;

    const std::size_t first = hash ^ hash >> 16;
    for (std::size_t i = 0; i < kReach; ++i) {
        Entry& entry = entries_[(first + i) % kSize];
        if (entry.name != nullptr && entry.hash == hash && std::strcmp(entry.name, name) == 0) {
            return entry.wide;
        }
        if (entry.name == nullptr) {
            fill(entry, std::string_view(name, static_cast<std::size_t>(end - name)), hash);
            return entry.wide;
        }
    }
    Entry& victim = entries_[first % kSize];
    fill(victim, std::string_view(name, static_cast<std::size_t>(end - name)), hash);
    return victim.wide;
}

void NameCache::fill(Entry& entry, std::string_view name, std::uint32_t hash) {
    auto* copy = static_cast<char*>(arena_.allocate(name.size() + 1));
    std::memcpy(copy, name.data(), name.size() + 1);
    text_.add(name);
    entry = {copy, text_.finish(), hash};
}
