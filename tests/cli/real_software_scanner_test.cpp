// The command with the real scanner, over a small tree that stands for the machine.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

namespace fs = std::filesystem;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr char kSignature[] = R"xml(<Signatures>
  <Signature guid="g" name="Demo" place="${f.path}">
    <Input name="wanted" default="Demo"/>
    <Detect><File as="f" name="demo"/><Content of="f" match="${wanted} (?P&lt;version&gt;\d+)"/></Detect>
    <Report><Variable name="version" value="${version}"/><Variable name="path" value="${f.path}"/>
      <Variable name="package" value="${f.package}"/></Report>
  </Signature>
</Signatures>)xml";

constexpr char kInvalid[] =
    "<Signatures>\n<Signature guid='bad' name='Bad'><Detect><File "
    "nme='x' name='x'/></Detect></Signature></Signatures>";

class RealSoftwareScanner : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* folder : {"tree/usr/bin", "tree/opt", "tree/srv", "tree/var/lib/dpkg/info"}) {
            fs::create_directories(zuk_.path(folder));
        }
        zuk_.folder().file("tree/usr/bin/demo", "Demo 12 ");
        zuk_.folder().file("tree/opt/demo", "Demo 7 ");
        zuk_.folder().file(
            "tree/var/lib/dpkg/status",
            "Package: demo-core\nStatus: install ok installed\nArchitecture: all\nVersion: 12-1\n");
        zuk_.folder().file("tree/var/lib/dpkg/info/demo-core.list", "/.\n/usr\n/usr/bin\n/usr/bin/demo\n");
    }
    ShellResult run(const std::string& arguments) const {
        return zuk_.run("sw --plugin system.Prefix=" + zuk_.path("tree") + " " + arguments);
    }
    std::string file(const std::string& content, const std::string& name = "mine.xml") const {
        return zuk_.folder().file(name, content);
    }

    ZukProgram zuk_;
};

}  // namespace

TEST_F(RealSoftwareScanner, FindsVersionPlaceAndPackage) {
    const ShellResult result = run(file(kSignature));
    EXPECT_EQ(0, result.status) << result.err;
    EXPECT_EQ(
        "Software (2)\n"
        "  Name  Version  Place          Package\n"
        "  Demo  7        /opt/demo      -\n"
        "  Demo  12       /usr/bin/demo  demo-core\n",
        result.out);
    EXPECT_TRUE(zuk_.leftNothingBehind());
}

TEST_F(RealSoftwareScanner, FindsTheSameWithSeveralFiles) {
    EXPECT_EQ(run(file(kSignature)).out, run(file(kSignature) + " " + file("<Signatures/>", "none.xml")).out);
}

TEST_F(RealSoftwareScanner, TakesAVariableForOneSignature) {
    zuk_.folder().file("tree/srv/demo", "Other 3 ");
    EXPECT_THAT(run("--set wanted=Other@g " + file(kSignature)).out,
                AllOf(HasSubstr("Software (1)\n"), HasSubstr("/srv/demo")));
}

TEST_F(RealSoftwareScanner, SkipsAnInvalidSignatureWithAWarningThatHelps) {
    const ShellResult alone = run(file(kInvalid));
    EXPECT_EQ(0, alone.status);
    EXPECT_THAT(alone.err, HasSubstr("  signature-invalid (1)\n    'Bad': line 2, column "));
    EXPECT_THAT(alone.err, HasSubstr("did you mean 'name'?"));
    EXPECT_THAT(run(file(kSignature) + " " + file(kInvalid, "bad.xml")).err,
                HasSubstr("\n    'Bad': bad.xml: <File>: the attribute 'nme' is unknown here"));
}

TEST_F(RealSoftwareScanner, RejectsAFileWithTheReason) {
    const ShellResult result = run(file("<Signatures><"));
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, HasSubstr("mine.xml: line 1, column 13: "));
    EXPECT_THAT(result.err, HasSubstr("zuksw --check -i "));
}

TEST_F(RealSoftwareScanner, RefusesASettingWithTheReason) {
    const ShellResult result = zuk_.run("sw --plugin system.Prefix=/nonexistent " + file(kSignature));
    EXPECT_EQ(1, result.status);
    EXPECT_THAT(result.err, HasSubstr("refuses a setting: system/Prefix: /nonexistent is no directory"));
}

TEST_F(RealSoftwareScanner, TheShippedCatalogueHasNoMistakes) {
    const ShellResult result = run("");
    EXPECT_EQ(0, result.status);
    EXPECT_THAT(result.err, Not(HasSubstr("signature-invalid")));
}
