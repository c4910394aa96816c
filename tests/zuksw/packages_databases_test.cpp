#include "scanners/shared/packages/databases.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include "tests/support/temporary_folder.h"
#include "tests/zuksw/judge.h"
#include "tests/zuksw/rpm_builder.h"

namespace {

// A small machine below a folder of its own.
class Root {
  public:
    Root& file(const std::string& path, std::string_view content) {
        std::filesystem::create_directories(std::filesystem::path(folder_.path() + "/" + path).parent_path());
        folder_.file(path, content);
        return *this;
    }
    Root& link(const std::string& path, const std::string& target) {
        std::filesystem::create_directories(std::filesystem::path(folder_.path() + "/" + path).parent_path());
        std::filesystem::create_symlink(target, folder_.path() + "/" + path);
        return *this;
    }
    std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
    RootedFs fs() const { return *RootedFs::below(folder_.path()); }

    std::vector<PackageDatabase> read(const PackagePlaces& places = {}) const {
        return readPackageDatabases(fs(), places, {});
    }

    std::map<std::string, std::string> owned(bool isWhole = true) const {
        std::map<std::string, std::string> paths;
        const auto take = [&](std::string_view path, std::string_view package) {
            paths.emplace(path, package);
        };
        EXPECT_EQ(isWhole, forEachOwnedPath(fs(), {}, {}, take).empty());
        return paths;
    }

  private:
    TemporaryFolder folder_;
};

std::string described(const std::vector<PackageDatabase>& databases) {
    std::string text;
    for (const PackageDatabase& database : databases) {
        text.append(database.manager).append(":");
        for (const Package& package : database.list.packages)
            text += " " + package.name + "=" + package.version;
        if (!database.problem.empty()) text += " (" + database.problem + ")";
        text += "\n";
    }
    return text;
}

constexpr std::string_view kStatus =
    "Package: a\nStatus: install ok installed\nArchitecture: amd64\nVersion: 1-1\n\n"
    "Package: b\nStatus: install ok installed\nArchitecture: amd64\nVersion: 2-1\n\n";

TEST(PackageDatabases, AMachineWithoutAnyHasNone) {
    EXPECT_EQ(described(Root().file("etc/passwd", "").read()), "");
}

TEST(PackageDatabases, DpkgWithWhatAptAdds) {
    Root root;
    root.file("var/lib/dpkg/status", kStatus);
    root.file("var/lib/apt/extended_states", "Package: b\nArchitecture: amd64\nAuto-Installed: 1\n");
    const std::vector<PackageDatabase> databases = root.read();
    EXPECT_EQ(described(databases), "dpkg: a=1-1 b=2-1\n");
    EXPECT_FALSE(databases.at(0).list.packages.at(0).automatic);
    EXPECT_TRUE(databases.at(0).list.packages.at(1).automatic);
}

TEST(PackageDatabases, DpkgInParts) {
    Root root;
    root.file("var/lib/dpkg/status.d/base", "Package: base-files\nVersion: 12\nArchitecture: all\n");
    root.file("var/lib/dpkg/status.d/base.md5sums", "0123  usr/share/base\n");
    root.file("var/lib/dpkg/status.d/tzdata", "Package: tzdata\nVersion: 2024a\nArchitecture: all\n");
    EXPECT_EQ(described(root.read()), "dpkg: base-files=12 tzdata=2024a\n");
    EXPECT_EQ(root.owned(), (std::map<std::string, std::string>{{"/usr/share/base", "base"}}));
}

TEST(PackageDatabases, DpkgAtAnotherPlace) {
    Root root;
    root.file("opt/dpkg/status", kStatus);
    PackagePlaces places;
    places.dpkg = "/opt/dpkg";
    EXPECT_EQ(described(root.read(places)), "dpkg: a=1-1 b=2-1\n");
}

TEST(PackageDatabases, BrokenEntriesAreAProblemAndTheOthersStay) {
    Root root;
    root.file("var/lib/dpkg/status", std::string(kStatus) + "Package: c\n");
    EXPECT_EQ(described(root.read()), "dpkg: a=1-1 b=2-1 (some entries make no sense)\n");
}

TEST(PackageDatabases, OneThatMayNotBeReadIsAProblem) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    Root root;
    root.file("var/lib/dpkg/status", kStatus);
    chmod(root.path("var/lib/dpkg/status").c_str(), 0);
    EXPECT_EQ(described(root.read()), "dpkg: (permission denied)\n");
}

