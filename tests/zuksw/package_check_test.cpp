#include "tests/zuksw/scan_fixture.h"

namespace {

const char kStatus[] =
    "Package: libssl3\nStatus: install ok installed\nArchitecture: amd64\nSource: openssl\nVersion: "
    "3.0.19-1~deb12u2\n\n"
    "Package: libssl3\nStatus: install ok installed\nArchitecture: i386\nSource: openssl\nVersion: "
    "3.0.19-1~deb12u2\n\n"
    "Package: gone\nStatus: deinstall ok config-files\nArchitecture: amd64\nVersion: 1.0-1\n\n"
    "Package: half\nStatus: install ok half-installed\nArchitecture: amd64\nVersion: 2.0-1\n\n";

class PackageCheckTest : public ScanTest {
  protected:
    PackageCheckTest() {
        file("/var/lib/dpkg/status", kStatus);
        file("/var/lib/dpkg/info/libssl3:amd64.list", "/.\n/usr\n/usr/lib\n/usr/lib/libssl.so.3\n");
        file("/var/lib/dpkg/info/libssl3:amd64.md5sums", "");
        file("/etc/os-release", "ID=debian\n");
        file("/usr/lib/libssl.so.3", "1");
        file("/opt/libssl.so.3", "1");
    }
    // The text of a template for each package that the condition, which binds p, finds.
    std::string show(const std::string& conditions, const std::string& text) {
        return scan("<Signature guid=\"g\" name=\"n\"><Detect>" + conditions +
                    "</Detect><Report><Variable name=\"t\" value=\"" + text + "\"/></Report></Signature>")
            .values("t");
    }
};

TEST_F(PackageCheckTest, FindsPackagesByNameAndVersion) {
    EXPECT_EQ("amd64 i386", show("<Package name=\"libssl3\" as=\"p\"/>", "${p.arch}"));
    EXPECT_EQ("i386", show("<Package name=\"lib*\" arch=\"i386\" as=\"p\"/>", "${p.arch}"));
    EXPECT_EQ("ssl3", show("<Package nameMatch=\"lib(?P&lt;n&gt;.*)\"/>", "${n}"));
    EXPECT_EQ("yes",
              truth("<Package name=\"libssl3\" ge=\"3.0.0\" lt=\"3.0.19-1\"/>"));  // '~' is before nothing
    EXPECT_EQ("no", truth("<Package name=\"libssl3\" ge=\"3.0.20\"/>"));
    EXPECT_EQ("yes", truth("<Package source=\"openssl\"/>"));
    EXPECT_EQ("no", truth("<Package name=\"libssl1.1\"/>"));
    EXPECT_EQ("no", truth("<Package name=\"libssl3\" manager=\"rpm\"/>"));
    EXPECT_EQ("yes", truth("<Package name=\"libssl3\" manager=\"rpm,dpkg\"/>"));
    EXPECT_EQ("no", truth("<Package name=\"libssl3\"/>", {{"packages/Managers", "rpm"}}));
}

TEST_F(PackageCheckTest, ANameIsNotNeeded) {
    EXPECT_EQ("amd64 i386", show("<Package as=\"p\"/>", "${p.arch}"));
    EXPECT_EQ("i386", show("<Package manager=\"dpkg\" arch=\"i386\" as=\"p\"/>", "${p.arch}"));
    EXPECT_EQ("no", truth("<Package manager=\"rpm\"/>"));
}

TEST_F(PackageCheckTest, ManagersAddUpWhateverTheirOrder) {
    file("/opt/site-packages/p.dist-info/METADATA", "Name: p\nVersion: 1\n\n");
    for (const char* managers : {"pip any", "any pip", "any,dpkg,pip,any"}) {
        const std::string manager = std::string("<Package manager=\"") + managers + "\" ";
        EXPECT_EQ("yes", truth(manager + "name=\"p\"/>")) << managers;
        EXPECT_EQ("yes", truth(manager + "name=\"libssl3\" max=\"2\"/>")) << managers;
    }
}

TEST_F(PackageCheckTest, MalformedGlobsAreMistakes) {
    for (const char* attribute : {"name", "source", "arch"}) {
        const std::string condition = "<Package " + std::string(attribute) + "=\"[a\"/>";
        EXPECT_TRUE(scan(signature(condition)).has("signature-invalid")) << attribute;
    }
}

TEST_F(PackageCheckTest, APackageWithoutVersionHasNoneInItsUrl) {
    file("/var/lib/dpkg/status", "Package: p\nStatus: purge ok not-installed\nArchitecture: all\n\n");
    EXPECT_EQ("pkg:deb/debian/p?arch=all", show("<Package name=\"p\" state=\"any\" as=\"p\"/>", "${p.purl}"));
}

TEST_F(PackageCheckTest, LooksAtTheState) {
    EXPECT_EQ("no", truth("<Package name=\"gone\"/>"));
    EXPECT_EQ("yes", truth("<Package name=\"gone\" state=\"any\"/>"));
    EXPECT_EQ("yes", truth("<Package name=\"half\"/>"));
    EXPECT_EQ("no", truth("<Package name=\"half\" state=\"installed\"/>"));
}

TEST_F(PackageCheckTest, HandsOutProperties) {
    EXPECT_EQ("3.0.19|1~deb12u2|openssl|dpkg|installed",
              show("<Package name=\"libssl3\" arch=\"amd64\" as=\"p\"/>",
                   "${p.upstream}|${p.revision}|${p.source}|${p.manager}|${p.state}"));
    EXPECT_EQ("pkg:deb/debian/libssl3@3.0.19-1~deb12u2?arch=amd64",
              show("<Package name=\"libssl3\" arch=\"amd64\" as=\"p\"/>", "${p.purl}"));
}

TEST_F(PackageCheckTest, KnowsWhoOwnsAFile) {
    const std::string find = "<File as=\"f\" name=\"libssl.so.3\" ";
    EXPECT_EQ("/usr/lib/libssl.so.3=libssl3", show(find + "owned=\"yes\"/>", "${f.path}=${f.package}"));
    EXPECT_EQ("/opt/libssl.so.3=none", show(find + "owned=\"no\"/>", "${f.path}=${f.package:-none}"));
}

TEST_F(PackageCheckTest, WhoOwnsAFileIsOpenWhereTheListIsDamaged) {
    file("/usr/bin/tool");
    file("/lib/apk/db/installed", "P:a\nV:1\nF:usr/bin\nR:tool\n\nP:b\nV:2\nF:opt");
    EXPECT_EQ("yes", truth("<File name=\"tool\" owned=\"yes\"/>"));
    EXPECT_EQ("unknown", truth("<File path=\"/opt/libssl.so.3\" owned=\"no\"/>"));
}

TEST_F(PackageCheckTest, DamagedDatabaseLeavesTheRestOpen) {
    file("/var/lib/dpkg/status", std::string(kStatus) + "Package: cut\nStatus: install ok inst");
    EXPECT_EQ("yes", truth("<Package name=\"libssl3\"/>"));
    EXPECT_EQ("unknown", truth("<Package name=\"other\"/>"));
    EXPECT_TRUE(scan(signature("<Package name=\"other\"/>")).has("package-db"));
}

TEST_F(PackageCheckTest, NeedsNoWalk) {
    const ScanResult result = scan(signature("<Package name=\"libssl3\"/>"));
    EXPECT_NE(std::string::npos, result.messages.find("entries=0 ")) << result.messages;
}

TEST_F(PackageCheckTest, FindsPackagesOfLanguages) {
    file("/usr/lib/python3/dist-packages/Foo_Bar-1.2.dist-info/METADATA",
         "Name: Foo_Bar\nVersion: 1.2rc1\n\nText");
    file("/srv/app/node_modules/@a/b/package.json", "{\"name\":\"@a/b\",\"version\":\"2.0.0\"}");
    file("/var/lib/gems/specifications/rake-13.0.gemspec",
         "Gem::Specification.new do |s|\n  s.name = \"rake\".freeze\n"
         "  s.version = \"13.0\"\nend\n");
    EXPECT_EQ("pkg:pypi/foo-bar@1.2rc1",
              show("<Package manager=\"pip\" name=\"Foo*\" lt=\"1.2\" as=\"p\"/>", "${p.purl}"));
    EXPECT_EQ("pkg:npm/%40a/b@2.0.0", show("<Package manager=\"npm\" name=\"@a/b\" as=\"p\"/>", "${p.purl}"));
    EXPECT_EQ("pkg:gem/rake@13.0", show("<Package manager=\"gem\" name=\"rake\" as=\"p\"/>", "${p.purl}"));
    EXPECT_EQ("no", truth("<Package name=\"rake\"/>"));  // any means those of the machine
}

TEST_F(PackageCheckTest, RefusesWhatMakesNoSense) {
    for (const char* condition :
         {"<Package manager=\"\"/>", "<Package name=\"a\" manager=\"yum\"/>",
          "<Package name=\"a\" state=\"x\"/>", "<Package name=\"a\" nameMatch=\"b\"/>"}) {
        EXPECT_EQ(0U, truth(condition).find("invalid: ")) << condition;
    }
}

}  // namespace
