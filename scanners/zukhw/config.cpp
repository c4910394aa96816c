#include "scanners/zukhw/config.h"

#include "scanners/shared/xml_events.h"

namespace {

class ConfigEvents : public XmlEvents {
  public:
    explicit ConfigEvents(ScanConfig* config) : config_(config) {}

    void onStart(const std::string& path, const XmlAttributes& attributes) override {
        if (path != "KAV/ZUK/Hardware/Group") return;
        if (const std::string* name = findAttribute(attributes, "Name")) config_->groups.push_back(*name);
    }

  private:
    ScanConfig* config_;
};

}  // namespace

std::string readConfig(const std::string& path, ScanConfig* config) {
    ConfigEvents events(config);
    return readXmlFile(path, &events);
}
