#include "scanners/zuksw/formats/value.h"
#include "scanners/zuksw/sources/language_packages.h"

namespace zuksw {

// Each Python package leaves its metadata beside its modules.
FileQuery pipQuery() {
    return queryByPath("/**/{*.dist-info/METADATA,*.egg-info/PKG-INFO,{site,dist}-packages/*.egg-info}");
}

Causes readPip(const std::shared_ptr<const DiskFile>& file, Machine& machine, const TakePackage& take) {
    Causes causes = 0;
    const std::string text = readText(*file, machine, &causes);
    const Values names = extractValues(ValueFormat::kHeaders, text, std::nullopt, "Name");
    const Values versions = extractValues(ValueFormat::kHeaders, text, std::nullopt, "Version");
    takeFirst(names, versions, take);
    return causes;
}

}  // namespace zuksw
