// Group "Monitor": one instance per connector with a display that tells of itself, ordered by card and
// connector.
#include <algorithm>
#include <cmath>
#include <string>

#include "scanners/zukhw/base64.h"
#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/device_names.h"
#include "scanners/zukhw/drm.h"
#include "scanners/zukhw/edid.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/hex.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

namespace {

void writeIdentity(Machine& machine, const Edid& edid, GroupWriter& out) {
    out.text("ManufacturerId", edid.makerLetters);
    out.text("Manufacturer", machine.shared<DeviceNames>().pnpVendor(edid.makerLetters));
    out.text("ProductCode", hex(edid.productCode, 4));
    out.hardware("Model", edid.model);
    out.hardware("SerialNumber", edid.serialNumber);
    out.number("SerialCode", edid.serialCode);
    out.number("ManufactureYear", edid.manufactureYear);
    out.number("ManufactureWeek", edid.manufactureWeek);
    out.number("ModelYear", edid.modelYear);
    out.text("EdidVersion", std::to_string(edid.version) + '.' + std::to_string(edid.revision));
    out.text("Input", edid.digital ? "Digital" : "Analog");
    out.text("DigitalInterface", edid.digitalInterface);
    out.number("BitsPerColor", edid.bitsPerColor);
}

void writeSize(const Edid& edid, GroupWriter& out) {
    out.number("WidthMillimetres", edid.widthMillimetres);
    out.number("HeightMillimetres", edid.heightMillimetres);
    if (!edid.widthMillimetres || !edid.heightMillimetres) return;
    out.number("DiagonalMillimetres",
               std::lround(std::hypot(*edid.widthMillimetres, *edid.heightMillimetres)));
}

void writeTimings(const Edid& edid, GroupWriter& out) {
    if (edid.preferred) {
        out.text("PreferredResolution",
                 std::to_string(edid.preferred->width) + 'x' + std::to_string(edid.preferred->height));
        const unsigned refresh = edid.preferred->refreshMilliHertz;
        if (refresh != 0) out.number("PreferredRefreshMilliHertz", refresh);
    }
    if (!edid.range) return;
    if (edid.range->maxPixelClockKHz != 0) out.number("MaxPixelClockKHz", edid.range->maxPixelClockKHz);
    out.number("MinVerticalHz", edid.range->minVerticalHz);
    out.number("MaxVerticalHz", edid.range->maxVerticalHz);
    out.number("MinHorizontalKHz", edid.range->minHorizontalKHz);
    out.number("MaxHorizontalKHz", edid.range->maxHorizontalKHz);
}

// The kernel repeats a resolution for each of its rates; the preferred one comes first.
std::vector<std::string> modes(Machine& machine, const DrmConnector& connector) {
    std::vector<std::string> resolutions;
    const std::string text = machine.text(connector.path + "/modes");
    for (const std::string_view line : lines(text)) {
        if (std::find(resolutions.begin(), resolutions.end(), line) == resolutions.end())
            resolutions.emplace_back(line);
    }
    return resolutions;
}

bool isBuiltIn(const std::string& connector) {
    return startsWith(connector, "eDP") || startsWith(connector, "LVDS") || startsWith(connector, "DSI");
}

void writeMonitor(Machine& machine, const DrmConnector& connector, GroupWriter& out) {
    const std::string path = connector.path + "/edid";
    const std::string bytes = machine.read(path).value_or("");
    const std::optional<Edid> edid = parseEdid(bytes);
    if (!edid) {
        if (!bytes.empty()) machine.sources().malformed(path, 0);
        return;
    }
    out.beginInstance();
    out.text("Connector", connector.name);
    writeIdentity(machine, *edid, out);
    writeSize(*edid, out);
    writeTimings(*edid, out);
    out.list("Modes", modes(machine, connector));
    out.boolean("BuiltIn", isBuiltIn(connector.name));
    const std::string enabled = machine.text(connector.path + "/enabled");
    if (!enabled.empty()) out.boolean("Enabled", enabled == "enabled");
    out.boolean("ChecksumValid", edid->checksumValid);
    out.text("Edid", base64(bytes));
}

}  // namespace

void collectMonitor(Machine& machine, GroupWriter& out) {
    for (const DrmCard& card : machine.shared<Drm>().cards()) {
        for (const DrmConnector& connector : card.connectors) {
            if (connector.connected) writeMonitor(machine, connector, out);
        }
    }
}
