#include <re2/re2.h>

#include "scanners/zuksw/sources/language_packages.h"

namespace zuksw {

FileQuery gemQuery() {
    return queryByPath("/**/specifications/{,default/}*.gemspec");
}

// A specification is a Ruby program, but the one that the tool writes on installing always has the same form.
std::optional<Package> parseGemspec(std::string_view text) {
    static const re2::RE2 kName("(?m)^\\s*s\\.name\\s*=\\s*[\"']([^\"'\\n]+)[\"']", re2::RE2::Latin1);
    static const re2::RE2 kVersion(
        "(?m)^\\s*s\\.version\\s*=\\s*(?:Gem::Version\\.new\\()?[\"']([^\"'\\n]+)[\"']", re2::RE2::Latin1);
    const re2::StringPiece data(text.data(), text.size());
    Package package;
    if (!re2::RE2::PartialMatch(data, kName, &package.name)) return std::nullopt;
    if (!re2::RE2::PartialMatch(data, kVersion, &package.version)) return std::nullopt;
    package.upstream = package.version;
    return package;
}

Causes readGem(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take) {
    Causes causes = 0;
    std::optional<Package> package = parseGemspec(readText(*file, machine, &causes));
    if (package) take(*std::move(package), {});
    return causes;
}

}  // namespace zuksw
