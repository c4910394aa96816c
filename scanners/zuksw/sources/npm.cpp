#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/formats/value.h"
#include "scanners/zuksw/sources/language_packages.h"

namespace zuksw {

FileQuery npmQuery() {
    return queryByPath("/**/node_modules/{*,@*/*}/package.json");
}

Causes readNpm(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take) {
    Causes causes = 0;
    const std::string text = readText(*file, machine, &causes);
    const Values names = extractValues(ValueFormat::kJson, text, std::nullopt, "/name");
    const Values versions = extractValues(ValueFormat::kJson, text, std::nullopt, "/version");
    if (causes == 0 && names.malformed) {
        machine.events.add(EventCode::kBadFormat, {}, "the file is malformed", file->path());
        return toCauses(Cause::kBadFormat);
    }
    takeFirst(names, versions, take);
    return causes;
}

}  // namespace zuksw
