// Where the program looks for the catalogue that belongs to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cli/zuk_program.h"

namespace fs = std::filesystem;
using testing::HasSubstr;

namespace {

class Catalogue : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* folder : {"bin/signatures", "share/zuk/signatures", "named"}) {
            fs::create_directories(zuk_.path(folder));
            zuk_.folder().file(
                std::string(folder) + "/a.xml",
                std::string("<Signatures><Signature guid='g' name='") + folder + "'/></Signatures>");
        }
        fs::copy_file(ZUK_BINARY_DIR "/bin/zuk", zuk_.path("bin/zuk"));
        zuk_.installSoftwareScannerThatFinds("<MatchedSignature guid='g'/>");
    }
    std::string found(const std::string& arguments = "") const {
        const ShellResult result = shell("TEMP=" + zuk_.path("temp") + " " + zuk_.path("bin/zuk") +
                                         " sw --home " + zuk_.path("home") + " " + arguments);
        return result.out + result.err;
    }

    ZukProgram zuk_;
};

}  // namespace

TEST_F(Catalogue, IsTheFolderBesideTheProgram) {
    EXPECT_THAT(found(), HasSubstr("bin/signatures"));
}

TEST_F(Catalogue, IsTheInstallationsOtherwise) {
    fs::remove_all(zuk_.path("bin/signatures"));
    EXPECT_THAT(found(), HasSubstr("share/zuk/signatures"));
}

TEST_F(Catalogue, IsWhatTheOptionNamesWhateverLiesBeside) {
    EXPECT_THAT(found("--catalogue=" + zuk_.path("named")), HasSubstr("named"));
}

TEST_F(Catalogue, AMissingOneIsToldWithTheRemedy) {
    fs::remove_all(zuk_.path("bin/signatures"));
    fs::remove_all(zuk_.path("share"));
    EXPECT_THAT(found(), HasSubstr("is missing: name a directory with --catalogue DIR, or signature files"));
}
