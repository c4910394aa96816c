#include "hw/query.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "tests/support/hardware_fixture.h"

namespace {

constexpr int kMemory = 3;
constexpr char kInstances[] = "ZUK_hw_get_group_instances";
constexpr char kFields[] = "ZUK_hw_get_fields";
constexpr char kValue[] = "ZUK_hw_get_value";
constexpr char kXml[] =
    "<I><Memory><A>1</A><B>2</B><A>3</A><Empty/></Memory><Memory/><Storage><name>x</name></Storage></I>";

class HwQuery : public HardwareFixture {
  protected:
    void SetUp() override { scan(kXml); }

    int instances(int group) { return ZUK_hw_get_group_instances(ctx, group, &count); }
    int fields(int group, int instance) { return ZUK_hw_get_fields(ctx, group, instance, &names, &count); }
    int value(int group, int instance, const wchar_t* field) {
        return ZUK_hw_get_value(ctx, group, instance, field, &text);
    }
    // Switches a group off and keeps the results readable, which a caller cannot do.
    void disable(int group) { ctx->enabled[group] = 0; }

    int count = -7;
    const wchar_t** names = nullptr;
    const wchar_t* text = nullptr;
};

TEST_F(HwQuery, CountsInstances) {
    EXPECT_EQ(0, instances(kMemory));
    EXPECT_EQ(2, count);
    const std::vector<std::string> expected = {"Retrieving data for group [3]", "Size of group [3] = [2]"};
    EXPECT_EQ(expected, log.textsOf(kInstances));
}

TEST_F(HwQuery, GroupThatWasNotReportedHasNoInstances) {
    EXPECT_EQ(0, instances(13));
    EXPECT_EQ(0, count);
}

TEST_F(HwQuery, NumberWithoutAGroupHasNoInstances) {
    EXPECT_EQ(0, instances(17));
    EXPECT_EQ(0, count);
}

TEST_F(HwQuery, InstancesChecksInOrder) {
    EXPECT_EQ(3, ZUK_hw_get_group_instances(nullptr, 0, nullptr));
    EXPECT_EQ(109, ZUK_hw_get_group_instances(ctx, 0, nullptr));
    for (const int group : {0, -1, 52}) EXPECT_EQ(101, instances(group)) << group;
    disable(kMemory);
    EXPECT_EQ(108, instances(kMemory));
    EXPECT_EQ(-7, count);
}

TEST_F(HwQuery, InstancesMessages) {
    instances(52);
    EXPECT_TRUE(log.has(2, kInstances, "Wrong group id [52]"));
    disable(kMemory);
    instances(kMemory);
    EXPECT_TRUE(log.has(0, kInstances, "Wrong group id [3] - group not enabled"));
}

TEST_F(HwQuery, InstancesWithoutAScanAre107BeforeAnyMessage) {
    ctx->returnCode = 1;
    EXPECT_EQ(107, instances(52));
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(HwQuery, ListsFieldsWithDoubles) {
    ASSERT_EQ(0, fields(kMemory, 0));
    ASSERT_EQ(4, count);
    const std::vector<std::wstring> expected = {L"A", L"B", L"A", L"Empty"};
    EXPECT_EQ(expected, std::vector<std::wstring>(names, names + count));
    const std::vector<std::string> texts = {"Retrieving fields  from group [3] instance [0]",
                                            "Retrieved 4 fields"};
    EXPECT_EQ(texts, log.textsOf(kFields));
}

TEST_F(HwQuery, InstanceWithoutFieldsHasANullArray) {
    const wchar_t* some = L"x";
    names = &some;
    EXPECT_EQ(0, fields(kMemory, 1));
    EXPECT_EQ(0, count);
    EXPECT_EQ(nullptr, names);
}

TEST_F(HwQuery, FieldsChecksInOrder) {
    EXPECT_EQ(3, ZUK_hw_get_fields(nullptr, 0, -1, nullptr, nullptr));
    EXPECT_EQ(109, ZUK_hw_get_fields(ctx, 0, -1, nullptr, &count));
    EXPECT_EQ(109, ZUK_hw_get_fields(ctx, 0, -1, &names, nullptr));
    for (const int group : {0, -1, 52}) EXPECT_EQ(101, fields(group, -1)) << group;
    for (const int instance : {-1, 2, 1000}) EXPECT_EQ(105, fields(kMemory, instance)) << instance;
    EXPECT_EQ(105, fields(13, 0));
    disable(kMemory);
    EXPECT_EQ(108, fields(kMemory, -1));
    ctx->returnCode = -1;
    EXPECT_EQ(107, fields(0, -1));
    EXPECT_EQ(-7, count);
    EXPECT_EQ(nullptr, names);
}

TEST_F(HwQuery, FieldsMessages) {
    fields(52, 0);
    EXPECT_TRUE(log.has(0, kFields, "Wrong group [52]"));
    fields(kMemory, 2);
    EXPECT_TRUE(log.has(0, kFields, "Wrong instance [2]"));
    disable(kMemory);
    fields(kMemory, 0);
    EXPECT_TRUE(log.has(0, kFields, "Wrong group [3] - group not enabled"));
    ctx->returnCode = 9;
    fields(kMemory, 0);
    EXPECT_TRUE(log.has(0, kFields, "Wrong returncode of previous scan [9]"));
}

TEST_F(HwQuery, FieldsAreAskedForBeforeNullsAreRefused) {
    ZUK_hw_get_fields(ctx, 3, 0, nullptr, &count);
    EXPECT_TRUE(log.has(2, kFields, "Retrieving fields  from group [3] instance [0]"));
}

TEST_F(HwQuery, ValueIsTheFirstOfThatName) {
    ASSERT_EQ(0, value(kMemory, 0, L"A"));
    EXPECT_STREQ(L"1", text);
    const std::vector<std::string> texts = {"Retrieving field [A] from group [3] instance [0]",
                                            "Filed [A] found with value [1]"};
    EXPECT_EQ(texts, log.textsOf(kValue));
}

TEST_F(HwQuery, ValueMayBeEmpty) {
    ASSERT_EQ(0, value(kMemory, 0, L"Empty"));
    EXPECT_STREQ(L"", text);
}

TEST_F(HwQuery, NamesMatchExactly) {
    for (const wchar_t* name : {L"a", L"AA", L"", L"empty", L" A"}) {
        EXPECT_EQ(106, value(kMemory, 0, name)) << narrow(name);
    }
    EXPECT_EQ(106, value(5, 0, L"Name"));
    EXPECT_EQ(nullptr, text);
}

TEST_F(HwQuery, ValueChecksInOrder) {
    EXPECT_EQ(3, ZUK_hw_get_value(nullptr, 0, -1, nullptr, nullptr));
    EXPECT_EQ(109, ZUK_hw_get_value(ctx, 0, -1, nullptr, &text));
    EXPECT_EQ(109, ZUK_hw_get_value(ctx, 0, -1, L"A", nullptr));
    for (const int group : {0, -1, 52}) EXPECT_EQ(101, value(group, -1, L"A")) << group;
    for (const int instance : {-1, 2, 1000}) EXPECT_EQ(105, value(kMemory, instance, L"X")) << instance;
    EXPECT_EQ(105, value(13, 0, L"A"));
    disable(kMemory);
    EXPECT_EQ(108, value(kMemory, -1, L"A"));
    ctx->returnCode = -1;
    EXPECT_EQ(107, value(0, -1, L"A"));
    EXPECT_EQ(nullptr, text);
}

TEST_F(HwQuery, ValueMessages) {
    value(52, 0, L"A");
    EXPECT_TRUE(log.has(2, kValue, "No such group [52]"));
    value(kMemory, 2, L"A");
    EXPECT_TRUE(log.has(2, kValue, "Wrong instance [2] for group [3]"));
    value(kMemory, 0, L"X");
    EXPECT_TRUE(log.has(1, kValue, "Field not found [X]"));
    disable(kMemory);
    value(kMemory, 0, L"A");
    EXPECT_TRUE(log.has(2, kValue, "Wrong group [3] - group not enabled"));
}

TEST_F(HwQuery, ValueWithoutAScanIsOnlyAskedFor) {
    ctx->returnCode = 1;
    value(kMemory, 0, L"A");
    EXPECT_EQ(std::vector<std::string>{"Retrieving field [A] from group [3] instance [0]"},
              log.textsOf(kValue));
}

TEST_F(HwQuery, ChangedOptionVoidsTheResultsUntilTheNextRun) {
    ZUK_hw_setopt(ctx, kMemory, 1);
    EXPECT_EQ(107, instances(kMemory));
    EXPECT_EQ(107, fields(kMemory, 0));
    EXPECT_EQ(107, value(kMemory, 0, L"A"));
    ASSERT_EQ(0, runWithOutput(kXml));
    EXPECT_EQ(0, instances(kMemory));
}

TEST_F(HwQuery, NothingIsReadableBeforeTheFirstRun) {
    ZUKHwCtx* fresh = nullptr;
    ASSERT_EQ(0, ZUK_hw_init(library, nullptr, nullptr, &fresh));
    ZUK_hw_setopt(fresh, 0, 1);
    EXPECT_EQ(107, ZUK_hw_get_group_instances(fresh, kMemory, &count));
    EXPECT_EQ(107, ZUK_hw_get_fields(fresh, kMemory, 0, &names, &count));
    EXPECT_EQ(107, ZUK_hw_get_value(fresh, kMemory, 0, L"A", &text));
    ZUK_hw_free(fresh);
}

TEST(HwCleanFields, LeavesAnEmptyEntryForEverySlot) {
    std::map<int, std::vector<const wchar_t**>> fields;
    fields[3] = {static_cast<const wchar_t**>(std::malloc(sizeof(const wchar_t*))), nullptr};
    HW_cleanFields(fields);
    EXPECT_EQ(52u, fields.size());
    EXPECT_TRUE(fields[3].empty());
}

}  // namespace
