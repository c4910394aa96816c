#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

TEST(Ini, KeysOfAllSections) {
    expectValues(ValueFormat::kIni,
                 {
                     {"equals", "[App]\nVersion=1", "Version", {"1"}},
                     {"colon", "Version: 1", "Version", {"1"}},
                     {"blanks around it", "Version = 1 ", "Version", {"1"}},
                     {"the first separator counts", "url=http://x:80", "url", {"http://x:80"}},
                     {"each one is a value", "[a]\nv=1\n[b]\nv=2\n", "v", {"1", "2"}},
                     {"comments", "; v=1\n#v=2\nv=3", "v", {"3"}},
                     {"quotes stay", "v=\"1\"", "v", {"\"1\""}},
                     {"carriage returns", "v=1\r\n", "v", {"1"}},
                     {"case matters", "V=1", "v", {}},
                     {"lines that do not fit", "v\n=1\n[x\nv=2", "v", {"2"}},
                     {"byte order mark", "\357\273\277v=1", "v", {"1"}},
                 });
}

TEST(Ini, OnlyTheSectionAskedFor) {
    constexpr std::string_view kText = "v=0\n[A]\nv=1\n[ B ]\nv=2\n[A]\nv=3\n";
    const auto valuesOf = [&](std::string_view section) {
        return extractValues(ValueFormat::kIni, kText, section, "v").found;
    };
    EXPECT_EQ(valuesOf("A"), (std::vector<std::string>{"1", "3"}));
    EXPECT_EQ(valuesOf(" B "), (std::vector<std::string>{"2"}));
    EXPECT_EQ(valuesOf(""), (std::vector<std::string>{"0"}));
    EXPECT_EQ(valuesOf("C"), (std::vector<std::string>{}));
}

}  // namespace
}  // namespace zuksw
