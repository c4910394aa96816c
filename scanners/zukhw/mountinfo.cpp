#include "scanners/zukhw/mountinfo.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/octal_escapes.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kPath[] = "proc/self/mountinfo";

// "36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 - ext3 /dev/root rw,errors=continue": after the sixth field any
// number of optional ones, ended by a dash.
bool parseLine(std::string_view line, Mount* mount) {
    constexpr std::size_t kFixed = 6;
    const std::vector<std::string_view> fields = split(line, ' ');
    const auto dash = std::find(fields.begin() + static_cast<std::ptrdiff_t>(std::min(kFixed, fields.size())),
                                fields.end(), "-");
    if (fields.end() - dash < 4) return false;
    mount->device = fields[2];
    mount->root = decodeOctalEscapes(fields[3]);
    mount->point = decodeOctalEscapes(fields[4]);
    mount->options = decodeOctalEscapes(fields[5]);
    mount->type = decodeOctalEscapes(dash[1]);
    mount->source = decodeOctalEscapes(dash[2]);
    mount->superOptions = decodeOctalEscapes(dash[3]);
    const bool hasType = !cleanText(mount->type).empty();
    return hasType && mount->device.find(':') != std::string::npos && startsWith(mount->point, "/");
}

}  // namespace

std::vector<Mount> parseMountinfo(std::string_view text, SourceLog* log) {
    std::vector<Mount> mounts;
    for (const std::string_view line : lines(text)) {
        Mount mount;
        if (parseLine(line, &mount)) {
            mounts.push_back(std::move(mount));
        } else {
            log->malformed(kPath, static_cast<std::size_t>(line.data() - text.data()));
        }
    }
    return mounts;
}

Mountinfo::Mountinfo(Machine& machine)
    : mounts_(parseMountinfo(machine.read(kPath, Machine::kTable).value_or(""), &machine.sources())) {}

std::vector<std::string> Mountinfo::pointsOf(std::string_view device) const {
    std::vector<std::string> points;
    for (const Mount& mount : mounts_) {
        if (mount.device == device) points.push_back(mount.point);
    }
    return points;
}
