#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

constexpr std::string_view kYaml = R"(name: npm
version: "9.2"
list:
  - x
  - v: y
map: {k: 1.10, l: {k: two}}
none: ~
empty:
quoted: "null"
text: |
  a
  b
)";

TEST(YamlValue, Pointers) {
    expectValues(ValueFormat::kYaml, {
                                         {"a member", kYaml, "/name", {"npm"}},
                                         {"quoted", kYaml, "/version", {"9.2"}},
                                         {"an element", kYaml, "/list/0", {"x"}},
                                         {"a member of an element", kYaml, "/list/1/v", {"y"}},
                                         {"flow style, number as written", kYaml, "/map/k", {"1.10"}},
                                         {"deeper", kYaml, "/map/l/k", {"two"}},
                                         {"any", kYaml, "/map/*", {"1.10"}},
                                         {"a container has no value", kYaml, "/map", {}},
                                         {"a block of text", kYaml, "/text", {"a\nb\n"}},
                                         {"null is no value", kYaml, "/none", {}},
                                         {"nor is nothing", kYaml, "/empty", {}},
                                         {"a quoted null is text", kYaml, "/quoted", {"null"}},
                                         {"every document", "--- {v: 1}\n--- {v: 2}\n", "/v", {"1", "2"}},
                                         {"a key that is a list", "? [a, b]\n: c\nv: d\n", "/v", {"d"}},
                                         {"a key that is a mapping", "? {v: a}\n: c\nv: d\n", "/v", {"d"}},
                                         {"anchors without aliases", "v: &x 1\n", "/v", {"1"}},
                                         {"empty text", "", "/v", {}},
                                         {"JSON is YAML", "{\"v\": [\"1\"]}", "/v/0", {"1"}},
                                     });
}

TEST(YamlValue, WhatIsNoYaml) {
    expectMalformed(ValueFormat::kYaml, "/v",
                    {
                        {"an alias", "a: &x 1\nv: *x\n"},
                        {"an open bracket", "v: [1"},
                        {"a tab for indentation", "v:\n\t- 1\n"},
                        {"no UTF-8", "v: \377\n"},
                        {"a cycle", "&x [*x]"},
                        {"deeper than 64 levels", repeated("[", 65) + repeated("]", 65)},
                        {"a million deep", repeated("[", 1000000)},
                    });
}

TEST(YamlValue, KeysThatArePointers) {
    expectKeys(ValueFormat::kYaml, {
                                       {"/a/b", true},
                                       {"a", false},
                                   });
}

}  // namespace
}  // namespace zuksw
