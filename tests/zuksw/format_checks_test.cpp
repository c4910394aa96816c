// Conditions that look into formats: values of text files, members of archives, ELF headers, tags.

#include <cctype>
#include <filesystem>

#include "tests/support/shell.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class FormatChecksTest : public ScanTest {
  protected:
    std::string show(const std::string& conditions, const std::string& text, const Settings& settings = {}) {
        const ScanResult result =
            scan("<Signature guid=\"g\" name=\"n\"><Detect>" + conditions +
                     "</Detect><Report><Variable name=\"t\" value=\"" + text + "\"/></Report></Signature>",
                 settings);
        return result.has("signature-invalid") ? result.textOf("signature-invalid") : result.values("t");
    }
    // Takes values from /f.
    std::string value(const std::string& attributes) {
        return show("<File as=\"f\" path=\"/f\"/><Value of=\"f\" set=\"v\" " + attributes + "/>", "${v}");
    }
    // Packs the files that are below the tree's /m into an archive at `path`; they go.
    void pack(const std::string& path) {
        const ShellResult done =
            shell("cd " + quoted(treePath("/m")) + " && tar czf " + quoted(treePath(path)) + " *");
        ASSERT_EQ(0, done.status) << done.err;
        std::filesystem::remove_all(treePath("/m"));
    }
};

TEST_F(FormatChecksTest, TakesValuesFromTextFiles) {
    file("/f", "A=\"x y\"\nB=2\n[S]\nk=3\n");
    EXPECT_EQ("x y", value("format=\"keyvalue\" key=\"A\""));
    EXPECT_EQ("3", value("format=\"ini\" section=\"S\" key=\"k\""));
    EXPECT_EQ("", value("format=\"ini\" section=\"T\" key=\"k\""));
    EXPECT_EQ("2", value("format=\"keyvalue\" key=\"B\" ge=\"1.5\""));
    EXPECT_EQ("", value("format=\"keyvalue\" key=\"B\" ge=\"2.5\""));
    file("/f", "{\"a\":[{\"v\":1},{\"v\":2}]}");
    EXPECT_EQ("1 2", value("format=\"json\" key=\"/a/*/v\""));
    file("/f", "<a><b x='1'>t</b></a>");
    EXPECT_EQ("t", value("format=\"xml\" key=\"/a/b[@x='1']\""));
}

TEST_F(FormatChecksTest, AnEmptyFileHasNoValues) {
    file("/f");
    for (const char* format : {"keyvalue", "properties", "headers", "ini", "yaml"}) {
        const std::string text =
            std::string("<File as=\"f\" path=\"/f\"/><Value of=\"f\" format=\"") + format + "\" key=\"/a\"/>";
        EXPECT_EQ("no", truth(text)) << format;
    }
}

TEST_F(FormatChecksTest, ValuesOfFilesBeyondTheLimitAreUndecided) {
    file("/f", "A=1\n");
    const std::string text = "<File as=\"f\" path=\"/f\"/><Value of=\"f\" format=\"keyvalue\" key=\"A\"/>";
    EXPECT_EQ("yes", truth(text, {{"content/MaxFileSize", "4"}}));
    EXPECT_EQ("unknown", truth(text, {{"content/MaxFileSize", "3"}}));
}

TEST_F(FormatChecksTest, MalformedTextsAreUndecided) {
    file("/f", "{\"a\":");
    const std::string text = "<File as=\"f\" path=\"/f\"/><Value of=\"f\" format=\"json\" key=\"/a\"/>";
    EXPECT_EQ("unknown", truth(text));
    EXPECT_TRUE(scan(signature(text)).has("bad-format"));
    file("/f", std::string(17 << 20, ' '));
    EXPECT_EQ("unknown", truth(text));
}

