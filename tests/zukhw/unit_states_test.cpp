// The states of services as the service manager tells them over a bus, and what ServiceInfo makes of them.
#include "scanners/zukhw/unit_states.h"

#include <gtest/gtest.h>

#include <atomic>

#include "scanners/zukhw/services.h"
#include "tests/zukhw/fake_bus.h"
#include "tests/zukhw/instance_reader.h"
#include "tests/zukhw/test_machine.h"

namespace {

using std::chrono::milliseconds;
constexpr milliseconds kPlenty(60000);

struct Unit {
    const char* name;
    const char* load;
    const char* state;
    const char* subState;
};

void answerUnits(sd_bus_message* call, const std::vector<Unit>& units) {
    sd_bus_message* answer = nullptr;
    sd_bus_message_new_method_return(call, &answer);
    sd_bus_message_open_container(answer, 'a', "(ssssssouso)");
    for (const Unit& unit : units) {
        const std::string object = std::string("/unit/") + unit.subState;
        sd_bus_message_append(answer, "(ssssssouso)", unit.name, "", unit.load, unit.state, unit.subState, "",
                              object.c_str(), 0U, "", "/");
    }
    sd_bus_message_close_container(answer);
    sd_bus_send(nullptr, answer, nullptr);
    sd_bus_message_unref(answer);
}

// Tells of these units, and of each that it is asked for the number of its process, 42.
void answer(sd_bus_message* call) {
    if (sd_bus_message_is_method_call(call, nullptr, "ListUnits") > 0) {
        answerUnits(call, {{"ssh.service", "loaded", "active", "running"},
                           {"once.service", "loaded", "active", "exited"},
                           {"broken.service", "loaded", "failed", "failed"},
                           {"absent.service", "not-found", "inactive", "dead"},
                           {"home.mount", "loaded", "active", "mounted"}});
    } else {
        const bool isRunning = std::string(sd_bus_message_get_path(call)) == "/unit/running";
        sd_bus_reply_method_return(call, "v", "u", isRunning ? 42U : 0U);
    }
}

TEST(UnitStates, AreThoseOfLoadedServices) {
    FakeBus bus(answer);
    const UnitStates states = readUnitStates(bus.address(), kPlenty);
    ASSERT_EQ(3U, states.size());
    EXPECT_EQ("active", states.at("ssh.service").state);
    EXPECT_EQ("running", states.at("ssh.service").subState);
    EXPECT_EQ(42U, states.at("ssh.service").mainPid);
    EXPECT_EQ("exited", states.at("once.service").subState);
    EXPECT_FALSE(states.at("once.service").mainPid);
    EXPECT_EQ("failed", states.at("broken.service").state);
}

TEST(UnitStates, AreAskedForWithoutStartingAnything) {
    std::atomic<int> startsAllowed{0};
    FakeBus bus([&](sd_bus_message* call) {
        if (sd_bus_message_get_auto_start(call) != 0) ++startsAllowed;
        answer(call);
    });
    EXPECT_FALSE(readUnitStates(bus.address(), kPlenty).empty());
    EXPECT_EQ(0, startsAllowed);
}

TEST(UnitStates, AreNoneWhenTheManagerRefuses) {
    FakeBus bus([](sd_bus_message* call) {
        sd_bus_reply_method_errorf(call, "org.freedesktop.DBus.Error.AccessDenied", "no");
    });
    EXPECT_TRUE(readUnitStates(bus.address(), kPlenty).empty());
}

TEST(UnitStates, AreNoneWhenTheAnswerIsOfAnotherKind) {
    FakeBus bus([](sd_bus_message* call) { sd_bus_reply_method_return(call, "s", "ssh.service"); });
    EXPECT_TRUE(readUnitStates(bus.address(), kPlenty).empty());
}

TEST(UnitStates, AreNotWaitedForLongerThanTheLimit) {
    FakeBus bus([](sd_bus_message*) {});
    EXPECT_TRUE(readUnitStates(bus.address(), milliseconds(20)).empty());
}

TEST(UnitStates, AreNoneWithoutABus) {
    const TemporaryFolder folder;
    EXPECT_TRUE(readUnitStates("unix:path=" + folder.path() + "/bus", kPlenty).empty());
    EXPECT_TRUE(readUnitStates("nonsense", kPlenty).empty());
}

TEST(ServiceInfo, HasTheStateOfAServiceThatIsLoaded) {
    TestMachine machine(
        "usr/lib/systemd/system/on.service:\n\t[Service]\n\tUser=x\n"
        "usr/lib/systemd/system/off.service:\n\t[Service]\n");
    GroupWriter writer("ServiceInfo", machine->deadline());
    writeServices(*machine, {{"on.service", {"active", "running", 42}}}, writer);
    writer.finish();
    const std::vector<Instance> services =
        readInstances("<Inventory>" + std::string(writer.parts().at(0)) + "</Inventory>");
    ASSERT_EQ(2U, services.size());
    EXPECT_EQ((Fields{{"Name", "off.service"},
                      {"Manager", "Systemd"},
                      {"StartMode", "Static"},
                      {"UnitPath", "/usr/lib/systemd/system/off.service"}}),
              Fields(services[0].fields.begin(), services[0].fields.end()));
    EXPECT_EQ((Fields{{"Name", "on.service"},
                      {"Manager", "Systemd"},
                      {"StartMode", "Static"},
                      {"State", "active"},
                      {"SubState", "running"},
                      {"MainPid", "42"},
                      {"User", "x"},
                      {"UnitPath", "/usr/lib/systemd/system/on.service"}}),
              Fields(services[1].fields.begin(), services[1].fields.end()));
}

}  // namespace
