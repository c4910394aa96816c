// Group "ScanInfo": one instance, the account of the scan itself. Collected after all other groups.
#include <unistd.h>

#include <ctime>
#include <string>
#include <vector>

#include "scanners/zukhw/collectors.h"
#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/host_identity.h"
#include "scanners/zukhw/scan.h"
#include "scanners/zukhw/text.h"
#include "scanners/zukhw/version.h"

namespace {

std::string statusText(const GroupReport& report) {
    switch (report.status) {
        case GroupStatus::Ok:
            return "Ok(" + std::to_string(report.instances) + ',' + std::to_string(report.milliseconds) + ')';
        case GroupStatus::Empty:
            return "Empty";
        case GroupStatus::Denied:
            return "Denied";
        case GroupStatus::Timeout:
            return "Timeout";
        case GroupStatus::Unsupported:
            break;
    }
    return "Unsupported";
}

// The other groups' reports, and this group's as it will be.
std::vector<GroupReport> finalReports(const ScanRecord& record) {
    std::vector<GroupReport> reports = record.reports;
    for (GroupReport& report : reports) {
        if (report.group == "ScanInfo") report = {report.group, GroupStatus::Ok, 1, 0};
    }
    return reports;
}

void writeGroups(const std::vector<GroupReport>& reports, SourceLog& sources, GroupWriter& out) {
    std::vector<std::string> names;
    std::vector<std::string> statuses;
    std::size_t instances = 0;
    for (const GroupReport& report : reports) {
        names.emplace_back(report.group);
        statuses.push_back(names.back() + '=' + statusText(report));
        instances += report.instances;
    }
    out.list("Groups", names);
    out.number("InstancesTotal", instances);
    out.number("SourcesDenied", sources.deniedCount());
    out.list("DeniedSources", sources.deniedPaths());
    out.number("SourcesMissing", sources.missingCount());
    out.number("ItemsMalformed", sources.malformedCount());
    out.list("MalformedItems", sources.malformedItems());
    out.list("GroupStatus", statuses);
}

}  // namespace

void collectScanInfo(Machine& machine, GroupWriter& out) {
    using std::chrono::duration_cast;
    const ScanRecord& record = machine.shared<ScanRecord>();
    const auto duration = Deadline::Clock::now() - record.startedClock;
    out.beginInstance();
    out.text("ScannerName", "zukhw");
    out.text("ScannerVersion", kScannerVersion);
    out.number("FieldTableVersion", kFieldTableVersion);
    out.text("StartTime", utcTime(record.started));
    out.text("EndTime", utcTime(std::time(nullptr)));
    out.number("DurationMilliseconds", duration_cast<std::chrono::milliseconds>(duration).count());
    out.boolean("Privileged", ::geteuid() == 0);
    out.text("Root", record.root);
    out.text("HostName", machine.shared<HostIdentity>().name);
    writeGroups(finalReports(record), machine.sources(), out);
}
