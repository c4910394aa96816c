#include "scanners/zuksw/language/properties.h"

#include <string>

namespace zuksw {
namespace {

struct ObjectKind {
    Kind kind;
    std::string_view properties;  // separated by ", "
};

constexpr ObjectKind kObjects[] = {
    {Kind::kFile,
     "path, dir, name, stem, ext, size, mtime, mode, uid, gid, link, package, sha256, elf.soname, "
     "elf.buildId, elf.machine, elf.class, elf.interp"},
    {Kind::kPackage,
     "name, version, epoch, upstream, revision, arch, manager, source, state, vendor, path, purl"},
    {Kind::kProcess, "pid, name, exe, uid"},
    {Kind::kTag, "name, version, tagId, regid, path"},
};

bool contains(std::string_view list, std::string_view word) {
    for (std::size_t at = list.find(word); at != list.npos; at = list.find(word, at + 1)) {
        const bool begins = at == 0 || list[at - 1] == ' ';
        const std::size_t end = at + word.size();
        if (begins && (end == list.size() || list[end] == ',')) return true;
    }
    return false;
}

}  // namespace

unsigned kindsWithProperty(std::string_view property) {
    auto kinds = static_cast<unsigned>(Kind::kMatched);
    for (const ObjectKind& object : kObjects) {
        if (contains(object.properties, property)) kinds |= static_cast<unsigned>(object.kind);
    }
    return kinds;
}

std::string_view propertiesOf(unsigned kinds) {
    for (const ObjectKind& object : kObjects) {
        if ((kinds & static_cast<unsigned>(object.kind)) != 0) return object.properties;
    }
    return "whatever that signature reports";
}

}  // namespace zuksw
