#include "scanners/zukhw/proc_stat.h"

#include <algorithm>

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/natural_sort.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kPath[] = "proc/stat";
constexpr std::string_view kCpu = "cpu";

// "cpu0 184540 50750 40459 217362"; no value when something in it is no number.
std::optional<ProcStat::CpuTimes> parseTimes(std::string_view line) {
    const std::vector<std::string_view> fields = words(line);
    ProcStat::CpuTimes times;
    times.name = fields[0].substr(kCpu.size());
    if (times.name.empty()) times.name = "total";
    for (std::size_t i = 1; i < fields.size(); ++i) {
        const auto ticks = parseDecimal(fields[i]);
        if (!ticks) return std::nullopt;
        times.ticks.push_back(*ticks);
    }
    return times;
}

}  // namespace

ProcStat::ProcStat(Machine& machine) : text_('\n' + machine.read(kPath, Machine::kTable).value_or("")) {
    for (const std::string_view line : lines(text_)) {
        if (!startsWith(line, kCpu)) continue;
        if (auto times = parseTimes(line)) {
            cpus_.push_back(std::move(*times));
        } else {
            const auto offset = static_cast<std::size_t>(line.data() - text_.data()) - 1;
            machine.sources().malformed(kPath, offset);
        }
    }
    const auto isBefore = [](const CpuTimes& a, const CpuTimes& b) {
        if (a.name == "total" || b.name == "total") return a.name == "total" && b.name != "total";
        return naturalLess(a.name, b.name);
    };
    std::stable_sort(cpus_.begin(), cpus_.end(), isBefore);
}

std::optional<std::uint64_t> ProcStat::value(std::string_view key) const {
    const std::string start = '\n' + std::string(key) + ' ';
    const std::size_t found = text_.find(start);
    if (found == std::string::npos) return std::nullopt;
    const std::string_view rest = std::string_view(text_).substr(found + start.size());
    return parseDecimal(rest.substr(0, rest.find_first_of(" \n")));
}
