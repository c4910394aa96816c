#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

constexpr std::string_view kXml = R"(<?xml version='1.0'?>
<p:root xmlns:p='urn:x'>
    <a id='1'><b>one</b></a>
    <a id='2' k="w"><b> two
    </b><c><b>three</b></c></a>
    <v p:n='9'/>
</p:root>
)";

TEST(XmlValue, Paths) {
    expectValues(ValueFormat::kXml,
                 {
                     {"from the root", kXml, "/root/a/b", {"one", "two"}},
                     {"at any depth", kXml, "//b", {"one", "two", "three"}},
                     {"at any depth below", kXml, "/root//c/b", {"three"}},
                     {"a condition", kXml, "/root/a[@id='2']/b", {"two"}},
                     {"two of them", kXml, "/root/a[@id='2'][@k=\"w\"]/b", {"two"}},
                     {"that does not hold", kXml, "/root/a[@id='3']/b", {}},
                     {"an attribute", kXml, "/root/a/@id", {"1", "2"}},
                     {"by its local name", kXml, "/root/v/@n", {"9"}},
                     {"any name", kXml, "/root/*/b", {"one", "two"}},
                     {"an empty element", kXml, "/root/v", {""}},
                     {"not the root", kXml, "/a/b", {}},
                     {"nested ones each count", "<a><a>x<a>y</a></a></a>", "//a", {"", "x", "y"}},
                     {"any depth twice", "<r><a><x><b>1</b></x></a></r>", "//a//b", {"1"}},
                 });
}

TEST(XmlValue, Text) {
    expectValues(ValueFormat::kXml,
                 {
                     {"references", "<v>&lt;&#x41;&amp;</v>", "/v", {"<A&"}},
                     {"CDATA", "<v><![CDATA[a<b]]></v>", "/v", {"a<b"}},
                     {"comments do not part it", "<v>a<!-- x -->b</v>", "/v", {"ab"}},
                     {"that of inner elements does not count", "<v>a<i>b</i>c</v>", "/v", {"ac"}},
                     {"another encoding",
                      "<?xml version='1.0' encoding='ISO-8859-1'?><v>\351</v>",
                      "/v",
                      {"\303\251"}},
                     {"a slash in a condition", "<r><a x='1/2'>y</a></r>", "/r/a[@x='1/2']", {"y"}},
                 });
}

TEST(XmlValue, WhatIsRefused) {
    expectMalformed(
        ValueFormat::kXml, "//v",
        {
            {"nothing", ""},
            {"cut", "<v>1"},
            {"two roots", "<v/><v/>"},
            {"a DOCTYPE", "<!DOCTYPE v><v>1</v>"},
            {"an entity bomb", "<!DOCTYPE v [<!ENTITY a \"aaaa\"><!ENTITY b \"&a;&a;\">]><v>&b;</v>"},
            {"an unknown entity", "<v>&x;</v>"},
            {"no UTF-8", "<v>\377</v>"},
            {"deeper than 64 elements", repeated("<v>", 65) + repeated("</v>", 65)},
            {"an empty element too deep", repeated("<v>", 64) + "<v/>" + repeated("</v>", 64)},
        });
}

TEST(XmlValue, KeysThatArePaths) {
    expectKeys(ValueFormat::kXml, {
                                      {"/a", true},
                                      {"//a", true},
                                      {"/a/@b", true},
                                      {"/a[@b='c']", true},
                                      {"/*", true},
                                      {"", false},
                                      {"a", false},
                                      {"/", false},
                                      {"/a/", false},
                                      {"/a//", false},
                                      {"/@a", false},
                                      {"/a/@b/c", false},
                                      {"/a//@b", false},
                                      {"/a[b]", false},
                                      {"/a[@b='c'", false},
                                      {"/a[@b=c]", false},
                                      {"/p:a", false},
                                  });
}

}  // namespace
}  // namespace zuksw
