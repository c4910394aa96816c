#include "scanners/zuksw/language/scope.h"

#include <utility>

#include "scanners/zuksw/language/identifier.h"
#include "scanners/zuksw/language/properties.h"
#include "scanners/zuksw/language/suggestion.h"

namespace zuksw {
namespace {

constexpr unsigned kTextBit = static_cast<unsigned>(Kind::kText);
constexpr std::size_t kMaxNames = 4096;

struct Binder {
    Kind kind;
    const char* conditions;
};

constexpr Binder kBinders[] = {{Kind::kFile, "File, Member or Library"},
                               {Kind::kPackage, "Package"},
                               {Kind::kProcess, "Process"},
                               {Kind::kTag, "Tag"},
                               {Kind::kMatched, "Matched"}};

// The conditions whose 'as' binds an object of just that kind.
std::string bindersOf(unsigned kind) {
    for (const Binder& binder : kBinders) {
        if (kind == static_cast<unsigned>(binder.kind)) return binder.conditions;
    }
    return "a condition";
}

std::vector<std::string_view> split(std::string_view list) {
    std::vector<std::string_view> words;
    while (!list.empty()) {
        const std::size_t end = list.find(", ");
        words.push_back(list.substr(0, end));
        list.remove_prefix(end == list.npos ? list.size() : end + 2);
    }
    return words;
}

}  // namespace

Slot Scope::slotOf(std::string_view name, std::size_t offset) {
    const auto found = slots_.find(std::string(name));
    if (found != slots_.end()) return found->second;
    if (entries_.size() >= kMaxNames) {
        if (entries_.size() == kMaxNames) report(offset, "a signature has more than 4096 names; split it");
        entries_.resize(kMaxNames + 1);
        return kMaxNames;
    }
    const auto slot = static_cast<Slot>(entries_.size());
    entries_.push_back({std::string(name), 0, std::nullopt});
    slots_.emplace(name, slot);
    return slot;
}

Slot Scope::bind(std::string_view name, Kind kind, std::size_t offset) {
    if (!isIdentifier(name)) {
        report(offset, "'" + std::string(name) +
                           "' is no name; use up to 64 letters, digits and underscores, no digit first");
    } else if (name == "host") {
        report(offset, "'host' is always bound; choose another name");
    }
    const Slot slot = slotOf(name, offset);
    Entry& entry = entries_[slot];
    entry.kinds |= static_cast<unsigned>(kind);
    if ((entry.kinds & kTextBit) != 0 && entry.kinds != kTextBit) {
        report(offset, "'" + std::string(name) + "' is bound both to a text and to an object; use two names");
    }
    if (names_ != nullptr) names_->binds.push_back(slot);
    return slot;
}

Slot Scope::use(std::string_view name, std::string_view property, std::size_t offset) {
    const Slot slot = slotOf(name, offset);
    const unsigned wanted = property.empty() ? kTextBit : kindsWithProperty(property);
    uses_.push_back({slot, wanted, std::string(property), offset});
    if (names_ != nullptr) names_->uses.push_back(slot);
    return slot;
}

Slot Scope::useObject(std::string_view name, Kind kind, std::size_t offset) {
    const Slot slot = slotOf(name, offset);
    uses_.push_back({slot, static_cast<unsigned>(kind), "", offset});
    if (names_ != nullptr) names_->uses.push_back(slot);
    return slot;
}

bool Scope::isBound(std::string_view name) const {
    const auto found = slots_.find(std::string(name));
    return found != slots_.end() && entries_[found->second].kinds != 0;
}

Scope::Names* Scope::track(Names* names) {
    return std::exchange(names_, names);
}

std::string Scope::explain(const Use& use) const {
    const Entry& entry = entries_[use.slot];
    if (entry.kinds == 0) return "nothing binds '" + entry.name + "'; " + remedyForUnbound(use);
    if (use.wanted == kTextBit) {
        return "'" + entry.name +
               "' is an object; name one of its properties: " + std::string(propertiesOf(entry.kinds));
    }
    if (use.property.empty()) {
        return "'" + entry.name + "' is no object of the kind wanted here; take the 'as' of " +
               bindersOf(use.wanted);
    }
    if (entry.kinds == kTextBit) {
        return "'" + entry.name + "' is a text and has no property '" + use.property + "'; write ${" +
               entry.name + "}";
    }
    const std::string_view properties = propertiesOf(entry.kinds);
    const std::string_view close = closest(use.property, split(properties));
    return "'" + entry.name + "' has no property '" + use.property + "'; " +
           (close.empty() ? "it has: " + std::string(properties)
                          : "did you mean '" + std::string(close) + "'?");
}

std::string Scope::remedyForUnbound(const Use& use) const {
    std::vector<std::string_view> bound;
    for (const Entry& entry : entries_) {
        if (entry.kinds != 0) bound.push_back(entry.name);
    }
    const std::string_view close = closest(entries_[use.slot].name, bound);
    if (!close.empty()) return "did you mean '" + std::string(close) + "'?";
    if (use.wanted == kTextBit) return "declare it as an Input or bind it with a capture, 'set' or Set";
    return "bind it with the 'as' of " + bindersOf(use.wanted);
}

void Scope::checkUses() {
    // To explain one means to look at all names; nobody reads more than some.
    constexpr int kMostExplained = 20;
    int explained = 0;
    for (const Use& use : uses_) {
        if ((entries_[use.slot].kinds & use.wanted) != 0) continue;
        if (++explained > kMostExplained) return;
        report(use.offset, explain(use));
    }
}

}  // namespace zuksw
