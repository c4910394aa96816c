#include "cli/group_choice.h"
#include "cli/group_page.h"
#include "cli/hardware_scan.h"
#include "cli/home.h"
#include "cli/json.h"
#include "cli/subcommand.h"
#include "cli/text.h"

namespace {

std::vector<Group> scanHardware(const Options& options) {
    const Library library(options.home ? options.home : findHome(), options.verbose);
    HardwareScan scan(library);
    std::vector<Group> groups = chooseGroups(scan.groups(), options.operands);
    for (const Group& group : groups) scan.enable(group);
    scan.run();
    for (Group& group : groups) scan.read(group);
    return groups;
}

Answer runHw(const Options& options) {
    const std::vector<Group> groups = scanHardware(options);
    return options.json ? inventoryAsJson(groups) : toUtf8(inventoryAsText(groups, standardPage()));
}

}  // namespace

const Subcommand kHwCommand = {"hw", "list the hardware",
                               R"(usage: zuk hw [OPTION...] [GROUP...]

Scans the hardware of this machine and prints what it finds: all groups, or those named. A GROUP is a name,
in any case, or a number; "zuk groups" lists them.

  --json         print JSON: one object, for each group an array of its instances
  --home DIR     take the scanner zukhw from DIR
  -v, --verbose  show the library's messages on standard error
  -h, --help     print this text

A terminal gets tables that fit it: the columns that tell most, long cells cut. A file or a pipe gets everything.
)",
                               runHw};
