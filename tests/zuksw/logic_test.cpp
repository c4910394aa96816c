// Three-valued logic: what groups and row attributes make of true, false and unknown.

#include "tests/zuksw/scan_fixture.h"

namespace {

// A condition of each truth value. Content that must not be read leaves a question open, also for root.
const std::string kTrue = "<Test value=\"1\" eq=\"1\"/>";
const std::string kFalse = "<Test value=\"1\" eq=\"2\"/>";
const std::string kUnknown = "<File name=\"secret\" format=\"elf\"/>";

class LogicTest : public ScanTest {
  protected:
    LogicTest() { file("/secret", "\177ELF"); }

    std::string judge(const std::string& conditions) {
        return truth(conditions, {{"content/Deny", "/secret"}});
    }
};

std::string condition(char value) {
    return value == 'T' ? kTrue : value == 'F' ? kFalse : kUnknown;
}

struct PairCase {
    const char* values;
    const char* all;
    const char* any;
};

TEST_F(LogicTest, AllAndAnyAreKleenes) {
    const PairCase cases[] = {
        {"TT", "yes", "yes"},     {"TF", "no", "yes"},     {"TU", "unknown", "yes"},
        {"FT", "no", "yes"},      {"FF", "no", "no"},      {"FU", "no", "unknown"},
        {"UT", "unknown", "yes"}, {"UF", "no", "unknown"}, {"UU", "unknown", "unknown"},
    };
    for (const PairCase& c : cases) {
        const std::string both = condition(c.values[0]) + condition(c.values[1]);
        EXPECT_EQ(c.all, judge(both)) << c.values;
        EXPECT_EQ(c.all, judge("<All>" + both + "</All>")) << c.values;
        EXPECT_EQ(c.any, judge("<Any>" + both + "</Any>")) << c.values;
        EXPECT_EQ(c.any, judge("<Any first=\"yes\">" + both + "</Any>")) << c.values;
    }
}

// The costly one is asked first here, since what comes after it only has a say where it finds nothing.
TEST_F(LogicTest, OptionalConditionsThatBindOneNameKeepTheirOrder) {
    file("/f", "A=1\n");
    file("/etc/os-release", "A=2\n");
    const std::string first = "<File path=\"/f\" as=\"f\"/>";
    const auto value = [&](const std::string& key, const std::string& group) {
        const std::string optional =
            "<Value of=\"f\" format=\"keyvalue\" key=\"" + key + "\" set=\"v\" optional=\"yes\"/>";
        return scan(signature(
                        first +
                            (group.empty() ? optional : "<" + group + ">" + optional + "</" + group + ">") +
                            "<System key=\"os.a\" set=\"v\" optional=\"yes\"/>",
                        {"v"}))
            .values("v");
    };
    EXPECT_EQ("1", value("A", ""));
    EXPECT_EQ("2", value("B", ""));
    EXPECT_EQ("1", value("A", "All"));
}

TEST_F(LogicTest, AnOptionalConditionComesAfterOneThatBindsTheSameName) {
    file("/f", "A=1\n");
    file("/etc/os-release", "A=2\n");
    const std::string optional = "<System key=\"os.a\" set=\"v\" optional=\"yes\"/>";
    const std::string needed =
        "<File path=\"/f\" as=\"f\"/><Value of=\"f\" format=\"keyvalue\" key=\"A\" set=\"v\"/>";
    EXPECT_EQ("1", scan(signature(needed + optional, {"v"})).values("v"));
    EXPECT_EQ("1", scan(signature(optional + needed, {"v"})).values("v"));
}

TEST_F(LogicTest, RowsBeyondTheLimitMayBeAnything) {
    for (const char* name : {"/d/1", "/d/2", "/d/3"}) file(name);
    const std::string files = "<File as=\"f\" path=\"/d/*\"/>";
    const auto named = [&](const char* name) {
        return files + "<Test value=\"${f.name}\" eq=\"" + name + "\"/>";
    };
    const Settings two = {{"limits/MaxRows", "2"}};
    for (const char* name : {"3", "4"}) {
        EXPECT_EQ("unknown", truth(named(name), two)) << name;
        EXPECT_EQ("unknown", truth("<Not>" + named(name) + "</Not>", two)) << name;
        EXPECT_EQ("unknown", truth("<Not><All>" + named(name) + "</All></Not>", two)) << name;
    }
    EXPECT_EQ("yes", truth(named("2"), two));
    EXPECT_EQ("no", truth(files + kFalse, two));
}

TEST_F(LogicTest, NotTurnsRound) {
    EXPECT_EQ("no", judge("<Not>" + kTrue + "</Not>"));
    EXPECT_EQ("yes", judge("<Not>" + kFalse + "</Not>"));
    EXPECT_EQ("unknown", judge("<Not>" + kUnknown + "</Not>"));
    EXPECT_EQ("yes", judge("<Not>" + kUnknown + kFalse + "</Not>"));
}

TEST_F(LogicTest, WhatWasUnknownBeforeDoesNotColourWhatIsAskedInside) {
    EXPECT_EQ("no", judge(kUnknown + "<Not>" + kTrue + "</Not>"));
    EXPECT_EQ("unknown", judge(kUnknown + "<Not>" + kFalse + "</Not>"));
    EXPECT_EQ("no", judge(kUnknown + "<AtLeast count=\"2\">" + kTrue + kFalse + "</AtLeast>"));
}

struct AtLeastCase {
    const char* values;
    int count;
    const char* result;
};

TEST_F(LogicTest, AtLeastCounts) {
    const AtLeastCase cases[] = {
        {"TTF", 2, "yes"},     {"TFF", 2, "no"}, {"TUF", 2, "unknown"}, {"TTU", 2, "yes"},
        {"UUU", 3, "unknown"}, {"UUF", 3, "no"}, {"TTT", 3, "yes"},     {"T", 2, "no"},
    };
    for (const AtLeastCase& c : cases) {
        std::string conditions;
        for (const char* v = c.values; *v != '\0'; ++v) conditions += condition(*v);
        EXPECT_EQ(c.result,
                  judge("<AtLeast count=\"" + std::to_string(c.count) + "\">" + conditions + "</AtLeast>"))
            << c.values << " " << c.count;
    }
}

struct CountCase {
    const char* attributes;
    const char* result;
};

// Three files are certain; one more is not.
TEST_F(LogicTest, MinAndMaxCountRows) {
    for (const char* path : {"/d/a.x", "/d/b.x", "/d/c.x"}) file(path, "\177ELF");
    const CountCase certain[] = {
        {"", "yes"},
        {"min=\"3\"", "yes"},
        {"min=\"4\"", "no"},
        {"min=\"0\" max=\"2\"", "no"},
        {"max=\"3\"", "yes"},
        {"min=\"0\" max=\"0\"", "no"},
        {"min=\"4\" optional=\"yes\"", "yes"},
        {"min=\"0\"", "yes"},
    };
    for (const CountCase& c : certain) {
        EXPECT_EQ(c.result, judge("<File name=\"*.x\" format=\"elf\" " + std::string(c.attributes) + "/>"))
            << c.attributes;
    }
    const CountCase open[] = {
        {"", "yes"},
        {"min=\"3\"", "yes"},
        {"min=\"4\"", "unknown"},
        {"min=\"5\"", "unknown"},
        {"max=\"3\"", "unknown"},
        {"max=\"2\"", "no"},
        {"min=\"0\" max=\"4\"", "unknown"},
    };
    for (const CountCase& c : open) {
        EXPECT_EQ(c.result,
                  judge("<File name=\"{*.x,secret}\" format=\"elf\" " + std::string(c.attributes) + "/>"))
            << c.attributes;
    }
}

TEST_F(LogicTest, NothingWithinBoundsLetsTheRowPass) {
    EXPECT_EQ("yes", judge("<File name=\"none\" min=\"0\"/>"));
    EXPECT_EQ("yes", judge("<File name=\"none\" min=\"0\" max=\"0\"/>"));
    EXPECT_EQ("no", judge("<File name=\"none\"/>"));
    EXPECT_EQ("unknown", judge("<File name=\"secret\" format=\"elf\" min=\"0\" max=\"0\"/>"));
}

TEST_F(LogicTest, OptionalPassesWhenNothingIsCertain) {
    EXPECT_EQ("yes", judge("<File name=\"none\" optional=\"yes\"/>"));
    EXPECT_EQ("yes", judge("<File name=\"secret\" format=\"elf\" optional=\"yes\"/>"));
    EXPECT_EQ("unknown", judge(kUnknown + "<File name=\"none\" optional=\"yes\"/>"));
}

TEST_F(LogicTest, AnUnknownTextIsUnknownEvenWithDefault) {
    const std::string open = "<File name=\"secret\" as=\"f\"/><Content of=\"f\" match=\"(?P&lt;v&gt;.)\"/>";
    EXPECT_EQ("unknown", judge(open + "<Test value=\"${v}\" eq=\"1\"/>"));
    EXPECT_EQ("unknown",
              judge("<File name=\"secret\" as=\"f\"/><Not><Content of=\"f\" match=\"(?P&lt;v&gt;.)\"/>"
                    "<Test value=\"${v:-1}\" eq=\"1\"/></Not>"));
}

TEST_F(LogicTest, AnUnboundTextIsFalse) {
    const std::string maybe = "<System key=\"os.none\" set=\"v\" optional=\"yes\"/>";
    EXPECT_EQ("no", judge(maybe + "<Test value=\"${v}\" eq=\"\"/>"));
    EXPECT_EQ("yes", judge(maybe + "<Test value=\"${v:-1}\" eq=\"1\"/>"));
    EXPECT_EQ("yes", judge(maybe + "<Not><Test value=\"${v}\" eq=\"1\"/></Not>"));
}

TEST_F(LogicTest, OrderOfChildrenDoesNotMatter) {
    file("/os", "v=1\n");
    const std::string parts[] = {"<File as=\"f\" path=\"/os\"/>",
                                 "<Content of=\"f\" match=\"v=(?P&lt;v&gt;\\d)\"/>",
                                 "<Test value=\"${v}\" eq=\"1\"/>", "<Set name=\"w\" value=\"${v}x\"/>"};
    std::vector<std::size_t> order = {0, 1, 2, 3};
    do {
        std::string conditions;
        for (const std::size_t i : order) conditions += parts[i];
        EXPECT_EQ("1x", scan(signature(conditions, {"w"})).values("w")) << conditions;
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(LogicTest, BindingsInsideNotAndAtLeastDoNotLeave) {
    EXPECT_NE(
        std::string::npos,
        judge("<Not><File as=\"f\" name=\"x\"/></Not><Test value=\"${f.path:-}\" eq=\"\"/>").find("yes"));
    EXPECT_EQ("yes", judge("<AtLeast count=\"1\"><File as=\"f\" name=\"secret\"/></AtLeast>"
                           "<Test value=\"${f.path:-none}\" eq=\"none\" scheme=\"text\"/>"));
}

}  // namespace
