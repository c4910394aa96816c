#pragma once

#include <string>
#include <string_view>
#include <vector>

class Smbios;
class SmbiosStructure;

// What the firmware says of devices, one item each, in the table's order: the parts that are known with a
// blank between them. Strings are raw.
std::vector<std::string> onboardDevices(const Smbios& smbios);  // "designation type enabled address"
std::vector<std::string> slots(const Smbios& smbios);           // "designation type usage length address"
std::vector<std::string> portConnectors(const Smbios& smbios);  // "internal/external type"
std::vector<std::string> powerSupplies(const Smbios& smbios);   // "location manufacturer model serial watts"

// "2.0" of an IPMI device (type 38) and of a TPM (type 43); empty when the structure is too short.
std::string ipmiSpecification(const SmbiosStructure& ipmi);
std::string tpmSpecification(const SmbiosStructure& tpm);

// The SKU number of an enclosure (type 3), which stands after the list of contained elements.
std::string_view chassisSku(const SmbiosStructure& chassis);
