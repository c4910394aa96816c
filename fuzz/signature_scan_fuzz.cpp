// Whatever a file of signatures asks of a small tree, the scan ends and its events are well-formed.
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "scanners/zuksw/evaluation/scan.h"
#include "scanners/zuksw/language/xml_reader.h"
#include "tests/support/temporary_folder.h"

namespace {

// A machine with something for each kind of condition.
class Tree {
  public:
    Tree() {
        for (const char* directory :
             {"bin", "etc", "var/lib/dpkg/info", "srv/node_modules/n", "dist-packages/p.dist-info"}) {
            std::filesystem::create_directories(folder_.path() + "/" + directory);
        }
        folder_.file("bin/tool", std::string("\177ELF\2\1\1") + std::string(57, '\0') + "tool 1.2.3", 0755);
        folder_.file("etc/os-release", "ID=test\nVERSION_ID=1.2\n");
        folder_.file("etc/v.json", "{\"name\":\"n\",\"version\":\"1.2\"}");
        folder_.file("etc/empty", "");
        folder_.file("etc/v.ini", "[App]\nName=n\nVersion=1.2\n");
        folder_.file("etc/t.swidtag", "<SoftwareIdentity name='n' version='1.2' tagId='t'/>");
        folder_.file("var/lib/dpkg/status", "Package: n\nStatus: install ok installed\nVersion: 1.2-3\n\n");
        folder_.file("srv/node_modules/n/package.json", "{\"name\":\"n\",\"version\":\"1.2.3\"}");
        folder_.file("dist-packages/p.dist-info/METADATA", "Name: n\nVersion: 1.2\n\n");
        std::filesystem::create_symlink("tool", folder_.path() + "/bin/link");
    }
    const std::string& path() const { return folder_.path(); }

  private:
    TemporaryFolder folder_;
};

class Nothing : public zuksw::XmlSink {
  public:
    std::string onRoot(std::string_view /*name*/) override { return {}; }
    std::string onNode(const zuksw::Element& /*node*/) override { return {}; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Tree kTree;
    static const std::optional<zuksw::FileTree> kFiles = zuksw::FileTree::open(kTree.path());
    if (!kFiles) std::abort();
    zuksw::Configuration configuration;
    configuration.system.prefix = kTree.path();
    configuration.limits.maxRows = 100;
    configuration.content.regexMemory = 1 << 20;
    zuksw::PatternStore patterns(1 << 20);
    zuksw::Presets presets(configuration.presets);
    const std::atomic<bool> stop{false};
    zuksw::SignatureSet set;
    if (!set.read({reinterpret_cast<const char*>(data), size}, &patterns, &presets, 1, stop).empty())
        return 0;
    const zuksw::Budget budget(5, stop);
    zuksw::Events events(100);
    const zuksw::Territory territory(configuration, *kFiles, {});
    zuksw::Machine machine(configuration, *kFiles, territory, budget, events, patterns);
    zuksw::Outcomes outcomes(set);
    if (set.asksForProcesses()) machine.processes.take();
    zuksw::scan(set, 1, &machine, &outcomes);
    Nothing sink;
    if (zuksw::readXml(events.toXml(), 1, &sink)) std::abort();
    for (std::size_t i = 0; i < set.signatures().size(); ++i) {
        for (const auto& result : outcomes.of(i).results) {
            if (!result->metadata.empty() && zuksw::readXml(result->metadata, 1, &sink)) std::abort();
        }
    }
    return 0;
}
