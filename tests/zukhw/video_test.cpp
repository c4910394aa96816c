#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

const std::string kCard = "sys/devices/pci0000:00/0000:00:02.0";
const std::string kTree =
    "sys/bus/pci/devices/0000:00:02.0 -> ../../../devices/pci0000:00/0000:00:02.0\n" + kCard +
    "/uevent:\n\tDRIVER=i915\n\tPCI_CLASS=30000\n\tPCI_ID=8086:5917\n\tPCI_SUBSYS_ID=17AA:225D\n";
const std::string kDrm =
    "sys/class/drm/card1 -> ../../devices/pci0000:00/0000:00:02.0/drm/card1\n"
    "sys/class/drm/card1-DP-1/status: disconnected\n"
    "sys/class/drm/card1-eDP-1/status: connected\n"
    "sys/class/drm/renderD128 -> ../../devices/pci0000:00/0000:00:02.0/drm/renderD128\n"
    "sys/class/drm/version: drm 1.1.0 20060810\n";

Fields video(const std::string& tree) {
    TestMachine machine(tree);
    return collectOne(machine, "Video");
}

TEST(Video, ReadsADisplayController) {
    EXPECT_EQ((Fields{{"VendorId", "8086"},
                      {"DeviceId", "5917"},
                      {"SubsystemVendorId", "17aa"},
                      {"SubsystemDeviceId", "225d"},
                      {"Class", "VGA"},
                      {"BusAddress", "0000:00:02.0"},
                      {"Driver", "i915"}}),
              video(kTree));
}

TEST(Video, LeavesOtherDevicesAlone) {
    TestMachine machine(
        "sys/bus/pci/devices/0000:00:01.0/vendor: 0x8086\nsys/bus/pci/devices/0000:00:01.0/class: "
        "0x020000\n");
    EXPECT_EQ("", collectXml(*machine, "Video"));
}

TEST(Video, FindsTheCardsConnectors) {
    const Fields fields = video(kTree + kDrm);
    EXPECT_EQ("card1", fields.at("DrmCard"));
    EXPECT_EQ("DP-1; eDP-1", fields.at("Outputs"));
    EXPECT_EQ("eDP-1", fields.at("ConnectedOutputs"));
}

TEST(Video, TakesTheLargestPrefetchableRangeForMemory) {
    const Fields fields = video(kTree + kCard +
                                "/resource:\n"
                                "\t0x00000000a2000000 0x00000000a2ffffff 0x0000000000140204\n"
                                "\t0x0000000090000000 0x000000009fffffff 0x000000000014220c\n"
                                "\t0x0000000000004000 0x000000000000403f 0x0000000000040101\n"
                                "\t0x0000000000000000 0x0000000000000000 0x0000000000000000\n");
    EXPECT_EQ("268435456", fields.at("MemoryBytes"));
    EXPECT_EQ("Aperture", fields.at("MemorySource"));
}

TEST(Video, BelievesTheDriverMoreThanTheAperture) {
    const Fields fields = video(kTree + kCard + "/mem_info_vram_total: 8573157376\n" + kCard +
                                "/resource:\n\t0x90000000 0x9fffffff 0x14220c\n");
    EXPECT_EQ("8573157376", fields.at("MemoryBytes"));
    EXPECT_EQ("Driver", fields.at("MemorySource"));
}

TEST(Video, ReadsTheResolutionOfItsFrameBuffer) {
    const Fields fields =
        video(kTree + "sys/class/graphics/fb0 -> ../../devices/pci0000:00/0000:00:02.0/graphics/fb0\n" +
              kCard + "/graphics/fb0/virtual_size: 1920,1080\n");
    EXPECT_EQ("1920x1080", fields.at("CurrentResolution"));
}

TEST(Video, FindsTheFrameBufferOfACardWithoutPci) {
    const std::string gpu = "sys/devices/platform/soc/gpu";
    EXPECT_EQ("800x480", video(gpu + "/uevent:\n"
                                     "sys/class/drm/card0/device -> ../../../devices/platform/soc/gpu\n"
                                     "sys/class/graphics/fb0/device -> ../../../devices/platform/soc/gpu\n"
                                     "sys/class/graphics/fb0/virtual_size: 800,480\n")
                             .at("CurrentResolution"));
}

TEST(Video, LeavesAnotherCardsFrameBufferAlone) {
    const Fields fields =
        video(kTree +
              "sys/class/graphics/fb0 -> ../../devices/platform/simple-framebuffer.0/graphics/fb0\n"
              "sys/devices/platform/simple-framebuffer.0/graphics/fb0/virtual_size: 800,600\n");
    EXPECT_EQ(0U, fields.count("CurrentResolution"));
}

TEST(Video, AsksNvidiasDriver) {
    const Fields fields = video(
        "sys/bus/pci/devices/0000:01:00.0/"
        "uevent:\n\tPCI_CLASS=30200\n\tPCI_ID=10DE:1EB8\n\tPCI_SUBSYS_ID=10DE:12A2\n"
        "proc/driver/nvidia/gpus/0000:01:00.0/information:\n\tModel: \t\t Tesla T4\n\tGPU UUID: \t "
        "GPU-5a1c\n");
    EXPECT_EQ("Tesla T4", fields.at("Model"));
    EXPECT_EQ("GPU-5a1c", fields.at("Uuid"));
    EXPECT_EQ("3D", fields.at("Class"));
}

TEST(Video, NamesACardWithoutPciByTheDeviceTree) {
    const Fields fields = video(
        "sys/class/drm/card0 -> ../../devices/platform/gpu/drm/card0\n"
        "sys/devices/platform/gpu/drm/card0/device -> ../../../gpu\n"
        "sys/devices/platform/gpu/driver -> ../../../bus/platform/drivers/vc4-drm\n"
        "sys/devices/platform/gpu/of_node/compatible = 62 72 63 6d 2c 76 63 35 00 62 2c 76 00\n"
        "sys/class/drm/card0-HDMI-A-1/status: connected\n");
    EXPECT_EQ((Fields{{"Vendor", "brcm"},
                      {"Model", "vc5"},
                      {"BusAddress", "gpu"},
                      {"Driver", "vc4-drm"},
                      {"DrmCard", "card0"},
                      {"Outputs", "HDMI-A-1"},
                      {"ConnectedOutputs", "HDMI-A-1"}}),
              fields);
}

TEST(Video, KeepsAUsbDisplayApartFromItsController) {
    TestMachine machine(
        "sys/bus/pci/devices/0000:00:14.0/uevent:\n\tPCI_CLASS=C0330\n\tPCI_ID=8086:A36D\n"
        "sys/class/drm/card2 -> ../../devices/pci0000:00/0000:00:14.0/usb1/1-2/1-2:1.0/drm/card2\n");
    EXPECT_EQ("card2", collectOne(machine, "Video").at("DrmCard"));
}

}  // namespace
