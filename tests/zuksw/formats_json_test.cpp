#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

constexpr std::string_view kJson = R"({
    "name": "npm", "version": "9.2", "n": 1.50, "i": -3, "big": 123456789012345678901234567890, "t": true, "z": null,
    "a": ["x", {"v": "y"}, ["w"]],
    "o": {"k": "1", "l": {"k": "2"}},
    "": "e", "a/b": "s", "m~n": "t", "*": "star", "name2": "\u00e9"
})";

TEST(JsonValue, Pointers) {
    expectValues(ValueFormat::kJson, {
                                         {"a member", kJson, "/name", {"npm"}},
                                         {"of a member", kJson, "/o/l/k", {"2"}},
                                         {"an element", kJson, "/a/0", {"x"}},
                                         {"a member of an element", kJson, "/a/1/v", {"y"}},
                                         {"no such member", kJson, "/none", {}},
                                         {"no such element", kJson, "/a/3", {}},
                                         {"an index is written without zeros", kJson, "/a/00", {}},
                                         {"escaped slash", kJson, "/a~1b", {"s"}},
                                         {"escaped tilde", kJson, "/m~0n", {"t"}},
                                         {"the empty name", kJson, "/", {"e"}},
                                         {"a container has no value", kJson, "/o", {}},
                                         {"nothing below a scalar", kJson, "/name/x", {}},
                                         {"the whole document", "\"x\"", "", {"x"}},
                                         {"a member of an array", "[\"a\"]", "/name", {}},
                                         {"escapes", kJson, "/name2", {"\303\251"}},
                                     });
}

TEST(JsonValue, Scalars) {
    expectValues(ValueFormat::kJson, {
                                         {"a fraction as it is written", kJson, "/n", {"1.50"}},
                                         {"a number", kJson, "/i", {"-3"}},
                                         {"of any length", kJson, "/big", {"123456789012345678901234567890"}},
                                         {"a truth value", kJson, "/t", {"true"}},
                                         {"null is no value", kJson, "/z", {}},
                                     });
}

TEST(JsonValue, TheStarStandsForAnyMemberOrElement) {
    expectValues(ValueFormat::kJson,
                 {
                     {"elements", kJson, "/a/*", {"x"}},
                     {"members",
                      "{\"p\":{\"a\":{\"v\":\"1\"},\"b\":{\"v\":\"2\"},\"c\":{\"w\":\"3\"}}}",
                      "/p/*/v",
                      {"1", "2"}},
                     {"both", "[{\"v\":\"1\"},[\"2\"]]", "/*/*", {"1", "2"}},
                     {"equal names each count", "{\"v\":\"1\",\"v\":\"2\"}", "/v", {"1", "2"}},
                 });
}

TEST(JsonValue, WhatIsNoJson) {
    expectMalformed(ValueFormat::kJson, "/v",
                    {
                        {"nothing", ""},
                        {"cut", "{\"v\":\"1\""},
                        {"more after it", "{\"v\":\"1\"} x"},
                        {"a comma too many", "{\"v\":\"1\",}"},
                        {"a comment", "{\"v\":\"1\"} // x"},
                        {"no UTF-8", "{\"v\":\"\377\"}"},
                        {"deeper than 64 levels", repeated("[", 65) + repeated("]", 65)},
                        {"a million deep", repeated("[", 1000000)},
                    });
}

TEST(JsonValue, KeysThatArePointers) {
    expectKeys(ValueFormat::kJson, {
                                       {"", true},
                                       {"/a", true},
                                       {"/a~0~1/*", true},
                                       {"a", false},
                                       {"/a~", false},
                                       {"/a~2", false},
                                   });
}

TEST(JsonValue, SixtyFourLevelsAreRead) {
    const std::string text = repeated("[", 64) + "\"x\"" + repeated("]", 64);
    EXPECT_EQ(extractValues(ValueFormat::kJson, text, std::nullopt, repeated("/0", 64)).found,
              (std::vector<std::string>{"x"}));
}

}  // namespace
}  // namespace zuksw
