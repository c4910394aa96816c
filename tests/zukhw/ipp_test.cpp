// Asking a print server for its queues.
#include "scanners/zukhw/ipp.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

std::string attribute(char tag, const std::string& name, const std::string& value) {
    const auto sized = [](const std::string& text) {
        return std::string{static_cast<char>(text.size() >> 8), static_cast<char>(text.size())} + text;
    };
    return tag + sized(name) + sized(value);
}

const std::string kHead = "\x01\x01\x00\x00\x00\x00\x00\x01\x01"s +
                          attribute(0x47, "attributes-charset", "utf-8") +
                          attribute(0x42, "printer-name", "of no printer");

// A queue, and a class of two that is the default.
const std::string kAnswer =
    kHead + "\x04"s + attribute(0x42, "printer-name", "office") +
    attribute(0x35, "printer-info", "\x00\x02"s + "en" + "\x00\x0A"s + "The office") +
    attribute(0x41, "printer-location", "2nd floor") +
    attribute(0x41, "printer-make-and-model", "HP LaserJet 4") +
    attribute(0x45, "device-uri", "socket://printer.example:9100") +
    attribute(0x23, "printer-state", "\x00\x00\x00\x05"s) + attribute(0x22, "printer-is-shared", "\x01") +
    attribute(0x22, "printer-is-accepting-jobs", "\x00"s) +
    attribute(0x23, "printer-type", "\x00\x00\x10\x04"s) + "\x04"s + attribute(0x42, "printer-name", "all") +
    attribute(0x23, "printer-type", "\x00\x02\x10\x05"s) +
    attribute(0x23, "printer-state", "\x00\x00\x00\x04"s) +
    attribute(0x45, "device-uri", "file:///dev/null") + attribute(0x42, "member-names", "office") +
    attribute(0x42, "", "desk") + "\x03";

TEST(IppQueues, AreThoseOfTheAnswer) {
    const std::vector<PrintQueue> queues = parseIppQueues(kAnswer);
    ASSERT_EQ(2U, queues.size());
    EXPECT_EQ("office", queues[0].name);
    EXPECT_EQ("The office", queues[0].info);
    EXPECT_EQ("2nd floor", queues[0].location);
    EXPECT_EQ("HP LaserJet 4", queues[0].makeModel);
    EXPECT_EQ("socket://printer.example:9100", queues[0].deviceUri);
    EXPECT_EQ("Stopped", queues[0].state);
    EXPECT_EQ("Yes", queues[0].shared);
    EXPECT_EQ("No", queues[0].accepting);
    EXPECT_FALSE(queues[0].isClass);
    EXPECT_FALSE(queues[0].isDefault);
    EXPECT_EQ("all", queues[1].name);
    EXPECT_EQ("Idle", queues[1].state);
    EXPECT_EQ("", queues[1].deviceUri);
    EXPECT_EQ("", queues[1].shared);
    EXPECT_TRUE(queues[1].isClass);
    EXPECT_TRUE(queues[1].isDefault);
    EXPECT_EQ((std::vector<std::string>{"office", "desk"}), queues[1].members);
}

TEST(IppQueues, AreReadWithoutHarmWhereverTheAnswerIsCut) {
    for (std::size_t size = 0; size < kAnswer.size(); ++size) {
        for (const PrintQueue& queue : parseIppQueues(std::string_view(kAnswer).substr(0, size)))
            EXPECT_NE("", queue.name) << size;
    }
}

TEST(IppRequest, IsForTheQueuesOfTheServer) {
    const std::string request = ippQueuesRequest();
    EXPECT_EQ(
        "\x01\x01\x40\x02\x00\x00\x00\x01\x01\x47\x00\x12"s + "attributes-charset" + "\x00\x05"s + "utf-8",
        request.substr(0, 37));
    EXPECT_NE(std::string::npos, request.find(attribute(0x44, "requested-attributes", "printer-name")));
    EXPECT_EQ('\x03', request.back());
}

}  // namespace
