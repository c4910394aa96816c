// The groups UNIXSystemParams, CpuMeter and UnixCpuMeter, and the readers below them.
#include <gtest/gtest.h>

#include "scanners/zukhw/host_id.h"
#include "scanners/zukhw/proc_stat.h"
#include "tests/zukhw/test_machine.h"

namespace {

TEST(UnixSystemParams, TellsLimitsAndSettings) {
    TestMachine machine(
        "proc/sys/fs/file-nr: 1774\t0\t2466177\n"
        "proc/sys/kernel/shmmax: 18446744073692774399\n"
        "proc/sys/kernel/sem: 32000\t1024000000\t500\t32001\n"
        "proc/sys/kernel/core_uses_pid: 1\n"
        "proc/sys/kernel/core_pattern: |/usr/lib/dump %p\n"
        "proc/sys/net/ipv4/ip_forward: 0\n"
        "sys/devices/system/cpu/possible: 0-7\n"
        "sys/devices/system/cpu/online: 0-1,4\n"
        "etc/hostid = 0a 00 7f 01\n"
        "bin/sh -> dash\n");
    EXPECT_EQ((Fields{{"OpenFiles", "1774"},
                      {"SharedMemoryMaxBytes", "18446744073692774399"},
                      {"SemaphoresPerSet", "32000"},
                      {"SemaphoresTotal", "1024000000"},
                      {"SemaphoreOpsPerCall", "500"},
                      {"SemaphoreSets", "32001"},
                      {"CoreUsesPid", "1"},
                      {"CorePattern", "|/usr/lib/dump %p"},
                      {"IPv4Forwarding", "0"},
                      {"CpusConfigured", "8"},
                      {"CpusOnline", "3"},
                      {"HostId", "017f000a"},
                      {"DefaultShell", "dash"}}),
              collectOne(machine, "UNIXSystemParams"));
}

TEST(UnixSystemParams, LeavesOutALimitThatThereIsNot) {
    TestMachine machine(
        "proc/1/limits:\n"
        "\tMax processes             unlimited            96365                processes \n"
        "\tMax open files            1024                 unlimited            files     \n");
    EXPECT_EQ((Fields{{"HardNProc", "96365"}, {"SoftNoFile", "1024"}}),
              collectOne(machine, "UNIXSystemParams"));
}

TEST(UnixSystemParams, TellsALimitOnce) {
    TestMachine machine(
        "proc/1/limits:\n\tMax open files            1024                 4096            files     \n"
        "\tMax open files            1                 2            files     \n");
    EXPECT_EQ((Fields{{"SoftNoFile", "1024"}, {"HardNoFile", "4096"}}),
              collectOne(machine, "UNIXSystemParams"));
    EXPECT_EQ(std::string::npos, collectXml(*machine, "UNIXSystemParams").find("<SoftNoFile>1<"));
}

TEST(HostId, IsFourBytesAndNothingElse) {
    for (const char* bytes : {"", "01 02 03", "01 02 03 04 05"}) {
        TestMachine machine(std::string("etc/hostid = ") + bytes + "\n");
        EXPECT_EQ("", HostId(*machine).text()) << bytes;
    }
}

TEST(ProcStat, FindsACounterByItsWholeKey) {
    TestMachine machine("proc/stat:\n\tcpu  1 2\n\tprocs_running 7\n\tprocs 5 6\n\tintr 9 1 2\n");
    const ProcStat stat(*machine);
    EXPECT_EQ(7U, stat.value("procs_running"));
    EXPECT_EQ(5U, stat.value("procs"));
    EXPECT_EQ(9U, stat.value("intr"));
    EXPECT_FALSE(stat.value("proc"));
}

TEST(ProcStat, CountsBrokenLinesOfCpus) {
    TestMachine machine("proc/stat:\n\tcpu 1\n\tcpu0 1 x\n\tcpu1 2\n");
    EXPECT_EQ(2U, ProcStat(*machine).cpus().size());
    EXPECT_EQ((std::vector<std::string>{"/proc/stat@6"}), machine->sources().malformedItems());
}

TEST(CpuMeter, GivesMillisecondsOfAllCpusAndOfEach) {
    TestMachine machine(
        "proc/stat:\n"
        "\tcpu  40 10 20 100 30 0 0 0 5 0\n"
        "\tcpu10 4 1 2 3\n"
        "\tcpu2 4 1 2 3 18446744073709551615\n");
    const std::vector<Fields> meters = collectInstances(*machine, "CpuMeter");
    ASSERT_EQ(3U, meters.size());
    EXPECT_EQ((Fields{{"Cpu", "total"},
                      {"UserMilliseconds", "400"},
                      {"NiceMilliseconds", "100"},
                      {"SystemMilliseconds", "200"},
                      {"IdleMilliseconds", "1000"},
                      {"IowaitMilliseconds", "300"},
                      {"IrqMilliseconds", "0"},
                      {"SoftirqMilliseconds", "0"},
                      {"StealMilliseconds", "0"},
                      {"GuestMilliseconds", "50"},
                      {"BusyPercent", "35.00"}}),
              meters[0]);
    EXPECT_EQ("2", meters[1].at("Cpu"));
    EXPECT_EQ(0U, meters[1].count("IowaitMilliseconds"));  // too large to be told in milliseconds
    EXPECT_EQ("10", meters[2].at("Cpu"));
    EXPECT_EQ("70.00", meters[2].at("BusyPercent"));
}

TEST(UnixCpuMeter, TellsLoadCountersAndPressure) {
    TestMachine machine(
        "proc/loadavg: 8.97 9.71 8.49 16/188 15179\n"
        "proc/stat:\n\tcpu 1\n\tctxt 5\n\tprocs_blocked 0\n"
        "proc/pressure/cpu:\n\tsome avg10=9.15 avg60=7.59 avg300=9.80 total=2\n"
        "proc/pressure/io:\n\tsome avg10=nan avg60=0.00\n"
        "sys/devices/system/cpu/online: 0\n");
    EXPECT_EQ((Fields{{"Load1", "8.97"},
                      {"Load5", "9.71"},
                      {"Load15", "8.49"},
                      {"RunnableTasks", "16"},
                      {"TotalTasks", "188"},
                      {"ContextSwitches", "5"},
                      {"ProcessesBlocked", "0"},
                      {"CpuPressureAvg10", "9.15"},
                      {"CpusOnline", "1"}}),
              collectOne(machine, "UnixCpuMeter"));
}

TEST(UnixCpuMeter, TellsHowMuchOfItsEntitlementAPartitionUses) {
    TestMachine machine(
        "proc/ppc64/lparcfg:\n\tpartition_entitled_capacity=50\n\tpurr=512000\n\ttbr=4096000\n");
    EXPECT_EQ((Fields{{"PowerVmPurr", "512000"}, {"EntitledUse", "25.00"}}),
              collectOne(machine, "UnixCpuMeter"));
}

}  // namespace