TEST_F(FormatChecksTest, ReadsMembersOfArchives) {
    file("/m/d/info.properties", "number=9.8.7\n");
    file("/m/other", "x");
    pack("/a.tgz");
    const std::string member =
        "<File as=\"a\" path=\"/a.tgz\"/><Member of=\"a\" path=\"d/*.properties\" as=\"m\"/>";
    EXPECT_EQ("9.8.7",
              show(member + "<Value of=\"m\" format=\"properties\" key=\"number\" set=\"v\"/>", "${v}"));
    EXPECT_EQ("/a.tgz!/d/info.properties 13", show(member, "${m.path} ${m.size}"));
    EXPECT_EQ("yes", truth(member + "<Content of=\"m\" match=\"9\\.8\"/>"));
    EXPECT_EQ("no", truth("<File as=\"a\" path=\"/a.tgz\"/><Member of=\"a\" path=\"none\" as=\"m\"/>"));
    EXPECT_EQ("unknown", truth(member, {{"archive/Enabled", "no"}}));
    EXPECT_EQ("unknown", truth(member, {{"archive/MaxMembers", "1"}}));
}

TEST_F(FormatChecksTest, NestsArchivesUpToTheLimit) {
    file("/m/x", "deep");
    pack("/1.tgz");
    for (int i = 2; i <= 3; ++i) {
        directory("/m");
        std::filesystem::rename(treePath("/" + std::to_string(i - 1) + ".tgz"), treePath("/m/inner.tgz"));
        pack("/" + std::to_string(i) + ".tgz");
    }
    const std::string two =
        "<File as=\"a\" path=\"/3.tgz\"/><Member of=\"a\" path=\"inner.tgz\" as=\"b\"/>"
        "<Member of=\"b\" path=\"inner.tgz\" as=\"c\"/>";
    EXPECT_EQ("yes", truth(two));
    EXPECT_EQ("unknown", truth(two + "<Member of=\"c\" path=\"x\" as=\"d\"/>"));
    EXPECT_EQ("yes", truth(two + "<Member of=\"c\" path=\"x\" as=\"d\"/>", {{"archive/MaxDepth", "3"}}));
}

TEST_F(FormatChecksTest, AFileThatIsNoArchiveHasNoMembers) {
    file("/a.zip", "text");
    EXPECT_EQ("no", truth("<File as=\"a\" path=\"/a.zip\"/><Member of=\"a\" path=\"**\" as=\"m\"/>"));
}

TEST_F(FormatChecksTest, ReadsElfHeaders) {
    std::filesystem::copy_file(program(), treePath("/zuksw"));
    file("/text", "#!/bin/sh\n");
    const std::string elf = "<File as=\"f\" path=\"/zuksw\"/><Elf of=\"f\" ";
    EXPECT_EQ("yes", truth(elf + "kind=\"program\" needed=\"libre2.so.*\" section=\".text\"/>"));
    EXPECT_EQ("no", truth(elf + "kind=\"library\"/>"));
    EXPECT_EQ("no", truth(elf + "needed=\"libnothing*\"/>"));
    EXPECT_EQ("no", truth(elf + "goPath=\"*\"/>"));
    EXPECT_EQ("no", truth("<File as=\"f\" path=\"/text\"/><Elf of=\"f\"/>"));
    EXPECT_EQ("yes",
              truth("<File as=\"f\" path=\"/zuksw\"/><Test value=\"${f.elf.machine}\" eq=\"${host.machine}\" "
                    "scheme=\"text\"/><Test value=\"${f.elf.soname:-none}\" eq=\"none\" scheme=\"text\"/>"));
    EXPECT_EQ("yes",
              truth("<File as=\"f\" path=\"/zuksw\"/><Content of=\"f\" section=\".interp\" match=\"ld\"/>"));
    EXPECT_EQ("no",
              truth("<File as=\"f\" path=\"/zuksw\"/><Content of=\"f\" section=\".none\" match=\".\"/>"));
}

