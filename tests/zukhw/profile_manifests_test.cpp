// The manifests of Nix's and Guix's profiles, and what SoftwarePackages makes of them.
#include "scanners/zukhw/profile_manifests.h"

#include <gtest/gtest.h>

#include "tests/zukhw/test_machine.h"

namespace {

struct NameCase {
    const char* whole;
    const char* name;
    const char* version;
};

TEST(NixName, EndsBeforeTheFirstHyphenWithoutALetterBehindIt) {
    const NameCase cases[] = {{"hello-2.12.1", "hello", "2.12.1"},
                              {"gcc-wrapper-13.2.0", "gcc-wrapper", "13.2.0"},
                              {"x-11-unstable-2026", "x", "11-unstable-2026"},
                              {"plain", "plain", ""},
                              {"odd-", "odd", ""},
                              {"", "", ""}};
    for (const NameCase& c : cases) {
        Package package;
        setNixName(package, c.whole);
        EXPECT_EQ(c.name, package.name) << c.whole;
        EXPECT_EQ(c.version, package.version) << c.whole;
    }
}

const std::string kNix =
    "[ { meta = { available = true; description = \"A \\\"friendly\\\" {greeting}\"; name = \"wrong-1\"; "
    "license = { fullName = \"GPL\"; }; }; name = \"hello-2.12.1\"; out = { outPath = \"/nix/store/x\"; }; "
    "outputs = [ \"out\" ]; system = \"x86_64-linux\"; type = \"derivation\"; }\n"
    "{ name = \"nameless\"; } ]";

TEST(NixManifest, TellsItsDerivations) {
    const auto packages = parseNixManifest(kNix);
    ASSERT_TRUE(packages);
    ASSERT_EQ(2U, packages->size());
    EXPECT_EQ("hello", packages->at(0).name);
    EXPECT_EQ("2.12.1", packages->at(0).version);
    EXPECT_EQ("x86_64-linux", packages->at(0).architecture);
    EXPECT_EQ("A \"friendly\" {greeting}", packages->at(0).summary);
    EXPECT_EQ("nameless", packages->at(1).name);
    EXPECT_EQ("", packages->at(1).architecture);
}

const std::string kGuix =
    ";; This file was automatically generated.\n"
    "(manifest\n  (version 4)\n  (packages\n"
    "    ((\"git\" \"2.45.1\" \"send-email\" \"/gnu/store/a-git-2.45.1\"\n"
    "      (propagated-inputs ((\"perl\" \"5.36\" \"out\" \"/gnu/store/b\")))\n"
    "      (search-paths ((\"GIT\" (\"bin\") #f directory #f))))\n"
    "     (repeated \"x\" \"1\")\n"
    "     (\"hello\" \"2.12.1\" \"out\" \"/gnu/store/c\"))))\n";

TEST(GuixManifest, TellsItsEntries) {
    const auto packages = parseGuixManifest(kGuix);
    ASSERT_TRUE(packages);
    ASSERT_EQ(2U, packages->size());
    EXPECT_EQ("git:send-email", packages->at(0).name);
    EXPECT_EQ("2.45.1", packages->at(0).version);
    EXPECT_EQ("hello", packages->at(1).name);
}

TEST(Manifests, ThatAreCutAreNone) {
    for (std::size_t size = 1; size < kNix.size(); ++size)
        EXPECT_FALSE(parseNixManifest(std::string_view(kNix).substr(0, size))) << size;
    const std::size_t begin = kGuix.find('(') + 1;
    for (std::size_t size = begin; size < kGuix.rfind(')'); ++size)
        EXPECT_FALSE(parseGuixManifest(std::string_view(kGuix).substr(0, size))) << size;
}

TEST(SoftwarePackages, OfNixAreThoseOfAllProfilesOnce) {
    TestMachine machine(
        "nix/var/nix/profiles/default -> default-2-link\n"
        "nix/var/nix/profiles/default-2-link -> /nix/store/aaa-profile\n"
        "nix/store/aaa-profile/manifest.json: "
        "{\"version\":2,\"elements\":[{\"active\":true,\"attrPath\":\"legacyPackages.x86_64-linux.hello\","
        "\"storePaths\":[\"/nix/store/0123-hello-2.12.1-man\",\"/nix/store/4567-hello-2.12.1\"]},"
        "{\"active\":false,\"storePaths\":[\"/nix/store/0123-off-1\"]},{\"storePaths\":7},3]}\n"
        "nix/var/nix/profiles/per-user/ada/profile/manifest.json: "
        "{\"version\":3,\"elements\":{\"jq\":{\"storePaths\":[\"/nix/store/89ab-jq-1.7\"]}}}\n"
        "nix/var/nix/profiles/per-user/bob/profile/manifest.nix: [ { name = \"jq-1.7\"; } ]\n");
    const std::vector<Fields> packages = collectInstances(*machine, "SoftwarePackages");
    ASSERT_EQ(2U, packages.size());
    EXPECT_EQ(
        (Fields{
            {"Name", "hello"}, {"Version", "2.12.1"}, {"Architecture", "x86_64-linux"}, {"Manager", "nix"}}),
        packages[0]);
    EXPECT_EQ((Fields{{"Name", "jq"}, {"Version", "1.7"}, {"Manager", "nix"}}), packages[1]);
    EXPECT_EQ(0U, machine->sources().malformedCount());
}

TEST(SoftwarePackages, OfGuixAreThoseOfTheSystemAndOfUsers) {
    const std::string entry = ": (manifest (version 3) (packages ((\"";
    TestMachine machine("var/guix/profiles/system/profile/manifest" + entry +
                        "shepherd\" \"1.0\" \"out\" \"/gnu/store/a\"))))\n"
                        "var/guix/profiles/per-user/ada/guix-profile/manifest" +
                        entry +
                        "hello\" \"2.12\" \"out\" \"/gnu/store/b\"))))\n"
                        "var/guix/profiles/per-user/ada/guix-profile-1-link/manifest" +
                        entry + "old\" \"1\" \"out\" \"/gnu/store/c\"))))\n");
    const std::vector<Fields> packages = collectInstances(*machine, "SoftwarePackages");
    ASSERT_EQ(2U, packages.size());
    EXPECT_EQ((Fields{{"Name", "hello"}, {"Version", "2.12"}, {"Manager", "guix"}}), packages[0]);
    EXPECT_EQ("shepherd", packages[1].at("Name"));
}

TEST(SoftwarePackages, CountManifestsThatAreNone) {
    TestMachine machine(
        "nix/var/nix/profiles/default/manifest.json: {\"elements\"\n"
        "nix/var/nix/profiles/per-user/ada/profile/manifest.nix: [ {\n"
        "var/guix/profiles/system/profile/manifest: (manifest\n");
    EXPECT_EQ(0U, collectInstances(*machine, "SoftwarePackages").size());
    EXPECT_EQ(3U, machine->sources().malformedCount());
}

TEST(SoftwarePackages, SurviveJsonThatIsNestedDeep) {
    TestMachine machine("nix/var/nix/profiles/default/manifest.json: {\"elements\":" +
                        std::string(100000, '[') + std::string(100000, ']') + "}\n");
    EXPECT_EQ(0U, collectInstances(*machine, "SoftwarePackages").size());
}

}  // namespace
