#include "sw/signature_file.h"

#include <gtest/gtest.h>

#include "tests/support/software_fixture.h"

namespace {

constexpr char kHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Signatures>\n";
constexpr char kFoot[] = "</Signatures>\n";
constexpr char kHere[] = "SW_CreateSignatures()";

class SwSignatureFile : public SoftwareFixture {
  protected:
    std::string content() const { return readFile(narrow(path)); }

    std::wstring path;
};

TEST_F(SwSignatureFile, One) {
    EXPECT_EQ(0, SW_CreateSignature(ctx, path, L"<S/>"));
    EXPECT_EQ(std::string(kHead) + "<S/>" + kFoot, content());
}

TEST_F(SwSignatureFile, SeveralBackToBackInOrder) {
    const wchar_t* signatures[] = {L"<B/>", L"<A/>\n", L""};
    EXPECT_EQ(0, SW_CreateSignatures(ctx, path, signatures, 3));
    EXPECT_EQ(std::string(kHead) + "<B/><A/>\n" + kFoot, content());
}

TEST_F(SwSignatureFile, OnlyTheFirstCountOnes) {
    const wchar_t* signatures[] = {L"<A/>", L"<B/>"};
    EXPECT_EQ(0, SW_CreateSignatures(ctx, path, signatures, 1));
    EXPECT_EQ(std::string(kHead) + "<A/>" + kFoot, content());
}

TEST_F(SwSignatureFile, NoneWithACountOf0) {
    const wchar_t* signatures[] = {L"<A/>"};
    EXPECT_EQ(0, SW_CreateSignatures(ctx, path, signatures, 0));
    EXPECT_EQ(std::string(kHead) + kFoot, content());
}

TEST_F(SwSignatureFile, NoneWithANullArray) {
    EXPECT_EQ(0, SW_CreateSignatures(ctx, path, nullptr, 7));
    EXPECT_EQ(std::string(kHead) + kFoot, content());
}

TEST_F(SwSignatureFile, TextIsNarrowedAndEndsAtALowByteOfZero) {
    const wchar_t* signatures[] = {L"<A\u00e9\u0100/>", L"<B/>"};
    EXPECT_EQ(0, SW_CreateSignatures(ctx, path, signatures, 2));
    EXPECT_EQ(std::string(kHead) + "<A\xe9<B/>" + kFoot, content());
}

TEST_F(SwSignatureFile, NullEntryStopsTheWritingAndIs202) {
    const wchar_t* signatures[] = {L"<A/>", nullptr, L"<B/>"};
    EXPECT_EQ(202, SW_CreateSignatures(ctx, path, signatures, 3));
    EXPECT_EQ(std::string(kHead) + "<A/>", content());
    EXPECT_TRUE(log.has(0, kHere, "Error during write [" + narrow(path) + "]"));
}

TEST_F(SwSignatureFile, NullSignatureStopsTheWritingAndIs202) {
    EXPECT_EQ(202, SW_CreateSignature(ctx, path, nullptr));
    EXPECT_EQ(kHead, content());
    EXPECT_TRUE(log.has(0, kHere, "Error during write [" + narrow(path) + "]"));
}

TEST_F(SwSignatureFile, NullContextIs3) {
    EXPECT_EQ(3, SW_CreateSignature(nullptr, path, L"<S/>"));
    EXPECT_EQ(3, SW_CreateSignatures(nullptr, path, nullptr, 0));
}

TEST_F(SwSignatureFile, BothAnnounceThemselvesInThePlural) {
    SW_CreateSignature(ctx, path, L"<S/>");
    EXPECT_TRUE(log.has(2, kHere, "Creating a signature file [" + narrow(path) + "]"));
    SW_CreateSignatures(ctx, path, nullptr, 0);
    EXPECT_TRUE(log.has(2, kHere, "Creating a signature file [" + narrow(path) + "]"));
}

TEST_F(SwSignatureFile, EveryFileHasANewName) {
    SW_CreateSignature(ctx, path, L"<S/>");
    SW_CreateSignature(ctx, path, L"<S/>");
    EXPECT_EQ(2u, filesNamed("sig_").size());
}

TEST_F(SwSignatureFile, FileThatCannotBeOpenedIs202AndSilent) {
    std::filesystem::remove_all(narrow(ctx->tmpDir->getBasePath()));
    log.clear();
    EXPECT_EQ(202, SW_CreateSignature(ctx, path, L"<S/>"));
    for (const LogLine& line : log.lines) EXPECT_EQ(2, line.level) << line;
}

TEST_F(SwSignatureFile, FailedNameIsTheAnswerWhenTheFileIsWrittenAllTheSame) {
    loseDirectory();
    path = widen(folder.path() + "/signatures.xml");
    EXPECT_EQ(6, SW_CreateSignature(ctx, path, L"<S/>"));
    EXPECT_EQ(std::string(kHead) + "<S/>" + kFoot, content());
    ctx->tmpDir->initialised = true;
}

TEST_F(SwSignatureFile, FullDiskIs202WithAMessage) {
    loseDirectory();
    path = L"/dev/full";
    EXPECT_EQ(202, SW_CreateSignature(ctx, path, L"<S/>"));
    EXPECT_TRUE(log.has(0, kHere, "Error during write [/dev/full]"));
    ctx->tmpDir->initialised = true;
}

}  // namespace
