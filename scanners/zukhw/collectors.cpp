#include "scanners/zukhw/collectors.h"

#include <list>
#include <string>

#include "hw/catalogue.h"

namespace {

struct Row {
    std::string_view group;
    Collect collect;
};

#define GROUP(name) {#name, collect##name},
constexpr Row kRows[] = {
#include "scanners/zukhw/groups.def"
};
#undef GROUP

Collect findCollect(std::string_view group) {
    for (const Row& row : kRows) {
        if (row.group == group) return row.collect;
    }
    return nullptr;
}

std::vector<Collector> makeCollectors() {
    static std::list<std::string> names;  // narrowed; the catalogue's names are ASCII
    std::vector<Collector> collectors;
    for (const HWGroup* group = HW_GROUPS; group->configName != nullptr; ++group) {
        std::string& name = names.emplace_back();
        for (const wchar_t* c = group->groupName; *c != L'\0'; ++c) name += static_cast<char>(*c);
        collectors.push_back({group->configName, name, findCollect(name)});
    }
    return collectors;
}

}  // namespace

const std::vector<Collector>& allCollectors() {
    static const std::vector<Collector> collectors = makeCollectors();
    return collectors;
}
