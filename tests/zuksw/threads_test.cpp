// What several threads do at the same time: they read pieces of the signature file, walk the directories and
// evaluate. A build with ThreadSanitizer watches them, in the program that the tests start, too.

#include "tests/zuksw/archive_builder.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class ScanThreads : public ScanTest {
  protected:
    static std::string numbered(int number, const std::string& conditions, const std::string& report = "") {
        const std::string guid = "g" + std::to_string(number);
        return "<Signature guid=\"" + guid + "\" name=\"" + guid + "\" place=\"${host.name}\"><Detect>" +
               conditions + "</Detect><Report>" + report + "</Report></Signature>\n";
    }

    // The scan on one thread, after scans on many have been compared with it.
    ScanResult scanOnMany(const std::string& signatures) {
        ScanResult one = scan(signatures, {{"limits/Threads", "1"}});
        for (const char* threads : {"2", "8"}) {
            const ScanResult many = scan(signatures, {{"limits/Threads", threads}});
            EXPECT_EQ(one.status, many.status) << many.messages;
            EXPECT_EQ(one.output, many.output) << threads;
            EXPECT_EQ(one.warnings, many.warnings) << threads;
        }
        return one;
    }
};

TEST_F(ScanThreads, WalkManyDirectories) {
    for (int i = 0; i < 400; ++i) {
        const std::string at = std::to_string(i);
        file("/d" + std::to_string(i % 20) + "/e" + std::to_string(i % 7) + "/f" + at + "/x" + at, at);
    }
    const ScanResult result =
        scanOnMany(signature("<File as=\"f\" name=\"x*\" min=\"400\" max=\"400\"/>", {}, "per=\"machine\"") +
                   numbered(1, "<File name=\"f*\" type=\"directory\" min=\"400\"/>"));
    EXPECT_EQ(2U, result.matches.size()) << result.messages;
}

TEST_F(ScanThreads, LookIntoOneFile) {
    file("/f", "\177ELF" + std::string(100'000, '.') + "1234567890");
    std::string signatures;
    for (int i = 0; i < 40; ++i) {
        signatures += numbered(i, "<File as=\"f\" path=\"/f\" format=\"elf\"/><Content of=\"f\" match=\"" +
                                      std::to_string(i % 10) + "(?P&lt;v&gt;.?)\"/>" +
                                      "<Set name=\"s\" value=\"${f.sha256}${f.elf.class:-}\"/>");
    }
    EXPECT_EQ(40U, scanOnMany(signatures).matches.size());
}

TEST_F(ScanThreads, LookIntoTheFilesOfOneSignature) {
    for (int i = 0; i < 100; ++i) file("/f" + std::to_string(i), "v" + std::to_string(i));
    const ScanResult result =
        scanOnMany(signature("<File as=\"f\" name=\"f*\"/><Content of=\"f\" match=\"v(?P&lt;v&gt;\\d+)\"/>"
                             "<Not><File near=\"f\" path=\"g${v}\"/></Not>",
                             {"v"}, "place=\"${f.path}\"") +
                   numbered(1, "<Matched guid=\"g\" as=\"m\" min=\"100\"/>"));
    EXPECT_EQ(101U, result.matches.size());
}

TEST_F(ScanThreads, AskForWhatIsReadOnce) {
    file("/var/lib/dpkg/status",
         "Package: p\nStatus: install ok installed\nArchitecture: all\nVersion: 1\n\n");
    file("/var/lib/dpkg/info/p.list", "/f\n");
    file("/f", packArchive(zipForm, {{"member", "v"}}));
    std::string signatures;
    for (int i = 0; i < 40; ++i) {
        signatures += numbered(i,
                               "<Package name=\"p\" ge=\"1\"/><File as=\"f\" name=\"f\" owned=\"yes\"/>"
                               "<Member of=\"f\" path=\"member\" as=\"m\"/><Content of=\"m\" text=\"v\"/>"
                               "<Not><Tag name=\"*\"/></Not><Not><System key=\"os.id\"/></Not>");
    }
    EXPECT_EQ(40U, scanOnMany(signatures).matches.size());
}

// A file large enough to be read in pieces.
class SignatureThreads : public ScanThreads {
  protected:
    static std::string many(int count) {
        std::string signatures;
        for (int i = 0; i < count; ++i) {
            const bool wrong = i % 100 == 1;
            signatures += numbered(i, std::string(wrong ? "<Fil" : "<File") + " name=\"f" +
                                          std::to_string(i) + "\"/>" + std::string(3000, ' '));
        }
        return signatures;
    }
};

TEST_F(SignatureThreads, ReadPiecesOfAFile) {
    for (int i = 0; i < 900; i += 99) file("/f" + std::to_string(i));
    const ScanResult result = scanOnMany(many(900));
    EXPECT_EQ(10U, result.matches.size());
    EXPECT_TRUE(result.has("signature-invalid"));
}

TEST_F(SignatureThreads, ReadAsAWholeWhatLooksLikeSignaturesWhereThereAreNone) {
    const ScanResult result =
        scanOnMany(numbered(1, "<Test value=\"1\" eq=\"1\"/>") + "<!--" + many(900) + "-->");
    EXPECT_EQ(1U, result.matches.size());
}

TEST_F(SignatureThreads, RefuseTheWholeFileForTheSameReason) {
    const std::string wrong = many(300) + "<Signature guid=\"x\"></Signatur>" + many(600);
    const ScanResult one = scan(wrong, {{"limits/Threads", "1"}});
    EXPECT_EQ(3, one.status);
    EXPECT_EQ(one.messages, scan(wrong, {{"limits/Threads", "4"}}).messages);
}

}  // namespace
