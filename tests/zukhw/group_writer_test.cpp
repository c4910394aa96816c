#include "scanners/zukhw/group_writer.h"

#include <gtest/gtest.h>

namespace {

class Writer : public testing::Test {
  protected:
    std::string xml() {
        writer.finish();
        std::string all;
        for (const std::string_view part : writer.parts()) all += part;
        return all;
    }

    Deadline deadline{std::chrono::hours(1)};
    GroupWriter writer{"G", deadline};
};

TEST_F(Writer, WritesEveryKindOfField) {
    writer.beginInstance();
    writer.text("Text", " a  <b> ");
    writer.number("Number", 0);
    writer.number("Negative", -60);
    writer.boolean("Yes", true);
    writer.boolean("No", false);
    writer.list("List", {"one", " ", "two "});
    EXPECT_EQ(
        "<G><Text>a &lt;b&gt;</Text><Number>0</Number><Negative>-60</Negative><Yes>true</Yes><No>false</No>"
        "<List>one; two</List></G>",
        xml());
}

TEST_F(Writer, LeavesOutWhatIsUnknown) {
    writer.beginInstance();
    writer.text("Empty", " \t");
    writer.hardware("Placeholder", "  Default  String ");
    writer.number("None", std::optional<unsigned>());
    writer.boolean("None", std::optional<bool>());
    writer.list("None", {});
    writer.number("Known", 1U);
    EXPECT_EQ("<G><Known>1</Known></G>", xml());
}

TEST_F(Writer, LeavesOutAnInstanceWithoutFields) {
    writer.beginInstance();
    writer.beginInstance();
    writer.number("A", 1);
    writer.beginInstance();
    EXPECT_EQ("<G><A>1</A></G>", xml());
    EXPECT_EQ(1U, writer.instances());
}

TEST_F(Writer, KeepsFinishedInstancesOfACutGroup) {
    writer.beginInstance();
    writer.number("A", 1);
    writer.beginInstance();
    writer.number("A", 2);
    writer.dropUnfinished();
    EXPECT_EQ("<G><A>1</A></G>", xml());
}

TEST_F(Writer, KeepsLongGroupsWhole) {
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        writer.beginInstance();
        writer.number("A", i);
        expected += "<G><A>" + std::to_string(i) + "</A></G>";
    }
    EXPECT_EQ(expected, xml());
    EXPECT_LT(1U, writer.parts().size());
}

TEST_F(Writer, PutsInstancesIntoAnotherOrder) {
    for (int i = 0; i < 4; ++i) {
        writer.beginInstance();
        writer.number("A", i);
    }
    writer.finish();
    writer.reorder(1, {2, 0, 1});
    EXPECT_EQ("<G><A>0</A></G><G><A>3</A></G><G><A>1</A></G><G><A>2</A></G>", xml());
}

TEST_F(Writer, PutsInstancesOfManyBlocksIntoAnotherOrder) {
    constexpr std::size_t kMany = 5000;
    std::vector<std::size_t> backwards;
    std::string expected;
    for (std::size_t i = 0; i < kMany; ++i) {
        writer.beginInstance();
        writer.number("A", i);
        backwards.push_back(kMany - 1 - i);
        expected += "<G><A>" + std::to_string(backwards.back()) + "</A></G>";
    }
    writer.finish();
    writer.reorder(0, backwards);
    EXPECT_EQ(expected, xml());
}

TEST_F(Writer, JoinsPartsThatLieSideBySide) {
    for (int i = 0; i < 4; ++i) {
        writer.beginInstance();
        writer.number("A", i);
    }
    writer.finish();
    EXPECT_EQ(1U, writer.parts().size());
    writer.reorder(0, {2, 3, 0, 1});
    EXPECT_EQ(2U, writer.parts().size());
}

TEST(GroupWriter, CutsAGroupWhoseTimeIsUp) {
    Deadline deadline{std::chrono::hours(1)};
    deadline.startGroup(std::chrono::seconds(-1));
    GroupWriter writer("G", deadline);
    EXPECT_THROW(writer.beginInstance(), GroupTimeout);
    deadline.lift();
    EXPECT_NO_THROW(writer.beginInstance());
}

}  // namespace
