#pragma once

#include <string>
#include <string_view>
#include <vector>

class Machine;

// How block devices are stacked. Names are those of /sys/class/block ("sda1", "dm-0").

// All of them, disks and partitions, in natural order.
std::vector<std::string> blockNames(Machine& machine);

// The block device with this number ("8:1"), or empty.
std::string blockNameOf(Machine& machine, const std::string& device);

// The block device of a node's path: "/dev/sda1", "/dev/mapper/vg-root" and links to them; or empty.
std::string blockNameOfNode(Machine& machine, std::string_view node);

// Its directory free of links ("sys/devices/.../sda/sda1"), or empty.
std::string blockPath(Machine& machine, const std::string& name);

// Whether it is a part of another that a partition table tells of.
bool isPartition(Machine& machine, const std::string& name);

// The devices right below: the disk of a partition, the parts of a mapped device or an array.
std::vector<std::string> blockParents(Machine& machine, const std::string& name);

// All devices below, and the device itself, each once, from the top down.
std::vector<std::string> blockLayers(Machine& machine, const std::string& name);

// The whole disks among these layers, in natural order.
std::vector<std::string> disksBelow(Machine& machine, const std::string& name);

// Whether one of the layers is an encrypted mapping.
bool isEncrypted(Machine& machine, const std::string& name);