TEST(PackageDatabases, OneThatIsNoFileIsAProblem) {
    Root root;
    root.file("lib/apk/db/installed/x", "");
    EXPECT_EQ(described(root.read()), "apk: (cannot be read)\n");
}

TEST(PackageDatabases, DpkgInstallTimesAreThoseOfTheLists) {
    Root root;
    root.file("var/lib/dpkg/status", kStatus)
        .file("var/lib/dpkg/info/a.list", "")
        .file("var/lib/dpkg/info/b:amd64.list", "");
    std::vector<Package> packages = root.read().at(0).list.packages;
    struct stat facts = {};
    ASSERT_EQ(stat(root.path("var/lib/dpkg/info/b:amd64.list").c_str(), &facts), 0);
    setDpkgInstallTimes(root.fs(), {}, packages);
    EXPECT_TRUE(packages[0].installTime);
    EXPECT_EQ(packages[1].installTime, facts.st_mtime);
}

TEST(PackageDatabases, OpkgOfRouters) {
    Root root;
    root.file("usr/lib/opkg/status", "Package: busybox\nVersion: 1.35-5\nStatus: install user installed\n\n");
    root.file("usr/lib/opkg/info/busybox.list", "/bin/busybox\n/etc/shells\t0100644\n");
    EXPECT_EQ(described(root.read()), "opkg: busybox=1.35-5\n");
    EXPECT_EQ(root.owned(),
              (std::map<std::string, std::string>{{"/bin/busybox", "busybox"}, {"/etc/shells", "busybox"}}));
}

TEST(PackageDatabases, ApkAtBothPlaces) {
    for (const std::string place : {"lib/apk/db/", "usr/lib/apk/db/"}) {
        Root root;
        root.file(place + "installed", "P:musl\nV:1.2.4-r2\nF:lib\nR:libc.so\n\n");
        EXPECT_EQ(described(root.read()), "apk: musl=1.2.4-r2\n") << place;
        EXPECT_EQ(root.owned(), (std::map<std::string, std::string>{{"/lib/libc.so", "musl"}})) << place;
    }
}

TEST(PackageDatabases, Pacman) {
    Root root;
    root.file("var/lib/pacman/local/ALPM_DB_VERSION", "9\n");
    root.file("var/lib/pacman/local/gcc-libs-13.2-1/desc", "%NAME%\ngcc-libs\n\n%VERSION%\n13.2-1\n");
    root.file("var/lib/pacman/local/gcc-libs-13.2-1/files", "%FILES%\nusr/\nusr/lib/libgcc.so\n");
    root.file("var/lib/pacman/local/lost-1-1/desc", "%NAME%\nlost\n");
    EXPECT_EQ(described(root.read()), "pacman: gcc-libs=13.2-1 (some entries make no sense)\n");
    EXPECT_EQ(root.owned(), (std::map<std::string, std::string>{{"/usr/lib/libgcc.so", "gcc-libs"}}));
}

std::string rpmHeader() {
    return RpmHeaderBuilder()
        .text(1000, "bash")
        .text(1001, "5.1")
        .text(1002, "2")
        .numbers(1116, {0})
        .texts(1117, {"bash"})
        .texts(1118, {"/bin/"})
        .build();
}

TEST(PackageDatabases, RpmInSqlite) {
    Root root;
    root.file("usr/lib/sysimage/rpm/rpmdb.sqlite", "");
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(root.path("usr/lib/sysimage/rpm/rpmdb.sqlite").c_str(), &database), SQLITE_OK);
    sqlite3_exec(database, "CREATE TABLE Packages (hnum INTEGER PRIMARY KEY, blob BLOB)", nullptr, nullptr,
                 nullptr);
    for (const std::string& blob :
         {rpmHeader(), RpmHeaderBuilder::simple("gpg-pubkey"), std::string("damaged")}) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, "INSERT INTO Packages (blob) VALUES (?)", -1, &statement, nullptr);
        sqlite3_bind_blob(statement, 1, blob.data(), static_cast<int>(blob.size()), SQLITE_STATIC);
        EXPECT_EQ(sqlite3_step(statement), SQLITE_DONE);
        sqlite3_finalize(statement);
    }
    sqlite3_close(database);
    EXPECT_EQ(described(root.read()), "rpm: bash=5.1-2 (some entries make no sense)\n");
    EXPECT_EQ(root.owned(false), (std::map<std::string, std::string>{{"/bin/bash", "bash"}}));
}

