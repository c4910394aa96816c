// Package conditions over every kind of database that a machine may have.

#include <filesystem>

#include "tests/support/sqlite_database.h"
#include "tests/zuksw/rpm_bdb_builder.h"
#include "tests/zuksw/rpm_ndb_builder.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class PackageDatabasesTest : public ScanTest {
  protected:
    // "name=version" of what one manager (or any) knows.
    std::string packages(const std::string& manager = "any", const std::string& more = "") {
        return scan("<Signature guid=\"g\" name=\"n\" place=\"${v}\"><Detect><Package name=\"*\" manager=\"" +
                    manager + "\" as=\"p\" " + more +
                    "/><Set name=\"v\" value=\"${p.name}:${p.arch:-}=${p.version}\"/>"
                    "</Detect><Report><Variable name=\"v\" value=\"${v}\"/></Report></Signature>")
            .values("v");
    }
    static std::string hex(const std::string& bytes) {
        std::string text;
        for (const char c : bytes) {
            for (const unsigned shift : {4U, 0U})
                text += "0123456789ABCDEF"[static_cast<unsigned char>(c) >> shift & 15U];
        }
        return text;
    }
    static std::string paragraph(const std::string& name, const std::string& state,
                                 const std::string& arch = "amd64") {
        return "Package: " + name + "\nStatus: install ok " + state + "\nArchitecture: " + arch +
               "\nMulti-Arch: same\nVersion: 1-1\n\n";
    }
};

struct StateCase {
    const char* state;
    const char* present;
    const char* installed;
};

TEST_F(PackageDatabasesTest, DpkgStatesArePresentInstalledOrNeither) {
    const StateCase cases[] = {
        {"installed", "yes", "yes"},       {"triggers-pending", "yes", "no"},
        {"triggers-awaited", "yes", "no"}, {"half-configured", "yes", "no"},
        {"unpacked", "yes", "no"},         {"half-installed", "yes", "no"},
        {"config-files", "no", "no"},      {"not-installed", "no", "no"},
    };
    for (const StateCase& c : cases) {
        file("/var/lib/dpkg/status", paragraph("p", c.state));
        EXPECT_EQ(c.present, truth("<Package name=\"p\"/>")) << c.state;
        EXPECT_EQ(c.installed, truth("<Package name=\"p\" state=\"installed\"/>")) << c.state;
        EXPECT_EQ("yes", truth("<Package name=\"p\" state=\"any\"/>")) << c.state;
    }
}

TEST_F(PackageDatabasesTest, APackageOfTwoArchitecturesIsTwo) {
    file("/var/lib/dpkg/status", paragraph("p", "installed") + paragraph("p", "installed", "i386"));
    EXPECT_EQ("p:amd64=1-1 p:i386=1-1", packages());
}

TEST_F(PackageDatabasesTest, AStatusFileThatIsCutKeepsWhatIsWhole) {
    const std::string whole = paragraph("first", "installed") + paragraph("second", "installed");
    file("/var/lib/dpkg/status", whole.substr(0, whole.size() - 10));
    EXPECT_EQ("yes", truth("<Package name=\"first\"/>"));
    EXPECT_EQ("unknown", truth("<Package name=\"second\"/>"));
    EXPECT_EQ("unknown", truth("<Not><Package name=\"third\"/></Not>"));
    EXPECT_TRUE(scan(signature("<Package name=\"first\"/>")).has("package-db"));
}

TEST_F(PackageDatabasesTest, AnImageWithStatusInPartsOnly) {
    file("/var/lib/dpkg/status.d/base", "Package: base-files\nVersion: 12.4\nArchitecture: amd64\n");
    file("/var/lib/dpkg/status.d/base.md5sums", "0 etc/debian_version\n");
    EXPECT_EQ("base-files:amd64=12.4", packages());
}

TEST_F(PackageDatabasesTest, AMachineWithoutManagersHasNoPackages) {
    EXPECT_EQ("no", truth("<Package name=\"*\"/>"));
    EXPECT_EQ("yes", truth("<Not><Package name=\"*\"/></Not>"));
    EXPECT_FALSE(scan(signature("<Package name=\"*\"/>")).has("package-db"));
}

TEST_F(PackageDatabasesTest, RpmInItsThreeFormats) {
    const std::string header =
        RpmHeaderBuilder().text(1000, "bash").text(1001, "5.1").text(1002, "2").text(1022, "x86_64").build();
    directory("/var/lib/rpm");
    makeDatabase(
        treePath("/var/lib/rpm/rpmdb.sqlite"),
        "CREATE TABLE Packages (hnum INTEGER PRIMARY KEY, blob BLOB NOT NULL); INSERT INTO Packages (blob) "
        "VALUES (x'" +
            hex(header) + "')");
    EXPECT_EQ("bash:x86_64=5.1-2", packages("rpm"));
    std::filesystem::remove(treePath("/var/lib/rpm/rpmdb.sqlite"));
    file("/var/lib/rpm/Packages.db", ndbDatabase({header}));
    EXPECT_EQ("bash:x86_64=5.1-2", packages("rpm"));
    std::filesystem::remove(treePath("/var/lib/rpm/Packages.db"));
    file("/var/lib/rpm/Packages", bdbMeta() + bdbHashPage("\1" + header));
    EXPECT_EQ("bash:x86_64=5.1-2", packages("rpm"));
    EXPECT_EQ("bash:x86_64=5.1-2", packages("any", "ge=\"5.1-1\" lt=\"0:5.1-10\""));
}

TEST_F(PackageDatabasesTest, ApkOfASmallImage) {
    file("/lib/apk/db/installed", "P:musl\nV:1.2.3-r4\nA:x86_64\n\nP:zlib\nV:1.3_rc1-r0\nA:x86_64\n\n");
    EXPECT_EQ("musl:x86_64=1.2.3-r4 zlib:x86_64=1.3_rc1-r0", packages());
    EXPECT_EQ("yes", truth("<Package name=\"zlib\" lt=\"1.3\" ge=\"1.3_beta2\"/>"));
}

TEST_F(PackageDatabasesTest, AnEmptyDatabaseIsDamagedWhereItCannotBe) {
    for (const char* path :
         {"/var/lib/rpm/rpmdb.sqlite", "/var/lib/rpm/Packages.db", "/var/lib/rpm/Packages"}) {
        file(path, "");
        EXPECT_EQ("unknown", truth("<Package name=\"x\" manager=\"rpm\"/>")) << path;
        std::filesystem::remove(treePath(path));
    }
    file("/var/lib/dpkg/status", "");
    EXPECT_EQ("no", truth("<Package name=\"x\" manager=\"dpkg\"/>"));
}

TEST_F(PackageDatabasesTest, LinksInAnImageStayInIt) {
    file("/usr/lib/sysimage/dpkg/status", paragraph("p", "installed"));
    link("/usr/lib/sysimage/dpkg", "/var/lib/dpkg");
    file("/usr/lib/os-release", "ID=image\n");
    link("/usr/lib/os-release", "/etc/os-release");
    EXPECT_EQ("p:amd64=1-1", packages());
    EXPECT_EQ("yes", truth("<System key=\"os.id\" eq=\"image\" scheme=\"text\"/>"));
}

}  // namespace
