#include <algorithm>

#include "scanners/zuksw/files/member_file.h"
#include "scanners/zuksw/formats/value.h"
#include "scanners/zuksw/language/path_glob.h"
#include "scanners/zuksw/sources/language_packages.h"

namespace zuksw {
namespace {

Glob parseGlob(const char* text) {
    std::string error;
    return *Glob::parsePath(text, &error);
}

bool isProperties(std::string_view name) {
    static const Glob kGlob = parseGlob("META-INF/maven/*/*/pom.properties");
    return kGlob.matches(name);
}

// A library inside a program that brings all it needs.
bool isInner(std::string_view name) {
    static const Glob kGlob = parseGlob("{BOOT-INF,WEB-INF}/lib/*.jar");
    return kGlob.matches(name);
}

constexpr std::string_view kManifest = "META-INF/MANIFEST.MF";

std::string first(ValueFormat format, const std::string& text, const char* key) {
    Values values = extractValues(format, text, std::nullopt, key);
    return values.found.empty() ? std::string() : std::move(values.found.front());
}

bool takeProperties(const std::string& text, const std::string& path, const TakePackage& take) {
    Package package;
    package.name = first(ValueFormat::kProperties, text, "artifactId");
    package.version = package.upstream = first(ValueFormat::kProperties, text, "version");
    package.path = path;
    if (package.name.empty() || package.version.empty()) return false;
    take(std::move(package), first(ValueFormat::kProperties, text, "groupId"));
    return true;
}

// A jar that was not built by Maven says its name in the manifest, if at all.
void takeManifest(const std::string& text, const std::string& path, const TakePackage& take) {
    Package package;
    package.name = first(ValueFormat::kHeaders, text, "Bundle-SymbolicName");
    package.name.resize(std::min(package.name.find(';'), package.name.size()));
    package.version = first(ValueFormat::kHeaders, text, "Bundle-Version");
    if (package.name.empty() || package.version.empty()) {
        package.name = first(ValueFormat::kHeaders, text, "Implementation-Title");
        package.version = first(ValueFormat::kHeaders, text, "Implementation-Version");
    }
    package.vendor = first(ValueFormat::kHeaders, text, "Implementation-Vendor");
    package.upstream = package.version;
    package.path = path;
    if (!package.name.empty() && !package.version.empty()) take(std::move(package), {});
}

Causes readArchive(const std::shared_ptr<const FileObject>& archive, Machine& machine,
                   const TakePackage& take) {
    const auto wanted = [](std::string_view name) {
        return name == kManifest || isProperties(name) || isInner(name);
    };
    FoundMembers found = findMembers(archive, wanted, machine);
    Causes causes = found.causes;
    bool named = false;
    const MemberFile* manifest = nullptr;
    for (const auto& member : found.members) {
        const std::string name = nameOf(member->path());
        if (name == "MANIFEST.MF") {
            manifest = member.get();
        } else if (name == "pom.properties") {
            named = takeProperties(readText(*member, machine, &causes), archive->path(), take) || named;
        } else {
            causes |= readArchive(member, machine, take);
        }
    }
    if (!named && manifest != nullptr) {
        takeManifest(readText(*manifest, machine, &causes), archive->path(), take);
    }
    return causes;
}

}  // namespace

FileQuery jarQuery() {
    return queryByPath("/**/*.{jar,war,ear}");
}

Causes readJar(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take) {
    return readArchive(file, machine, take);
}

}  // namespace zuksw
