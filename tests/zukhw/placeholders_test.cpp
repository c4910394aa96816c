#include "scanners/zukhw/placeholders.h"

#include <gtest/gtest.h>

namespace {

TEST(Placeholders, AreRecognisedInAnyCase) {
    const char* texts[] = {
        "To Be Filled By O.E.M.",
        "to be filled by o.e.m",
        "Default string",
        "SYSTEM PRODUCT NAME",
        "N/A",
        "None",
        "[Empty]",
        "NO DIMM",
        "Type2 - Board Asset Tag",
        "Manufacturer00",
        "PartNum3",
        "AssetTagNum1",
        "ModulePartNumber01",
        "ModuleManufacturer12",
        "123456789",
        "123456789012345678",
        "01234567",
        "0123456789",
        "01234567890123",
        "0",
        "0000",
        "FFFFFFFF",
        "ffff",
        "XXXX",
        "....",
        "-",
        "____",
        "***",
        "#",
        "11111111",
        "O.E.M.",
        "",
        "System SKU#",
        "Unknow",
        "Unknown",
    };
    for (const char* text : texts) EXPECT_TRUE(isPlaceholder(text)) << text;
}

TEST(Placeholders, AreWholeStringsOnly) {
    const char* texts[] = {
        "Default string 2", "OEM board", "0123456", "012345678901234", "1111111", "Manufacturer",
        "PartNumX",         "00001",     "1",       "Nonesuch",        "SKU1",
    };
    for (const char* text : texts) EXPECT_FALSE(isPlaceholder(text)) << text;
}

TEST(Placeholders, AmongUuidsAreThoseThatManyMachinesShare) {
    EXPECT_TRUE(isPlaceholderUuid("00000000-0000-0000-0000-000000000000"));
    EXPECT_TRUE(isPlaceholderUuid("FFFFFFFF-FFFF-FFFF-FFFF-FFFFFFFFFFFF"));
    EXPECT_TRUE(isPlaceholderUuid("03000200-0400-0500-0006-000700080009"));
    EXPECT_FALSE(isPlaceholderUuid("4c4c4544-0038-3510-8052-b4c04f4a3132"));
}

}  // namespace
