#include "scanners/zukhw/scan.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <deque>
#include <set>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"

namespace {

using std::chrono::milliseconds;
using Clock = Deadline::Clock;

constexpr std::chrono::seconds kPerGroup(2);
constexpr std::string_view kScanInfo = "ScanInfo";
constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><Inventory>";
constexpr std::string_view kFoot = "</Inventory>";

void tellUnknown(const std::vector<std::string>& configNames) {
    std::set<std::string> told;
    for (const std::string& name : configNames) {
        const auto matches = [&](const Collector& collector) { return collector.configName == name; };
        if (std::any_of(allCollectors().begin(), allCollectors().end(), matches)) continue;
        if (!told.insert(name).second) continue;
        std::printf("%s: no such group, skipped\n", name.c_str());
    }
}

std::vector<const Collector*> enabledCollectors(const std::vector<std::string>& configNames) {
    std::vector<const Collector*> enabled;
    for (const Collector& collector : allCollectors()) {
        const bool wanted =
            std::find(configNames.begin(), configNames.end(), collector.configName) != configNames.end();
        if (wanted) enabled.push_back(&collector);
    }
    return enabled;
}

GroupStatus collectGroup(const Collector& collector, Machine* machine, GroupWriter* out) {
    if (collector.collect == nullptr) return GroupStatus::Unsupported;
    const std::size_t deniedBefore = machine->sources().denials();
    bool cut = false;
    machine->deadline().startGroup(kPerGroup);
    try {
        collector.collect(*machine, *out);
        out->finish();
    } catch (const GroupTimeout&) {
        out->dropUnfinished();
        cut = true;
    }
    machine->deadline().lift();
    if (cut) return GroupStatus::Timeout;
    if (out->instances() != 0) return GroupStatus::Ok;
    return machine->sources().denials() != deniedBefore ? GroupStatus::Denied : GroupStatus::Empty;
}

void runGroup(const Collector& collector, Machine* machine, GroupWriter* out, GroupReport* report) {
    const Clock::time_point start = Clock::now();
    report->status = collectGroup(collector, machine, out);
    report->instances = out->instances();
    report->milliseconds = std::chrono::duration_cast<milliseconds>(Clock::now() - start).count();
    if (report->status == GroupStatus::Timeout) {
        std::printf("%s: cut after %lld ms\n", std::string(collector.group).c_str(),
                    static_cast<long long>(report->milliseconds));
    }
}

bool writeDocument(const std::deque<GroupWriter>& writers, OutputFile* output) {
    output->write(kHead);
    for (const GroupWriter& writer : writers) {
        for (const std::string_view part : writer.parts()) output->write(part);
    }
    output->write(kFoot);
    return output->close();  // tells of a failure in any of these
}

}  // namespace

bool scan(const std::vector<std::string>& configNames, Machine* machine, OutputFile* output) {
    tellUnknown(configNames);
    ScanRecord& record = machine->shared<ScanRecord>();
    record.started = std::time(nullptr);
    record.startedClock = Clock::now();
    const std::vector<const Collector*> enabled = enabledCollectors(configNames);
    std::deque<GroupWriter> writers;
    for (const Collector* collector : enabled) {
        record.reports.push_back({collector->group});
        writers.emplace_back(collector->group, machine->deadline());
    }
    // ScanInfo stands in the middle of the document and tells about all of it: it is collected last.
    for (const bool last : {false, true}) {
        for (std::size_t i = 0; i < enabled.size(); ++i) {
            if ((enabled[i]->group == kScanInfo) != last) continue;
            runGroup(*enabled[i], machine, &writers[i], &record.reports[i]);
        }
    }
    return writeDocument(writers, output);
}