TEST_F(FormatChecksTest, ABuildIdIsFoundInEitherCase) {
    std::filesystem::copy_file(program(), treePath("/zuksw"));
    std::string id = show("<File as=\"f\" path=\"/zuksw\"/>", "${f.elf.buildId}");
    if (id.empty()) GTEST_SKIP() << "the linker writes no build ids here";
    const auto hasId = [&] {
        return truth("<File as=\"f\" path=\"/zuksw\"/><Elf of=\"f\" buildId=\"" + id + "\"/>");
    };
    EXPECT_EQ("yes", hasId());
    for (char& c : id) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    EXPECT_EQ("yes", hasId());
    id.back() = id.back() == '0' ? '1' : '0';
    EXPECT_EQ("no", hasId());
}

TEST_F(FormatChecksTest, FindsTheLibrariesOfAProgram) {
    std::filesystem::copy_file(program(), treePath("/zuksw"));
    const std::string library =
        "<File as=\"f\" path=\"/zuksw\"/><Library of=\"f\" name=\"libre2.so.*\" as=\"l\"/>";
    EXPECT_EQ("unknown", truth(library));
    directory("/opt/lib");
    std::filesystem::copy_file(program(), treePath("/opt/lib/real"));
    link("real", "/opt/lib/libre2.so.9");
    file("/etc/ld.so.conf", "include\t/etc/none/*.conf ld.so.conf.d/*.conf\n");
    file("/etc/ld.so.conf.d/opt.conf", "# ours\n/opt/lib\n");
    EXPECT_EQ("/opt/lib/real", show(library, "${l.path}"));
    EXPECT_EQ("no", truth("<File as=\"f\" path=\"/zuksw\"/><Library of=\"f\" name=\"libother*\" as=\"l\"/>"));
}

TEST_F(FormatChecksTest, ListsOfDirectoriesThatIncludeThemselvesEnd) {
    std::filesystem::copy_file(program(), treePath("/zuksw"));
    std::string includes;
    for (int i = 0; i < 50; ++i) includes += "include /etc/c/*.conf\n";
    file("/etc/ld.so.conf", includes);
    for (int i = 0; i < 50; ++i) file("/etc/c/" + std::to_string(i) + ".conf", includes);
    EXPECT_EQ("unknown",
              truth("<File as=\"f\" path=\"/zuksw\"/><Library of=\"f\" name=\"libre2.so.*\" as=\"l\"/>"));
}

TEST_F(FormatChecksTest, AMalformedGlobForTagsIsAMistake) {
    EXPECT_TRUE(scan(signature("<Tag name=\"[a\"/>")).has("signature-invalid"));
}

TEST_F(FormatChecksTest, ReadsTags) {
    const std::string tag =
        "<SoftwareIdentity xmlns=\"http://standards.iso.org/iso/19770/-2/2015/schema.xsd\" "
        "name=\"Tool\" tagId=\"t1\" version=\"1.5\"";
    const std::string entity =
        "><Entity name=\"E\" regid=\"e.example\" role=\"tagCreator\"/></SoftwareIdentity>";
    file("/usr/share/swidtag/a.swidtag", tag + entity);
    file("/usr/share/swidtag/b.swidtag", tag + " patch=\"true\"" + entity);
    EXPECT_EQ("1.5 t1 e.example /usr/share/swidtag/a.swidtag",
              show("<Tag name=\"T*\" ge=\"1.4\" as=\"t\"/>", "${t.version} ${t.tagId} ${t.regid} ${t.path}"));
    EXPECT_EQ("no", truth("<Tag tagId=\"t2\"/>"));
    EXPECT_EQ("yes", truth("<Tag ge=\"1.4\"/>"));
    EXPECT_EQ("no", truth("<Tag gt=\"1.5\"/>"));
    file("/usr/share/swidtag/c.swidtag", "<Soft");
    EXPECT_EQ("unknown", truth("<Tag tagId=\"t2\"/>"));
    EXPECT_EQ("yes", truth("<Tag regid=\"e.example\"/>"));
}

}  // namespace
