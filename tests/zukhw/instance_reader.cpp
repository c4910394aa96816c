#include "tests/zukhw/instance_reader.h"

#include <algorithm>
#include <stdexcept>

#include "scanners/shared/xml_events.h"
#include "tests/support/temporary_folder.h"

namespace {

class InstanceEvents : public XmlEvents {
  public:
    void onStart(const std::string& path, const XmlAttributes& /*attributes*/) override {
        const auto depth = std::count(path.begin(), path.end(), '/');
        const std::string name = path.substr(path.find_last_of('/') + 1);
        if (depth == 1) instances.push_back({name, {}});
        if (depth == 2) instances.back().fields.emplace_back(name, "");
    }
    void onText(const std::string& path, std::string_view text) override {
        if (std::count(path.begin(), path.end(), '/') == 2) instances.back().fields.back().second += text;
    }

    std::vector<Instance> instances;
};

}  // namespace

const std::string* Instance::find(const std::string& name) const {
    for (const auto& [field, value] : fields) {
        if (field == name) return &value;
    }
    return nullptr;
}

std::vector<Instance> readInstances(const std::string& document) {
    const TemporaryFolder folder;
    InstanceEvents events;
    const std::string problem = readXmlFile(folder.file("document.xml", document), &events);
    if (!problem.empty()) throw std::runtime_error(problem);
    return events.instances;
}
