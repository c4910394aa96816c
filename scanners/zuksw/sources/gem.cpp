#include <re2/re2.h>

#include "scanners/zuksw/sources/language_packages.h"

namespace zuksw {

FileQuery gemQuery() {
    return queryByPath("/**/specifications/{,default/}*.gemspec");
}

// A specification is a Ruby program, but the one that the tool writes on installing always has the same form.
Causes readGem(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take) {
    static const re2::RE2 kName("(?m)^\\s*s\\.name\\s*=\\s*[\"']([^\"'\\n]+)[\"']", re2::RE2::Latin1);
    static const re2::RE2 kVersion(
        "(?m)^\\s*s\\.version\\s*=\\s*(?:Gem::Version\\.new\\()?[\"']([^\"'\\n]+)[\"']", re2::RE2::Latin1);
    Causes causes = 0;
    const std::string text = readText(*file, machine, &causes);
    Package package;
    if (!re2::RE2::PartialMatch(text, kName, &package.name)) return causes;
    if (!re2::RE2::PartialMatch(text, kVersion, &package.version)) return causes;
    package.upstream = package.version;
    take(std::move(package), {});
    return causes;
}

}  // namespace zuksw
