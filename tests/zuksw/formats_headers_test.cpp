#include "tests/zuksw/value_cases.h"

namespace zuksw {
namespace {

TEST(Headers, NamesAndValues) {
    expectValues(ValueFormat::kHeaders,
                 {
                     {"byte order mark", "\357\273\277v: 1", "v", {"1"}},
                     {"simple", "Name: x\nVersion: 1.2\n", "Version", {"1.2"}},
                     {"without case", "VERSION: 1.2", "version", {"1.2"}},
                     {"without a blank", "Version:1.2", "Version", {"1.2"}},
                     {"empty", "Version:\n", "Version", {""}},
                     {"each paragraph", "Version: 1\n\nVersion: 2\n", "Version", {"1", "2"}},
                     {"carriage returns", "Version: 1\r\nA: 2\r\n", "Version", {"1"}},
                     {"lines that do not fit", "foo\nVersion: 1\n", "Version", {"1"}},
                     {"empty text", "", "Version", {}},
                 });
}

TEST(Headers, ContinuationLines) {
    expectValues(ValueFormat::kHeaders,
                 {
                     {"joined by line ends", "Description: a\n b\n  c\n", "Description", {"a\nb\n c"}},
                     {"pieces of a manifest are joined as they are",
                      "Manifest-Version: 1.0\r\nTitle: one two \r\n three\r\n four\r\n",
                      "Title",
                      {"one two threefour"}},
                 });
}

TEST(Headers, AfterTheHeadersOfMetadataComesFreeText) {
    expectValues(ValueFormat::kHeaders, {
                                            {"the body does not count",
                                             "Metadata-Version: 2.1\nVersion: 1\n\nVersion: 2\n",
                                             "Version",
                                             {"1"}},
                                        });
}

}  // namespace
}  // namespace zuksw
