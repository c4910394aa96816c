#include <gtest/gtest.h>

#include <set>

#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/test_machine.h"

namespace {

constexpr char kGroup[] = "VirtualMachine";
const std::string kId(64, 'a');

struct ContainerCase {
    std::string tree;
    const char* name;
};

TEST(VirtualMachine, KnowsContainers) {
    const ContainerCase cases[] = {
        {"run/systemd/container: systemd-nspawn\n", "systemd-nspawn"},
        {"run/systemd/container: lxc-libvirt\n", "LXC"},
        {".dockerenv:\n", "Docker"},
        {"run/.containerenv:\n", "Podman"},
        {"proc/vz/veinfo: x\n", "OpenVZ"},
        {"proc/1/cgroup: 0::/kubepods.slice/kubepods-pod1.slice\n", "Kubernetes"},
        {"proc/1/cgroup: 0::/lxc.payload.box\n", "LXC"},
        {"proc/1/cgroup: 0::/machine.slice/machine-box.scope\n", "systemd-nspawn"},
        {"proc/self/status:\n\tName: cat\n\tVxID: 41639\n", "Linux-VServer"},
        {"proc/self/status:\n\tName: cat\n\tenvID: 101\n", "OpenVZ"},
        {"proc/sys/kernel/osrelease: 5.15.90.1-microsoft-standard-WSL2\n", "WSL"},
        {"proc/sys/kernel/osrelease: 4.4.0-19041-Microsoft\n", "WSL"},
    };
    for (const ContainerCase& c : cases) {
        TestMachine machine(c.tree);
        const Fields fields = collectOne(machine, kGroup);
        EXPECT_EQ("Container", fields.at("Kind")) << c.tree;
        EXPECT_EQ(c.name, fields.at("Hypervisor")) << c.tree;
    }
}

TEST(VirtualMachine, DoesNotTakeHostsForContainers) {
    for (const char* tree : {
             "proc/vz/veinfo: x\nproc/bc/0: x\n",
             "proc/self/status:\n\tVxID: 0\n\tenvID: 0\n",
             "proc/1/cgroup: 0::/init.scope\nproc/self/cgroup: 0::/system.slice/docker.service\n",
             "proc/sys/kernel/osrelease: 6.1.0-18-cloud-amd64\n",
         }) {
        TestMachine machine(tree);
        EXPECT_EQ("", collectXml(*machine, kGroup)) << tree;
    }
}

TEST(VirtualMachine, FindsTheContainersIdentity) {
    TestMachine cgroup("proc/1/cgroup: 1:name=systemd:/docker/" + kId + "\n");
    EXPECT_EQ(kId, collectOne(cgroup, kGroup).at("ContainerId"));
    TestMachine podman("run/.containerenv:\n\tengine=\"podman-4.3.1\"\n\tid=\"" + kId + "\"\n");
    EXPECT_EQ(kId, collectOne(podman, kGroup).at("ContainerId"));
    EXPECT_EQ("4.3.1", collectOne(podman, kGroup).at("HypervisorVersion"));
    TestMachine host(".dockerenv:\nproc/sys/kernel/hostname: 0123456789ab\n");
    EXPECT_EQ("0123456789ab", collectOne(host, kGroup).at("ContainerId"));
    TestMachine named(".dockerenv:\nproc/sys/kernel/hostname: webserver\n");
    EXPECT_EQ(0U, collectOne(named, kGroup).count("ContainerId"));
}

TEST(VirtualMachine, WritesTheMachineBeforeTheContainer) {
    TestMachine machine("proc/cpuinfo:\n\tprocessor : 0\n\tflags : hypervisor\n.dockerenv:\n", "KVMKVMKVM");
    const std::vector<Fields> levels = collectInstances(*machine, kGroup);
    ASSERT_EQ(2U, levels.size());
    EXPECT_EQ("KVM", levels[0].at("Hypervisor"));
    EXPECT_EQ("Docker", levels[1].at("Hypervisor"));
}

TEST(VirtualMachine, TellsTheCloudAndTheInstance) {
    TestMachine machine(
        "proc/cpuinfo:\n\tprocessor : 0\n\tflags : hypervisor\n"
        "sys/class/dmi/id/sys_vendor: Amazon EC2\nsys/class/dmi/id/board_asset_tag: i-0123456789abcdef0\n"
        "usr/sbin/qemu-ga: x\nusr/bin/vmtoolsd: x\n",
        "KVMKVMKVM");
    const Fields fields = collectOne(machine, kGroup);
    EXPECT_EQ("Amazon EC2", fields.at("CloudProvider"));
    EXPECT_EQ("i-0123456789abcdef0", fields.at("InstanceId"));
    EXPECT_EQ("open-vm-tools; qemu-ga", fields.at("ToolsInstalled"));
}

TEST(VirtualMachine, DoesNotCountThatOnlyRootMaySeeTheFirstProcess) {
    TestMachine machine(".dockerenv:\n");
    collectXml(*machine, kGroup);
    EXPECT_EQ(0U, machine->sources().deniedCount());
}

// What captures are called in their list, in our words.
std::string inOurWords(const std::string& listed) {
    static const std::map<std::string, std::string> kWords = {
        {"kvm,aws", "kvm"},
        {"hyperv", "hyper-v"},
        {"linux_vserver,linux_vserver-guest", "linux-vserver"},
    };
    const auto found = kWords.find(listed);
    return found == kWords.end() ? listed : found->second;
}

TEST(VirtualMachine, IsRightAboutCapturedMachines) {
    SKIP_WITHOUT_CAPTURES();
    const std::string list = captureText("virt-expected.tsv");
    for (const std::string_view line : lines(list)) {
        const std::vector<std::string_view> columns = split(line, '\t');
        ASSERT_EQ(3U, columns.size()) << line;
        const Capture capture("virt/" + std::string(columns[0]));
        Machine machine = capture.machine(std::string(columns[2]));
        const std::vector<Fields> levels = collectInstances(machine, kGroup);
        const std::string found = levels.empty() ? "" : toLower(levels[0].at("Hypervisor"));
        EXPECT_EQ(inOurWords(std::string(columns[1])), found) << line;
        EXPECT_LE(levels.size(), 1U) << line;
        if (levels.empty()) continue;
        static const std::set<std::string> kContainers = {"docker", "podman", "lxc", "linux-vserver"};
        EXPECT_EQ(kContainers.count(found) != 0 ? "Container" : "Machine", levels[0].at("Kind")) << line;
        EXPECT_EQ("Guest", levels[0].at("Role")) << line;
        const bool isKnownSignature = columns[2].size() > 1;
        if (isKnownSignature) {
            EXPECT_EQ(columns[2], levels[0].at("Signature")) << line;
        }
    }
}

}  // namespace
