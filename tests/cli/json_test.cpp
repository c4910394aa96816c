#include "cli/json.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string jsonOf(const std::wstring& value) {
    return inventoryAsJson({{3, L"Memory", {{{L"Note", value}}}}});
}

std::string noteWith(const std::string& json) {
    return "{\n  \"Memory\": [\n    {\n      \"Note\": " + json + "\n    }\n  ]\n}\n";
}

struct TextCase {
    std::wstring value;
    const char* json;
};

const TextCase kTexts[] = {
    {L"", R"("")"},
    {L"0042", R"("0042")"},
    {L"say \"hi\" \\ /", R"("say \"hi\" \\ /")"},
    {L"tab\tline\n", R"("tab\u0009line\u000a")"},
    {std::wstring(L"nul\0.", 5), R"("nul\u0000.")"},
    {L"\x9b\x7f", R"("\u009b\u007f")"},
    {L"\u202e\u2028", R"("\u202e\u2028")"},
    {L"größe 漢 \U0001F600", "\"größe 漢 \U0001F600\""},
    {std::wstring(1, static_cast<wchar_t>(0xD800)), "\"\uFFFD\""},  // half a pair is no character
    {std::wstring(1, static_cast<wchar_t>(-1)), "\"\uFFFD\""},
    {std::wstring(1, static_cast<wchar_t>(0x110000)), "\"\uFFFD\""},
};

}  // namespace

TEST(Json, TextIsQuotedAndEscaped) {
    for (const TextCase& c : kTexts) EXPECT_EQ(noteWith(c.json), jsonOf(c.value));
}

TEST(Json, NumbersAndFlagsStandBare) {
    EXPECT_EQ(
        "{\n  \"Processor\": [\n    {\n      \"Index\": 0,\n      \"Online\": true\n    },\n"
        "    {\n      \"Index\": 1,\n      \"Online\": false\n    }\n  ]\n}\n",
        inventoryAsJson(
            {{2,
              L"Processor",
              {{{L"Index", L"0"}, {L"Online", L"true"}}, {{L"Index", L"1"}, {L"Online", L"false"}}}}}));
}

TEST(Json, AGroupWithoutInstancesIsAnEmptyArray) {
    EXPECT_EQ("{\n  \"Modem\": []\n}\n", inventoryAsJson({{30, L"Modem", {}}}));
}

TEST(Json, ListsAreArraysOfTheirItems) {
    EXPECT_EQ(
        "{\n  \"PhysicalProcessor\": [\n    {\n      \"NumaNodes\": [0, 1],\n"
        "      \"Flags\": [\"fpu\", \"vme\"],\n      \"Vulnerabilities\": [\"l1tf=Not \\\"affected\\\"\"]\n"
        "    }\n  ]\n}\n",
        inventoryAsJson({{44,
                          L"PhysicalProcessor",
                          {{{L"NumaNodes", L"0; 1"},
                            {L"Flags", L"fpu vme"},
                            {L"Vulnerabilities", L"l1tf=Not \"affected\""}}}}}));
}

TEST(Json, AValueThatIsNotOfItsFieldsKindIsText) {
    EXPECT_EQ(
        "{\n  \"PhysicalProcessor\": [\n    {\n      \"Cores\": \"N/A\",\n      \"Threads\": \"0042\",\n"
        "      \"Is64Bit\": \"yes\",\n      \"NumaNodes\": [0, \"x\"]\n    }\n  ]\n}\n",
        inventoryAsJson({{44,
                          L"PhysicalProcessor",
                          {{{L"Cores", L"N/A"},
                            {L"Threads", L"0042"},
                            {L"Is64Bit", L"yes"},
                            {L"NumaNodes", L"0; x"}}}}}));
}
