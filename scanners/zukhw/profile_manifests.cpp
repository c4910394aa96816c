#include "scanners/zukhw/profile_manifests.h"

#include <string>
#include <utility>

#include "scanners/zukhw/token_reader.h"

namespace {

using Kind = Token::Kind;

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// One assignment of a derivation; `section` is the set that it stands in, empty for the derivation itself.
void setNixField(Package& package, const std::string& section, const std::string& key,
                 const std::string& value) {
    if (section == "meta" && key == "description") package.summary = value;
    if (!section.empty()) return;
    if (key == "name") setNixName(package, value);
    if (key == "system") package.architecture = value;
}

// ("hello" "2.12.1" "out" "/gnu/store/..."): an output other than the usual one is named with the package.
void addGuixEntry(std::vector<Package>& packages, const std::vector<std::string>& strings) {
    if (strings.size() < 4) return;
    Package package;
    package.manager = "guix";
    package.name = strings[2] == "out" ? strings[0] : strings[0] + ':' + strings[2];
    package.version = strings[1];
    if (!strings[0].empty()) packages.push_back(std::move(package));
}

}  // namespace

void setNixName(Package& package, std::string_view whole) {
    std::size_t hyphen = whole.find('-');
    while (hyphen != std::string_view::npos && hyphen + 1 < whole.size() && isLetter(whole[hyphen + 1]))
        hyphen = whole.find('-', hyphen + 1);
    package.name = whole.substr(0, hyphen);
    package.version = hyphen == std::string_view::npos ? "" : whole.substr(hyphen + 1);
}

// [ { name = "hello-2.12.1"; meta = { description = "..."; }; ... } ... ]
std::optional<std::vector<Package>> parseNixManifest(std::string_view text) {
    constexpr std::size_t kDerivation = 2;
    std::vector<Package> packages;
    Package package;
    std::string section;
    std::string key;
    TokenReader reader(text);
    for (Token token = reader.next(); token.kind != Kind::End; token = reader.next()) {
        if (token.kind == Kind::Open && reader.depth() == kDerivation) package = Package();
        if (token.kind == Kind::Open && reader.depth() == kDerivation + 1) section = key;
        if (token.kind == Kind::Close && reader.depth() == kDerivation) section.clear();
        if (token.kind == Kind::Close && reader.depth() == kDerivation - 1 && !package.name.empty()) {
            package.manager = "nix";
            packages.push_back(std::move(package));
            package = Package();
        }
        if (token.kind == Kind::Word && token.text != "=" && token.text != ";") key = token.text;
        const bool known = reader.depth() == kDerivation || reader.depth() == kDerivation + 1;
        if (token.kind == Kind::String && known) setNixField(package, section, key, token.text);
    }
    return reader.depth() == 0 ? std::optional(std::move(packages)) : std::nullopt;
}

// (manifest (version 4) (packages (("hello" "2.12.1" "out" "/gnu/store/..." (propagated-inputs ...)) ...)))
std::optional<std::vector<Package>> parseGuixManifest(std::string_view text) {
    constexpr std::size_t kEntry = 4;
    std::vector<Package> packages;
    std::vector<std::string> strings;
    bool inPackages = false;
    bool opened = false;
    TokenReader reader(text);
    for (Token token = reader.next(); token.kind != Kind::End; token = reader.next()) {
        if (token.kind == Kind::Word && opened && reader.depth() == 2) inPackages = token.text == "packages";
        opened = token.kind == Kind::Open;
        if (reader.depth() == kEntry && opened) strings.clear();
        if (reader.depth() == kEntry && token.kind == Kind::String) strings.push_back(token.text);
        const bool ends = token.kind == Kind::Close && reader.depth() == kEntry - 1;
        if (ends && inPackages) addGuixEntry(packages, std::exchange(strings, {}));
    }
    return reader.depth() == 0 ? std::optional(std::move(packages)) : std::nullopt;
}
