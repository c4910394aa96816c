#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class Smbios;
class SmbiosStructure;

// What the firmware says of processor sockets (SMBIOS type 4).

// Those for central processors, in the order of their handles.
std::vector<const SmbiosStructure*> processorSockets(const Smbios& smbios);

bool isPopulatedSocket(const SmbiosStructure& socket);
// Enabled, DisabledByUser, DisabledByBios or Idle; empty for anything else.
std::string_view processorStatus(const SmbiosStructure& socket);
// The identification that the processor gives of itself, 16 hex digits; empty when it is not told.
std::string processorId(const SmbiosStructure& socket);
// A number of cores or threads: a byte, and from 255 on a word of its own.
std::optional<unsigned> processorCount(const SmbiosStructure& socket, std::size_t offset, std::size_t large);
std::optional<std::uint64_t> knownMegahertz(const SmbiosStructure& socket, std::size_t offset);
// No value when the socket can have several voltages.
std::optional<unsigned> processorMillivolts(const SmbiosStructure& socket);
std::string socketType(const SmbiosStructure& socket);
