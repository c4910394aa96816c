#include "cli/failure.h"
#include "cli/group_page.h"
#include "cli/hardware_scan.h"
#include "cli/json.h"
#include "cli/subcommand.h"
#include "cli/text.h"

namespace {

Answer runGroups(const Options& options) {
    if (!options.operands.empty()) {
        throw Failure(kWrongUsage, "\"zuk groups\" takes no GROUP: \"zuk hw GROUP\" scans one");
    }
    const Library library(options.home, options.verbose);
    const std::vector<Group> groups = HardwareScan(library).groups();
    return options.json ? groupListAsJson(groups) : toUtf8(groupListAsText(groups, standardPage()));
}

}  // namespace

const Subcommand kGroupsCommand = {"groups", "list the groups of hardware information",
                                   R"(usage: zuk groups [OPTION...]

Lists the groups that "zuk hw" knows, with their numbers.

  --json         print JSON: an array of objects with Number and Name
  -v, --verbose  show the library's messages on standard error
  -h, --help     print this text
)",
                                   runGroups};
