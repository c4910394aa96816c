#pragma once

#include <string>
#include <string_view>

// Makes the files that a machine tree describes below an existing folder. One entry a line:
//   # a comment
//   proc/sys/kernel/hostname: testbox       a file with one line
//   proc/meminfo:                           a file; its lines follow, each after a tab
//   sys/firmware/dmi/tables/DMI = 01 1b ff  a file of these bytes; more may follow, each line after a tab
//   sys/class/net/eth0 -> ../../devices/x   a symbolic link
//   run/systemd/system/                     a directory
// A file that begins with "#!" can be executed.
// Throws std::runtime_error with the line that it cannot read.
void plantMachine(std::string_view tree, const std::string& folder);
