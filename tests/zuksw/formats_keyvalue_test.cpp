#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

TEST(KeyValue, QuotesAreRemoved) {
    expectValues(ValueFormat::kKeyValue,
                 {
                     {"byte order mark", "\357\273\277v=1", "v", {"1"}},
                     {"bare", "A=1\nVERSION=2.5\n", "VERSION", {"2.5"}},
                     {"double quotes", "VERSION=\"2 5\"", "VERSION", {"2 5"}},
                     {"single quotes", "VERSION='2 \"5\"'", "VERSION", {"2 \"5\""}},
                     {"pieces", "V=a\"b c\"'d'", "V", {"ab cd"}},
                     {"escapes in double quotes", "V=\"\\\"\\$\\`\\\\\\n\"", "V", {"\"$`\\\\n"}},
                     {"none in single quotes", "V='a\\b'", "V", {"a\\b"}},
                     {"an escape outside of quotes", "V=a\\ b", "V", {"a b"}},
                     {"empty", "V=\nW=\"\"", "V", {""}},
                 });
}

TEST(KeyValue, LinesOfAllKinds) {
    expectValues(ValueFormat::kKeyValue,
                 {
                     {"blanks around a line, export, carriage returns", " \texport V=1 \r\n", "V", {"1"}},
                     {"each assignment is a value", "V=1\nV=2\n", "V", {"1", "2"}},
                     {"an equals sign in the value", "V=a=b", "V", {"a=b"}},
                     {"words without quotes", "V=two words\n", "V", {"two words"}},
                     {"comment after the value", "V=1 # one", "V", {"1"}},
                     {"comment instead of a value", "V= # none", "V", {""}},
                     {"no comment inside a word", "V=a#b", "V", {"a#b"}},
                     {"no comment in quotes", "V=\"a #b\"", "V", {"a #b"}},
                     {"a quoted blank at the end stays", "V=\"a \"  ", "V", {"a "}},
                     {"no line end", "V=1", "V", {"1"}},
                     {"empty text", "", "V", {}},
                 });
}

TEST(KeyValue, LinesThatDoNotFitArePassedOver) {
    expectValues(ValueFormat::kKeyValue,
                 {
                     {"a comment", "#V=1\nV=2", "V", {"2"}},
                     {"blanks around the equals sign", "V = 1", "V", {}},
                     {"an open quote", "V=\"1\nV=2", "V", {"2"}},
                     {"no equals sign", "V\n", "V", {}},
                     {"another name", "XV=1\nVX=2", "V", {}},
                     {"bytes that are no text", "\377\376\001\nV=\377\n", "V", {"\377"}},
                 });
}

}  // namespace
}  // namespace zuksw
