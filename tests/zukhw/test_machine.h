#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zukhw/group_writer.h"
#include "scanners/zukhw/machine.h"
#include "tests/support/temporary_folder.h"

// A machine for a test, made of a machine tree (see plantMachine) and what its processor says of a
// hypervisor.
class TestMachine {
  public:
    explicit TestMachine(std::string_view tree, const std::string& cpuidSignature = "");

    Machine& operator*() { return machine_; }
    Machine* operator->() { return &machine_; }
    const std::string& root() const { return folder_.path(); }

  private:
    TemporaryFolder folder_;
    Machine machine_;
};

using Fields = std::map<std::string, std::string>;

// The value of a field; empty when it is absent.
std::string valueOf(const Fields& fields, const std::string& name);

// What the group's collector writes: one map of fields to values for each instance.
std::vector<Fields> collectInstances(Machine& machine, std::string_view group);
// The same as XML, as it stands in the document.
std::string collectXml(Machine& machine, std::string_view group);
// The fields of a group that has one instance.
Fields collectOne(TestMachine& machine, std::string_view group);
