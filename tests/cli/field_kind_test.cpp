#include "cli/field_kind.h"

#include <gtest/gtest.h>

namespace {

struct KindCase {
    const wchar_t* name;
    const wchar_t* value;
    FieldKind kind;
};

const KindCase kCases[] = {
    {L"TotalBytes", L"0", FieldKind::Number},
    {L"MaxMHz", L"3200", FieldKind::Number},
    {L"UtcOffsetMinutes", L"-60", FieldKind::Number},
    {L"BogoMips", L"4800.00", FieldKind::Number},
    {L"Index", L"12", FieldKind::Number},
    {L"Index", L"012", FieldKind::Text},  // no number has leading zeros
    {L"Index", L"", FieldKind::Text},
    {L"Index", L"-", FieldKind::Text},
    {L"Index", L"1.", FieldKind::Text},
    {L"Index", L".5", FieldKind::Text},
    {L"Index", L"1e5", FieldKind::Text},
    {L"Index", L" 1", FieldKind::Text},
    {L"Index", L"+1", FieldKind::Text},
    {L"Index", L"\u0661", FieldKind::Text},  // a digit, but not one of JSON's
    {L"SerialNumber", L"42", FieldKind::Text},
    {L"VersionId", L"12", FieldKind::Text},
    {L"VendorId", L"8086", FieldKind::Text},  // hexadecimal: its neighbour may be "10de"
    {L"Online", L"true", FieldKind::Flag},
    {L"ReadOnly", L"false", FieldKind::Flag},
    {L"Online", L"yes", FieldKind::Text},
    {L"Online", L"TRUE", FieldKind::Text},
    {L"Label", L"true", FieldKind::Text},  // a volume may be named so
};

}  // namespace

TEST(FieldKind, ComesFromTheNameWhenTheValueFits) {
    for (const KindCase& c : kCases) {
        EXPECT_EQ(c.kind, valueKind(c.name, c.value))
            << testing::PrintToString(c.name) << " = " << testing::PrintToString(c.value);
    }
}
