#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/shared/packages/package.h"
#include "scanners/zuksw/files/file_object.h"
#include "scanners/zuksw/formats/value.h"
#include "scanners/zuksw/index/file_query.h"

namespace zuksw {

/** Receives a package, and the group of a Maven artifact. */
using TakePackage = std::function<void(Package package, std::string group)>;

/** A package manager of a programming language: it has no database, but leaves a file with each package. */
struct LanguageManager {
    std::string_view name;
    /** The files that the walk shall find. */
    FileQuery (*query)();
    /** Reads one of them; the causes say why it could not be. */
    Causes (*read)(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take);
};

const std::vector<LanguageManager>& languageManagers();

/** Null when there is none of that name. */
const LanguageManager* findLanguageManager(std::string_view name);

FileQuery pipQuery();
Causes readPip(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take);
FileQuery npmQuery();
Causes readNpm(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take);
FileQuery gemQuery();
Causes readGem(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take);
/** The name and version that a gem's specification gives. */
std::optional<Package> parseGemspec(std::string_view text);
FileQuery jarQuery();
Causes readJar(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take);

/** A query for the paths that a glob with "**" matches. */
FileQuery queryByPath(std::string_view glob);

/** Hands on the package of the first name and the first version, where both were found. */
void takeFirst(const Values& names, const Values& versions, const TakePackage& take);

/** The text of a small file; empty, with a cause, when it cannot be had. */
std::string readText(const FileObject& file, Machine& machine, Causes* causes);

}  // namespace zuksw
