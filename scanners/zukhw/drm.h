#pragma once

#include <string>
#include <vector>

class Machine;

struct DrmConnector {
    std::string name;  // "HDMI-A-1"
    std::string path;  // of its directory
    bool connected = false;
};

struct DrmCard {
    std::string name;        // "card0"
    std::string path;        // of its directory
    std::string pciAddress;  // of the function that it is, or is behind; empty when on no PCI bus
    std::vector<DrmConnector> connectors;
};

// The graphics cards that the kernel drives, and their connectors, in natural order; machine.shared<Drm>().
class Drm {
  public:
    explicit Drm(Machine& machine);

    const std::vector<DrmCard>& cards() const { return cards_; }

  private:
    std::vector<DrmCard> cards_;
};
