#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

TEST(Properties, Separators) {
    expectValues(ValueFormat::kProperties,
                 {
                     {"byte order mark", "\357\273\277v=1", "v", {"1"}},
                     {"equals", "a=1", "a", {"1"}},
                     {"colon", "a:1", "a", {"1"}},
                     {"blank", "a 1", "a", {"1"}},
                     {"blanks around it", "  a \t=  1", "a", {"1"}},
                     {"only the first separator counts", "a==1", "a", {"=1"}},
                     {"a blank, then a colon", "a : 1", "a", {"1"}},
                     {"none", "a", "a", {""}},
                     {"blanks at the end stay", "a=1 ", "a", {"1 "}},
                     {"each one is a value", "a=1\nb=2\r\na=3\ra=4", "a", {"1", "3", "4"}},
                 });
}

TEST(Properties, Escapes) {
    expectValues(ValueFormat::kProperties,
                 {
                     {"separators in the key", "a\\ \\=\\:b=1", "a =:b", {"1"}},
                     {"the usual ones", "a=\\t\\n\\r\\f\\x\\\\", "a", {"\t\n\r\fx\\"}},
                     {"a character by number", "a=\\u00e9", "a", {"\303\251"}},
                     {"a surrogate pair", "a=\\ud83d\\ude00", "a", {"\360\237\230\200"}},
                     {"half a pair", "a=\\ud83dx", "a", {"\357\277\275x"}},
                     {"in the key", "\\u0061=1", "a", {"1"}},
                 });
}

TEST(Properties, LinesThatGoOn) {
    expectValues(
        ValueFormat::kProperties,
        {
            {"joined without the blanks that begin the next", "a=1,\\\n   2,\\\r\n\t3", "a", {"1,2,3"}},
            {"an even number of backslashes ends the line", "a=1\\\\\nb=2", "a", {"1\\"}},
            {"a comment does not go on", "# x \\\na=1", "a", {"1"}},
            {"at the end of the text", "a=1\\", "a", {"1"}},
        });
}

TEST(Properties, WhatIsPassedOver) {
    expectValues(ValueFormat::kProperties,
                 {
                     {"comments", "#a=1\n ! a=2\na=3", "a", {"3"}},
                     {"a number that lacks digits", "a=\\u00g1\na=\\u12\na=2", "a", {"2"}},
                     {"empty text", "", "a", {}},
                     {"empty lines", "\n\n \n", "a", {}},
                 });
}

}  // namespace
}  // namespace zuksw
