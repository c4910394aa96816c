#include "scanners/shared/packages/opkg.h"

#include "scanners/shared/packages/status_file.h"

PackageList parseOpkgStatus(std::string_view text) {
    // Installed-Size is bytes for some builders and KiB for others.
    return parseStatusFile(text, {"opkg", true, false, 0, true});
}