TEST(PackageDatabases, AnEmptyRpmDatabaseIsAProblem) {
    for (const std::string name : {"rpmdb.sqlite", "Packages.db", "Packages"}) {
        Root root;
        root.file("var/lib/rpm/" + name, "");
        const std::vector<PackageDatabase> databases = root.read();
        ASSERT_EQ(databases.size(), 1U) << name;
        EXPECT_NE(databases[0].problem, "") << name;
    }
}

TEST(PackageDatabases, Flatpak) {
    Root root;
    const std::string app = "var/lib/flatpak/app/org.example.App/";
    root.file(app + "x86_64/stable/active/metadata", "[Application]\nname=org.example.App\n");
    root.file(app + "x86_64/stable/active/files/share/metainfo/org.example.App.metainfo.xml",
              "<component><releases><release date=\"2024-01-01\" version=\"2.10\"/><release "
              "version=\"2.9\"/></releases></component>");
    root.link(app + "current", "x86_64/stable");
    root.file("var/lib/flatpak/runtime/org.example.Platform/x86_64/23.08/active/metadata", "[Runtime]\n");
    const std::vector<PackageDatabase> databases = root.read();
    EXPECT_EQ(described(databases), "flatpak: org.example.App=2.10 org.example.Platform=23.08\n");
    EXPECT_EQ(databases.at(0).list.packages.at(0).architecture, "x86_64");
    EXPECT_EQ(databases.at(0).list.packages.at(0).section, "app");
}

TEST(PackageDatabases, SnapsInUse) {
    Root root;
    root.file("var/lib/snapd/snaps/firefox_10.snap", "").file("var/lib/snapd/snaps/firefox_9.snap", "");
    root.file("var/lib/snapd/snaps/unmounted_3.snap", "").file("var/lib/snapd/snaps/partial", "");
    root.link("snap/firefox/current", "10");
    root.file("snap/firefox/10/meta/snap.yaml", "name: firefox\nversion: '121.0-1'\nsummary: a browser\n");
    const std::vector<PackageDatabase> databases = root.read();
    EXPECT_EQ(described(databases), "snap: firefox=121.0-1 unmounted=\n");
    EXPECT_EQ(databases.at(0).list.packages.at(0).revision, "10");
    EXPECT_EQ(databases.at(0).list.packages.at(0).summary, "a browser");
}

TEST(PackageDatabases, OnlyTheManagersAskedFor) {
    Root root;
    root.file("var/lib/dpkg/status", kStatus).file("lib/apk/db/installed", "P:musl\nV:1\n\n");
    EXPECT_EQ(described(readPackageDatabases(root.fs(), {}, {"apk"})), "apk: musl=1\n");
}

TEST(PackageDatabases, OwnedPathsFollowTheFoldersThatWereMerged) {
    Root root;
    root.file("var/lib/dpkg/info/a:amd64.list",
              "/.\n/bin\n/bin/a\n/lib/x/liba.so\n/usr/share/a\n/library/a\n");
    root.file("usr/bin/a", "").link("bin", "usr/bin").link("lib", "/usr/lib").file("usr/lib/x/liba.so", "");
    const std::map<std::string, std::string> expected = {{"/.", "a"},           {"/bin", "a"},
                                                         {"/usr/bin/a", "a"},   {"/usr/lib/x/liba.so", "a"},
                                                         {"/usr/share/a", "a"}, {"/library/a", "a"}};
    EXPECT_EQ(root.owned(), expected);
}

TEST(PackageDatabases, AgreeWithDpkgQueryOnThisMachine) {
    const Verdict judge =
        ask({"dpkg-query", "-W", "-f",
             "${Package} ${Version} ${Architecture} ${source:Package} ${db:Status-Status}\n"});
    if (judge.status != 0) GTEST_SKIP() << "dpkg-query is not installed";
    std::vector<std::string> lines;
    for (const PackageDatabase& database : readPackageDatabases(RootedFs::ofLiveMachine(), {}, {"dpkg"})) {
        for (const Package& p : database.list.packages) {
            lines.push_back(p.name + " " + p.version + " " + p.architecture + " " + p.source + " " +
                            std::string(packageStateName(p.state)));
        }
    }
    std::vector<std::string> expected;
    std::istringstream answer(judge.output);
    for (std::string line; std::getline(answer, line);) expected.push_back(line);
    std::sort(lines.begin(), lines.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(lines, expected);
}

}  // namespace
