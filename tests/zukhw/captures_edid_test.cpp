// What is read from captured EDIDs against what two decoders say of them.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <regex>

#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/zukhw/captures.h"
#include "tests/zukhw/test_machine.h"

namespace {

namespace fs = std::filesystem;

std::vector<std::string> edidNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(capturesFolder() + "/edid")) {
        const std::string name = entry.path().filename().string();
        if (!endsWith(name, ".txt")) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

Fields monitorWith(const std::string& edid) {
    TestMachine machine("sys/class/drm/card0-HDMI-A-1/status: connected\n");
    fs::copy_file(capturesFolder() + "/edid/" + edid, machine.root() + "/sys/class/drm/card0-HDMI-A-1/edid");
    return collectOne(machine, "Monitor");
}

// The rest of the first line that begins so, blanks aside.
std::string after(const std::string& text, std::string_view start) {
    for (const std::string_view line : lines(text)) {
        if (startsWith(trim(line), start)) return cleanText(trim(line).substr(start.size()));
    }
    return "";
}

// The quoted texts of all lines that begin so, as one.
std::string quotedAfter(const std::string& text, std::string_view start) {
    std::vector<std::string> parts;
    for (const std::string_view line : lines(text)) {
        const std::size_t open = line.find('\'');
        if (!startsWith(trim(line), start) || open == std::string_view::npos) continue;
        parts.push_back(cleanText(line.substr(open + 1, line.rfind('\'') - open - 1)));
    }
    return join(parts, " ");
}

// Puts a field down as expected when the text, read by the format, has it.
using Expected = std::map<std::string, std::string>;

void expectIdentity(const std::string& text, Expected* expected) {
    (*expected)["EdidVersion"] = after(text, "EDID Structure Version & Revision:");
    (*expected)["ManufacturerId"] = after(text, "Manufacturer:");
    char code[8] = "";
    const auto product = parseDecimal(after(text, "Model:"));
    if (product) std::snprintf(code, sizeof code, "%04x", static_cast<unsigned>(*product));
    (*expected)["ProductCode"] = code;
    const std::string serial = after(text, "Serial Number:");
    const bool isFilled = serial != "0" && serial != "16843009" && serial != "4294967295";
    (*expected)["SerialCode"] = isFilled ? serial : "";
    (*expected)["Model"] = quotedAfter(text, "Display Product Name:");
    if ((*expected)["Model"].empty()) (*expected)["Model"] = quotedAfter(text, "Alphanumeric Data String:");
    (*expected)["SerialNumber"] = quotedAfter(text, "Display Product Serial Number:");
    const std::string made = after(text, "Made in:");
    std::smatch found;
    if (std::regex_match(made, found, std::regex("week (\\d+) of (\\d+)"))) {
        (*expected)["ManufactureWeek"] = found[1];
        (*expected)["ManufactureYear"] = found[2];
    } else {
        (*expected)["ManufactureYear"] = made;
    }
    (*expected)["ModelYear"] = after(text, "Model year:");
}

void expectInput(const std::string& text, Expected* expected) {
    (*expected)["Input"] = text.find("Digital display") != std::string::npos ? "Digital" : "Analog";
    (*expected)["BitsPerColor"] = after(text, "Bits per primary color channel:");
    for (const char* interface : {"DVI", "HDMI-a", "HDMI-b", "MDDI", "DisplayPort"}) {
        if (text.find("    " + std::string(interface) + " interface\n") != std::string::npos) {
            (*expected)["DigitalInterface"] = interface;
        }
    }
    static const std::regex kRanges(
        "Monitor ranges.*\\): (\\d+)-(\\d+) Hz V, (\\d+)-(\\d+) kHz H(?:, max dotclock (\\d+) MHz)?");
    std::smatch found;
    if (!std::regex_search(text, found, kRanges)) return;
    (*expected)["MinVerticalHz"] = found[1];
    (*expected)["MaxVerticalHz"] = found[2];
    (*expected)["MinHorizontalKHz"] = found[3];
    (*expected)["MaxHorizontalKHz"] = found[4];
    if (found[5].matched) (*expected)["MaxPixelClockKHz"] = found[5].str() + "000";
}

// "1280x1024   60.019740 Hz   5:4     63.981 kHz    108.000000 MHz (338 mm x 270 mm)"
void expectTimingAndSize(const std::string& text, Expected* expected) {
    unsigned long width = 0, height = 0;
    std::smatch found;
    const std::string size = after(text, "Maximum image size:");
    if (std::regex_match(size, found, std::regex("(\\d+) cm x (\\d+) cm"))) {
        width = std::stoul(found[1]) * 10;
        height = std::stoul(found[2]) * 10;
    }
    const std::string timing = after(text, "DTD 1:");
    if (std::regex_search(timing, found, std::regex("^(\\d+x\\d+)[i ]+([\\d.]+) Hz"))) {
        (*expected)["PreferredResolution"] = found[1];
        (*expected)["PreferredRefreshMilliHertz"] = std::to_string(std::lround(std::stod(found[2]) * 1000));
    }
    if (std::regex_search(timing, found, std::regex("\\((\\d+) mm x (\\d+) mm\\)"))) {
        width = std::stoul(found[1]);
        height = std::stoul(found[2]);
    }
    if (width == 0 || height == 0) return;
    (*expected)["WidthMillimetres"] = std::to_string(width);
    (*expected)["HeightMillimetres"] = std::to_string(height);
    (*expected)["DiagonalMillimetres"] = std::to_string(std::lround(std::hypot(width, height)));
}

TEST(EdidCaptures, AreReadAsTheirDecoderReadsThem) {
    SKIP_WITHOUT_CAPTURES();
    static constexpr const char* kFields[] = {"ManufacturerId",
                                              "ProductCode",
                                              "Model",
                                              "SerialNumber",
                                              "SerialCode",
                                              "ManufactureYear",
                                              "ManufactureWeek",
                                              "ModelYear",
                                              "EdidVersion",
                                              "Input",
                                              "DigitalInterface",
                                              "BitsPerColor",
                                              "WidthMillimetres",
                                              "HeightMillimetres",
                                              "DiagonalMillimetres",
                                              "PreferredResolution",
                                              "PreferredRefreshMilliHertz",
                                              "MaxPixelClockKHz",
                                              "MinVerticalHz",
                                              "MaxVerticalHz",
                                              "MinHorizontalKHz",
                                              "MaxHorizontalKHz"};
    for (const std::string& name : edidNames()) {
        const std::string text = captureText("edid/" + name + ".decoded.txt");
        Expected expected;
        expectIdentity(text, &expected);
        expectInput(text, &expected);
        expectTimingAndSize(text, &expected);
        const Fields monitor = monitorWith(name);
        for (const char* field : kFields) {
            EXPECT_EQ(expected[field], valueOf(monitor, field)) << name << ' ' << field;
        }
        const bool isValid = text.find("should be") == std::string::npos;
        EXPECT_EQ(isValid ? "true" : "false", monitor.at("ChecksumValid")) << name;
    }
}

TEST(EdidCaptures, AreListedByMakerModelAndSerialNumber) {
    SKIP_WITHOUT_CAPTURES();
    const std::string list = captureText("edid-expected.tsv");
    for (const std::string_view line : lines(list)) {
        const std::vector<std::string_view> columns = split(line, '\t');
        ASSERT_EQ(6U, columns.size()) << line;
        const Fields monitor = monitorWith(std::string(columns[0]));
        EXPECT_EQ(columns[2], valueOf(monitor, "Model")) << line;
        // For letters that are not registered the list has the letters.
        const std::string maker = valueOf(monitor, "Manufacturer");
        EXPECT_EQ(columns[1], maker.empty() ? valueOf(monitor, "ManufacturerId") : maker) << line;
        const std::string week = valueOf(monitor, "ManufactureWeek");
        EXPECT_EQ(columns[5], (week.empty() ? "0" : week) + '/' + valueOf(monitor, "ManufactureYear"))
            << line;
        // A long serial number of the list is put together from two, of which the last is ours.
        const std::string serial = valueOf(monitor, "SerialNumber");
        if (!serial.empty()) {
            EXPECT_TRUE(serial == columns[3] || serial == columns[4]) << line << ": " << serial;
        }
    }
}

}  // namespace
