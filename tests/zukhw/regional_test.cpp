// The group Regional, and the rules of time zones and keyboard settings below it.
#include <gtest/gtest.h>

#include "scanners/zukhw/keyboard_config.h"
#include "scanners/zukhw/posix_tz.h"
#include "tests/zukhw/test_machine.h"

namespace {

struct OffsetCase {
    const char* rule;
    std::int64_t time;
    std::int64_t minutes;
};

TEST(PosixTimeZone, TellsTheOffsetOfATime) {
    constexpr std::int64_t kJanuary2026 = 1767225600;
    constexpr std::int64_t kJuly2026 = 1782864000;
    constexpr std::int64_t kBerlinSpring = 1774746000;  // 2026-03-29T01:00:00Z
    constexpr std::int64_t kBerlinAutumn = 1792890000;  // 2026-10-25T01:00:00Z
    const OffsetCase cases[] = {
        {"UTC0", kJanuary2026, 0},
        {"<+0545>-5:45", kJanuary2026, 345},
        {"CET-1CEST,M3.5.0,M10.5.0/3", kJanuary2026, 60},
        {"CET-1CEST,M3.5.0,M10.5.0/3", kJuly2026, 120},
        {"CET-1CEST,M3.5.0,M10.5.0/3", kBerlinSpring - 1, 60},
        {"CET-1CEST,M3.5.0,M10.5.0/3", kBerlinSpring, 120},
        {"CET-1CEST,M3.5.0,M10.5.0/3", kBerlinAutumn - 1, 120},
        {"CET-1CEST,M3.5.0,M10.5.0/3", kBerlinAutumn, 60},
        {"AEST-10AEDT,M10.1.0,M4.1.0/3", kJanuary2026, 660},
        {"AEST-10AEDT,M10.1.0,M4.1.0/3", kJuly2026, 600},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", kJanuary2026, 0},
        {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", kJuly2026, -60},
        {"EST5EDT,J60,J300", 1772323200 + 7 * 3600 - 1, -300},  // 2026-03-01, which J60 is in every year
        {"EST5EDT,J60,J300", 1772323200 + 7 * 3600, -240},
        {"EST5EDT,59/0,300", 1772323200 + 5 * 3600, -240},
    };
    for (const OffsetCase& c : cases) {
        const auto zone = parsePosixTimeZone(c.rule);
        ASSERT_TRUE(zone) << c.rule;
        EXPECT_EQ(c.minutes * 60, zone->offsetAt(c.time)) << c.rule << " at " << c.time;
    }
}

TEST(PosixTimeZone, IsNothingElse) {
    const char* texts[] = {"",           "CET",
                           "-1",         "<+1-1",
                           "CET-",       "CET-200",
                           "CET-1CEST",  "CET-1x1x",
                           "CET-1CEST,", "CET-1CEST,M3.5.0",
                           "C0D,M3,M4",  "C0D,M13.1.0,M3.1.0",
                           "C0D,J0,J1",  "C0D,J1,J366",
                           "C0D,J1,J2,", "C0D,J1/,J2",
                           "C0:",        "C0:60"};
    for (const char* text : texts) EXPECT_FALSE(parsePosixTimeZone(text)) << text;
}

std::string zoneFile(const std::string& rule, char version = '2') {
    std::string file = std::string("TZif") + version;
    file.resize(44 * 2, '\0');
    return file + '\n' + rule + '\n';
}

TEST(TimeZoneRule, IsTheLastLineOfTheFile) {
    EXPECT_EQ("CET-1", timeZoneRule(zoneFile("CET-1")));
    EXPECT_EQ("", timeZoneRule(zoneFile("")));
    EXPECT_EQ("", timeZoneRule(zoneFile("CET-1", '\0')));
    EXPECT_EQ("", timeZoneRule("TZif2\nCET-1\n"));
    EXPECT_EQ("", timeZoneRule("CET-1\n"));
    const std::string whole = zoneFile("CET-1");
    EXPECT_EQ("", timeZoneRule(std::string_view(whole).substr(0, whole.size() - 1)));
}

std::string bytesOf(const std::string& text) {
    std::string hex;
    for (const char c : text) {
        constexpr char kDigits[] = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(c);
        hex += {' ', kDigits[byte >> 4], kDigits[byte & 15]};
    }
    return hex;
}

TEST(Regional, DescribesLanguageZoneAndKeyboard) {
    TestMachine machine(
        "etc/default/locale:\n\tLANG=\"de_AT.UTF-8@euro\"\n\tLC_TIME=C.UTF-8\n\tLC_PAPER=de_DE.UTF-8\n"
        "etc/localtime -> /usr/share/zoneinfo/Europe/Vienna\n"
        "usr/share/zoneinfo/Europe/Vienna =" +
        bytesOf(zoneFile("CET-1CEST,M3.5.0,M10.5.0/3")) +
        "\n"
        "etc/adjtime:\n\t0.0 0 0.0\n\t0\n\tLOCAL\n"
        "etc/default/keyboard:\n\tXKBMODEL=\"pc105\"\n\tXKBLAYOUT=\"de\"\n"
        "etc/vconsole.conf:\n\tKEYMAP=de-latin1\n\tFONT=eurlatgr\n"
        "usr/lib/locale/C.utf8/LC_CTYPE: x\n"
        "usr/lib/locale/locale-archive = 09 01 02 de 00 00 00 00 00 00 00 00 03 00 00 00 00\n");
    EXPECT_EQ((Fields{{"Locale", "de_AT.UTF-8@euro"},
                      {"Language", "de"},
                      {"Territory", "AT"},
                      {"Charset", "UTF-8"},
                      {"LocaleSettings", "LC_PAPER=de_DE.UTF-8; LC_TIME=C.UTF-8"},
                      {"TimeZone", "Europe/Vienna"},
                      {"StandardOffsetMinutes", "60"},
                      {"DaylightSaving", "true"},
                      {"HardwareClock", "local"},
                      {"KeyboardLayout", "de"},
                      {"ConsoleKeymap", "de-latin1"},
                      {"ConsoleFont", "eurlatgr"},
                      {"InstalledLocales", "4"}}),
              collectOne(machine, "Regional"));
}

TEST(Regional, HasNoLanguageInTheCLocale) {
    TestMachine machine("etc/locale.conf: LANG=C.UTF-8\netc/timezone: Etc/UTC\n");
    EXPECT_EQ((Fields{{"Locale", "C.UTF-8"}, {"Charset", "UTF-8"}, {"TimeZone", "Etc/UTC"}}),
              collectOne(machine, "Regional"));
}

TEST(Regional, OfACopyHasTheOffsetOnlyWhereClocksAreNotChanged) {
    TestMachine machine("etc/localtime =" + bytesOf(zoneFile("<+0545>-5:45")) + "\n");
    EXPECT_EQ(
        (Fields{{"UtcOffsetMinutes", "345"}, {"StandardOffsetMinutes", "345"}, {"DaylightSaving", "false"}}),
        collectOne(machine, "Regional"));
}

TEST(KeyboardConfig, ComeFromTheConfigurationOfX) {
    TestMachine machine(
        "etc/X11/xorg.conf.d/00-keyboard.conf:\n"
        "\tSection \"InputClass\"\n"
        "\t    Option \"XkbLayout\" \"us,de\"\n"
        "\t    Option \"XkbModel\" \"pc104\"\n"
        "\t    Option \"XkbVariant\"\n"
        "\tEndSection\n");
    const KeyboardConfig settings(*machine);
    EXPECT_EQ("us,de", settings.layout);
    EXPECT_EQ("pc104", settings.model);
    EXPECT_EQ("", settings.variant);
}

}  // namespace
