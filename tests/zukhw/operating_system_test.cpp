#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

Fields systemOf(const std::string& tree) {
    TestMachine machine(tree);
    return collectOne(machine, "OperatingSystem");
}

TEST(OperatingSystem, PrefersTheFileInEtc) {
    const Fields fields = systemOf("etc/os-release: NAME=Mine\nusr/lib/os-release: NAME=Theirs\n");
    EXPECT_EQ("Mine", fields.at("Name"));
}

TEST(OperatingSystem, ReadsTheReleaseFilesOfOldSystems) {
    const Fields centos = systemOf("etc/redhat-release: CentOS release 6.5 (Final)\n");
    EXPECT_EQ("CentOS", centos.at("Name"));
    EXPECT_EQ("6.5", centos.at("VersionId"));
    EXPECT_EQ("Final", centos.at("Codename"));
    const Fields ubuntu = systemOf("etc/lsb-release:\n\tDISTRIB_ID=Ubuntu\n\tDISTRIB_RELEASE=10.04\n");
    EXPECT_EQ("10.04", ubuntu.at("VersionId"));
    const Fields suse =
        systemOf("etc/SuSE-release:\n\topenSUSE 11.4 (i586)\n\tVERSION = 11.4\n\tCODENAME = Celadon\n");
    EXPECT_EQ("openSUSE 11.4 (i586)", suse.at("PrettyName"));
    EXPECT_EQ("11.4", suse.at("VersionId"));
    const Fields debian = systemOf("etc/debian_version: 5.0.10\n");
    EXPECT_EQ("Debian GNU/Linux", debian.at("Name"));
    EXPECT_EQ("5.0.10", debian.at("PointRelease"));
}

TEST(OperatingSystem, HasNoPointReleaseOfATestingSystem) {
    EXPECT_EQ(0U, systemOf("etc/debian_version: trixie/sid\n").count("PointRelease"));
}

TEST(OperatingSystem, FindsTheFullNameInHosts) {
    const std::string host = "proc/sys/kernel/hostname: box\n";
    EXPECT_EQ("box.example.org",
              systemOf(host + "etc/hosts:\n\t127.0.0.1 localhost.localdomain\n"
                              "\t# 127.0.1.1 box.wrong.org box\n\t127.0.1.1 box.example.org box\n")
                  .at("Fqdn"));
    EXPECT_EQ(0U,
              systemOf(host + "etc/hosts: 127.0.0.1 localhost.localdomain localhost box\n").count("Fqdn"));
    EXPECT_EQ("a.b", systemOf("proc/sys/kernel/hostname: a.b\n").at("Fqdn"));
}

TEST(OperatingSystem, LeavesOutADomainThatWasNeverSet) {
    EXPECT_EQ(0U, systemOf("proc/sys/kernel/domainname: (none)\netc/hostname: x\n").count("Domain"));
}

struct VersionCase {
    const char* release;
    const char* architecture;
};

TEST(OperatingSystem, TakesTheArchitectureOfACopyFromItsKernelsRelease) {
    const VersionCase cases[] = {
        {"6.1.0-13-amd64", "x86_64"},
        {"4.16.15-200.fc27.x86_64", "x86_64"},
        {"5.10.0-8-cloud-arm64", "aarch64"},
        {"4.19.0-17-686-pae", "i686"},
        {"5.14.0-70.el9.ppc64le", "ppc64le"},
        {"6.8.0-31-generic", ""},
        {"3.10.107-amd6400", ""},
    };
    for (const VersionCase& c : cases) {
        const Fields system = systemOf(std::string("proc/version: Linux version ") + c.release +
                                       " (buildd@host-amd64) (gcc) #1 SMP\nproc/sys/kernel/ostype: Linux\n");
        EXPECT_EQ(c.architecture, valueOf(system, "Architecture")) << c.release;
    }
}

TEST(OperatingSystem, TakesTheArchitectureOfACopyFromItsFiles) {
    EXPECT_EQ("riscv64", systemOf("proc/sys/kernel/arch: riscv64\n").at("Architecture"));
    const Fields arm = systemOf("sbin/init = 7f 45 4c 46 02 01 01 00 00 00 00 00 00 00 00 00 03 00 b7 00\n");
    EXPECT_EQ("aarch64", arm.at("Architecture"));
    EXPECT_EQ("64", arm.at("Bits"));
    const Fields s390 = systemOf("sbin/init = 7f 45 4c 46 02 02 01 00 00 00 00 00 00 00 00 00 00 03 00 16\n");
    EXPECT_EQ("s390x", s390.at("Architecture"));
}

TEST(OperatingSystem, AcceptsOnlyAWholeMachineId) {
    EXPECT_EQ("0123456789abcdef0123456789abcdef",
              systemOf("etc/machine-id: 0123456789ABCDEF0123456789abcdef\n").at("MachineId"));
    EXPECT_EQ(0U, systemOf("etc/machine-id: uninitialized\netc/hostname: x\n").count("MachineId"));
}

TEST(OperatingSystem, TellsWhenItWasStarted) {
    const Fields fields =
        systemOf("proc/stat:\n\tcpu  1 2 3\n\tbtime 1795212345\n\tprocesses 9\nproc/uptime: 1798.33 12.5\n");
    EXPECT_EQ("2026-11-20T22:05:45Z", fields.at("BootTime"));
    EXPECT_EQ("1798", fields.at("UptimeSeconds"));
}

TEST(OperatingSystem, NamesAPendingKernelWhenAnotherRuns) {
    const std::string modules = "lib/modules/6.1.0-9-amd64/\nlib/modules/6.1.0-10-amd64/\n";
    EXPECT_EQ("6.1.0-10-amd64",
              systemOf(modules + "proc/sys/kernel/osrelease: 6.1.0-9-amd64\n").at("PendingKernel"));
    EXPECT_EQ(0U, systemOf(modules + "proc/sys/kernel/osrelease: 6.1.0-10-amd64\n").count("PendingKernel"));
    EXPECT_EQ("6.1.0-10-amd64",
              systemOf(modules + "proc/sys/kernel/osrelease: 6.18.0\n").at("PendingKernel"));
    EXPECT_EQ(0U, systemOf("lib/modules/6.1.0/\nlib/modules/extramodules/\n"
                           "proc/sys/kernel/osrelease: 6.1.0\n")
                      .count("PendingKernel"));
}

TEST(OperatingSystem, KnowsTheInitSystem) {
    EXPECT_EQ("systemd", systemOf("run/systemd/system/\nproc/1/comm: init\n").at("InitSystem"));
    EXPECT_EQ("init", systemOf("proc/1/comm: init\n").at("InitSystem"));
}

TEST(OperatingSystem, NamesTheCLibraryOfACopyByItsFile) {
    EXPECT_EQ(
        "libc-2.31.so",
        systemOf("lib/x86_64-linux-gnu/libc-2.31.so: x\nlib/x86_64-linux-gnu/libc.so.6 -> libc-2.31.so\n")
            .at("CLibrary"));
}

TEST(OperatingSystem, DatesNoInstallationOfACopy) {
    EXPECT_EQ(0U, systemOf("etc/machine-id: 0123456789abcdef0123456789abcdef\n").count("InstallDate"));
}

}  // namespace
