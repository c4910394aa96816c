#include "tests/zukhw/test_machine.h"

#include <algorithm>
#include <stdexcept>

#include "scanners/zukhw/collectors.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/machine_tree.h"

namespace {

Machine makeMachine(const std::string& root, std::string_view tree, const std::string& cpuidSignature) {
    plantMachine(tree, root);
    return Machine(*RootedFs::below(root), Deadline(std::chrono::hours(1)), cpuidSignature);
}

}  // namespace

std::string valueOf(const Fields& fields, const std::string& name) {
    const auto found = fields.find(name);
    return found == fields.end() ? "" : found->second;
}

TestMachine::TestMachine(std::string_view tree, const std::string& cpuidSignature)
    : machine_(makeMachine(folder_.path(), tree, cpuidSignature)) {}

std::string collectXml(Machine& machine, std::string_view group) {
    const auto isGroup = [&](const Collector& collector) { return collector.group == group; };
    const auto collector = std::find_if(allCollectors().begin(), allCollectors().end(), isGroup);
    if (collector == allCollectors().end() || collector->collect == nullptr) {
        throw std::runtime_error("no collector for " + std::string(group));
    }
    GroupWriter writer(group, machine.deadline());
    collector->collect(machine, writer);
    writer.finish();
    std::string xml;
    for (const std::string_view part : writer.parts()) xml += part;
    return xml;
}

std::vector<Fields> collectInstances(Machine& machine, std::string_view group) {
    std::vector<Fields> all;
    for (const Instance& instance :
         readInstances("<Inventory>" + collectXml(machine, group) + "</Inventory>")) {
        all.emplace_back(instance.fields.begin(), instance.fields.end());
    }
    return all;
}

Fields collectOne(TestMachine& machine, std::string_view group) {
    const std::vector<Fields> instances = collectInstances(*machine, group);
    if (instances.size() != 1) {
        throw std::runtime_error(std::string(group) + " has " + std::to_string(instances.size()) +
                                 " instances");
    }
    return instances.front();
}
