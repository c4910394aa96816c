// What a signature takes from outside, what it refers to and what it reports.

#include "tests/zuksw/scan_fixture.h"

namespace {

class SignatureTest : public ScanTest {
  protected:
    static std::string preset(const std::string& name, const std::string& value,
                              const std::string& guid = "") {
        return "<Variable name=\"" + name + "\" value=\"" + value + "\" guid=\"" + guid + "\"/>";
    }
    static std::string named(const std::string& guid, const std::string& conditions,
                             const std::string& report = "") {
        return "<Signature guid=\"" + guid + "\" name=\"" + guid + "\"><Detect>" + conditions +
               "</Detect><Report>" + report + "</Report></Signature>";
    }
    static std::string matched(const std::string& guid) { return "<Matched guid=\"" + guid + "\"/>"; }
    static std::string guids(const ScanResult& result) {
        std::string all;
        for (const Match& match : result.matches) all += match.guid + " ";
        return all;
    }
};

const char kTrue[] = "<Test value=\"1\" eq=\"1\"/>";

TEST_F(SignatureTest, TakesPresetsThroughInputs) {
    const std::string text = signature(kTrue, {"v"}, "", "<Input name=\"v\" default=\"d\"/>");
    EXPECT_EQ("d", scan(text).values("v"));
    EXPECT_EQ("p", scan(text, {}, preset("v", "p")).values("v"));
    EXPECT_EQ("s", scan(text, {}, preset("v", "s", "g") + preset("v", "p")).values("v"));
    EXPECT_EQ("d", scan(text, {}, preset("v", "s", "other")).values("v"));
    EXPECT_EQ("2", scan(text, {}, preset("v", "1") + preset("v", "2")).values("v"));
}

TEST_F(SignatureTest, ReportsPresetsThatNobodyTakes) {
    const std::string text = signature(kTrue);
    EXPECT_TRUE(scan(text, {}, preset("v", "1")).has("preset-unused"));
    EXPECT_TRUE(scan(text, {}, preset("v", "1", "other")).has("preset-unused"));
    EXPECT_FALSE(
        scan(signature(kTrue, {}, "", "<Input name=\"v\"/>"), {}, preset("v", "1")).has("preset-unused"));
}

TEST_F(SignatureTest, APresetRestrictsWhatIsCaptured) {
    file("/f", "v1");
    const std::string text =
        signature("<File as=\"f\" path=\"/f\"/><Content of=\"f\" match=\"v(?P&lt;v&gt;.)\"/>", {"v"}, "",
                  "<Input name=\"v\"/>");
    EXPECT_EQ("1", scan(text).values("v"));
    EXPECT_EQ("1", scan(text, {}, preset("v", "1")).values("v"));
    EXPECT_EQ("", scan(text, {}, preset("v", "2")).values("v"));
}

TEST_F(SignatureTest, InputsMayChooseNames) {
    file("/a.x", "1");
    file("/b.x", "1");
    const std::string text =
        signature("<File as=\"f\" name=\"${n}.x\"/><Set name=\"p\" value=\"${f.path}\"/>", {"p"}, "",
                  "<Input name=\"n\"/>");
    EXPECT_EQ("/a.x", scan(text, {}, preset("n", "a")).values("p"));
    EXPECT_EQ("", scan(text, {}, preset("n", "*")).values("p"));
    EXPECT_EQ("", scan(text).values("p"));
}

// A few references to a long text would otherwise take as much memory as the machine has.
class LongTextTest : public SignatureTest {
  protected:
    // Of 20,000 bytes each: three of them are still a text, four are none.
    std::string input_ = "<Input name=\"v\" default=\"" + std::string(20'000, 'a') + "\"/>";
    std::string fits_ = "${v}${v}${v}";
    std::string tooLong_ = "${v}${v}${v}${v}";
};

TEST_F(LongTextTest, IsFalseInACondition) {
    const auto test = [&](const std::string& value) {
        return scan(signature("<Test value=\"" + value + "\" match=\"^a\"/>", {}, "", input_)).matches.size();
    };
    EXPECT_EQ(1U, test(fits_));
    EXPECT_EQ(0U, test(tooLong_));
}

TEST_F(LongTextTest, IsFalseInAGlob) {
    file("/x", "1");
    const auto glob = [&](const std::string& name) {
        return scan(signature("<File name=\"{x," + name + "}\"/>", {}, "", input_)).matches.size();
    };
    EXPECT_EQ(1U, glob(fits_));
    EXPECT_EQ(0U, glob(tooLong_));
}

TEST_F(LongTextTest, IsLeftOutOfTheReport) {
    const auto report = [&](const std::string& value) {
        const std::string variable = "<Variable name=\"r\" value=\"" + value + "\"/>";
        return scan("<Signature guid=\"g\" name=\"n\">" + input_ + "<Detect>" + kTrue + "</Detect><Report>" +
                    variable + "</Report></Signature>")
            .values("r");
    };
    EXPECT_EQ(60'000U, report(fits_).size());
    EXPECT_EQ("", report(tooLong_));
}

TEST_F(SignatureTest, MatchedLooksForwardAndBackward) {
    EXPECT_EQ("a b ", guids(scan(named("a", matched("b")) + named("b", kTrue))));
    EXPECT_EQ("a b ", guids(scan(named("a", kTrue) + named("b", matched("a")))));
    EXPECT_EQ("b ", guids(scan(named("a", "<Not>" + matched("b") + "</Not>") + named("b", kTrue))));
}

TEST_F(SignatureTest, MatchedHandsOnWhatWasReported) {
    const std::string report = "<Variable name=\"v\" value=\"7\"/>";
    const ScanResult result = scan(named("a", kTrue, report) +
                                   named("b", "<Matched guid=\"a\" as=\"m\"/>",
                                         "<Variable name=\"w\" value=\"${m.v}${m.guid}${m.sigName}\"/>"));
    EXPECT_EQ("7aa", result.values("w"));
}

TEST_F(SignatureTest, CyclesAreInvalid) {
    const ScanResult result = scan(named("a", matched("b")) + named("b", matched("a")) + named("c", kTrue));
    EXPECT_TRUE(result.has("cycle"));
    EXPECT_EQ("c ", guids(result));
    EXPECT_TRUE(scan(named("a", matched("a"))).has("cycle"));
}

TEST_F(SignatureTest, MatchedOnAnInvalidSignatureIsUndecided) {
    const ScanResult result = scan(named("a", "<Nothing/>") + named("b", matched("a")));
    EXPECT_TRUE(result.has("signature-invalid"));
    EXPECT_TRUE(result.has("undecided"));
    EXPECT_TRUE(
        scan(named("b", "<Not>" + matched("a") + "</Not>") + named("a", "<Nothing/>")).has("undecided"));
}

TEST_F(SignatureTest, MatchedOnNothingIsInvalid) {
    EXPECT_TRUE(scan(named("a", matched("x"))).has("unknown-guid"));
}

TEST_F(SignatureTest, AMistakeInsideNotDoesNotMakeItTrue) {
    const ScanResult result =
        scan(named("a", "<Not><File nam=\"x\"/></Not>") + named("b", "<Not><Fil name=\"x\"/></Not>"));
    EXPECT_EQ("", guids(result));
    EXPECT_TRUE(result.has("signature-invalid"));
}

TEST_F(SignatureTest, NewerLanguageIsLeftAlone) {
    EXPECT_TRUE(scan(signature(kTrue, {}, "language=\"2\"")).has("language"));
    EXPECT_EQ(1U, scan(signature(kTrue, {}, "language=\"1\"")).matches.size());
}

TEST_F(SignatureTest, UnknownElementsOutsideDetectAreIgnored) {
    const std::string text = "<Other/><Signature guid=\"g\" name=\"n\"><Odd/><Detect>" + std::string(kTrue) +
                             "</Detect><Report><Strange/></Report></Signature>";
    const ScanResult result = scan(text);
    EXPECT_EQ(1U, result.matches.size());
    EXPECT_TRUE(result.has("unknown-element"));
}

struct BadCase {
    const char* text;
    const char* word;
};

TEST_F(SignatureTest, SaysWhatIsWrong) {
    const BadCase cases[] = {
        {"<Signature name=\"n\"><Detect><Test value=\"1\" eq=\"1\"/></Detect></Signature>", "guid"},
        {"<Signature guid=\"g\"><Detect><Test value=\"1\" eq=\"1\"/></Detect></Signature>", "name"},
        {"<Signature guid=\"g\" name=\"n\"/>", "Detect"},
        {"<Signature guid=\"g\" name=\"n\"><Detect/></Signature>", "no condition"},
        {"<Signature guid=\"g\" name=\"n\"><Detect>text</Detect></Signature>", "no condition"},
        {"<Signature guid=\"g\" name=\"n\" per=\"x\"><Detect><Test value=\"1\" "
         "eq=\"1\"/></Detect></Signature>",
         "per"},
        {"<Signature guid=\"g\" name=\"n\" place=\"${x}\"><Detect><Test value=\"1\" "
         "eq=\"1\"/></Detect></Signature>",
         "nothing binds 'x'"},
        {"<Signature guid=\"g\" name=\"n\" prefer=\"x\"><Detect><Test value=\"1\" "
         "eq=\"1\"/></Detect></Signature>",
         "prefer"},
        {"<Signature guid=\"g\" name=\"n\"><Detect><Test value=\"1\"/></Detect></Signature>",
         "compares with nothing"},
        {"<Signature guid=\"g\" name=\"n\"><Detect><Test value=\"1\" eq=\"1\" "
         "scheme=\"x\"/></Detect></Signature>",
         "scheme"},
        {"<Signature guid=\"g\" name=\"n\"><Detect><System key=\"x\"/></Detect></Signature>", "no such fact"},
        {"<Signature guid=\"g\" name=\"n\"><Detect><AtLeast count=\"0\"><Test value=\"1\" "
         "eq=\"1\"/></AtLeast></Detect>"
         "</Signature>",
         "at least 1"},
        {"<Signature guid=\"g\" name=\"n\"><Detect><Set name=\"host\" value=\"1\"/></Detect></Signature>",
         "'host'"},
        {"<Signature guid=\"g\" name=\"n\"><Detect><Set name=\"a\" value=\"1\" "
         "to=\"2\"/></Detect></Signature>",
         "'match'"},
    };
    for (const BadCase& c : cases) {
        const ScanResult result = scan(c.text);
        EXPECT_NE(std::string::npos, result.textOf("signature-invalid").find(c.word))
            << c.text << ": " << result.warnings;
        EXPECT_TRUE(result.matches.empty()) << c.text;
    }
}

TEST_F(SignatureTest, OneResultForEachPlace) {
    for (const char* path : {"/b/x", "/a/x", "/c/x"}) file(path, "1");
    const std::string detect =
        "<Detect><File as=\"f\" name=\"x\"/><Set name=\"d\" value=\"${f.dir}\"/></Detect>"
        "<Report><Variable name=\"d\" value=\"${d}\"/><Variable name=\"c\" value=\"1\"/></Report>";
    EXPECT_EQ(
        "/a /b /c",
        scan("<Signature guid=\"g\" name=\"n\" place=\"${f.path}\">" + detect + "</Signature>").values("d"));
    EXPECT_EQ("/a",
              scan("<Signature guid=\"g\" name=\"n\" place=\"same\">" + detect + "</Signature>").values("d"));
    EXPECT_EQ(
        "/a",
        scan("<Signature guid=\"g\" name=\"n\" per=\"machine\">" + detect + "</Signature>").values("d"));
    EXPECT_EQ("/c",
              scan("<Signature guid=\"g\" name=\"n\" per=\"machine\" prefer=\"d\">" + detect + "</Signature>")
                  .values("d"));
    EXPECT_EQ("/a /b /c", scan("<Signature guid=\"g\" name=\"n\">" + detect + "</Signature>").values("d"));
}

TEST_F(SignatureTest, ReportLeavesOutWhatIsNotThere) {
    const std::string detect = std::string(kTrue) + "<System key=\"os.none\" set=\"v\" optional=\"yes\"/>";
    const ScanResult result =
        scan(named("a", detect,
                   "<Variable name=\"v\" value=\"${v}\"/><Variable name=\"w\" value=\"${v:-d}\"/>"
                   "<Metadata><A b=\"${v}\">x${v}y</A></Metadata>"));
    EXPECT_EQ(0U, result.matches.at(0).variables.count("v"));
    EXPECT_EQ("d", result.values("w"));
    EXPECT_NE(std::string::npos, result.output.find("<A b=\"\"></A>")) << result.output;
}

TEST_F(SignatureTest, TheLaterOfTwoVariablesWins) {
    EXPECT_EQ("2",
              scan(named("a", kTrue, "<Variable name=\"v\" value=\"1\"/><Variable name=\"v\" value=\"2\"/>"))
                  .values("v"));
}

TEST_F(SignatureTest, MetadataCarriesEvidenceUnlessTold) {
    file("/x", "12");
    const std::string text = named("a", "<File name=\"x\"/>", "<Metadata><Cpe>a&amp;b</Cpe></Metadata>");
    EXPECT_NE(std::string::npos,
              scan(text).output.find("<Metadata><Cpe>a&amp;b</Cpe><Evidence><Item kind=\"file\" "
                                     "path=\"/x\" size=\"2\"/></Evidence></Metadata>"));
    EXPECT_NE(std::string::npos,
              scan(text, {{"output/Evidence", "no"}}).output.find("<Metadata><Cpe>a&amp;b</Cpe></Metadata>"));
}

TEST_F(SignatureTest, DollarsAreWrittenTwice) {
    EXPECT_EQ("$x $", scan(signature("<Set name=\"v\" value=\"$$x $\"/>", {"v"})).values("v"));
}

TEST_F(SignatureTest, SetRewritesAndChangesCase) {
    const std::string before = "<Set name=\"v\" value=\"Ab-12\" ";
    EXPECT_EQ("12", scan(signature(before + "match=\"\\d+\"/>", {"v"})).values("v"));
    EXPECT_EQ("12.Ab\\",
              scan(signature(before + "match=\"(\\w+)-(\\d+)\" to=\"\\2.\\1\\\\\"/>", {"v"})).values("v"));
    EXPECT_EQ("none", scan(signature(before + "match=\"x\" else=\"none\"/>", {"v"})).values("v"));
    EXPECT_EQ("", scan(signature(before + "match=\"x\"/>", {"v"})).values("v"));
    EXPECT_EQ("ab-12", scan(signature(before + "case=\"lower\"/>", {"v"})).values("v"));
    EXPECT_EQ("AB-12", scan(signature(before + "case=\"upper\"/>", {"v"})).values("v"));
}

TEST_F(SignatureTest, ComparesVersionsByScheme) {
    EXPECT_EQ("yes", truth("<Test value=\"1.10\" gt=\"1.9\" le=\"1.10.0\" ne=\"2\"/>"));
    EXPECT_EQ("no", truth("<Test value=\"1.0\" eq=\"1.0.0\" scheme=\"text\"/>"));
    EXPECT_EQ("yes", truth("<Test value=\"1:1-1\" gt=\"2-1\" scheme=\"deb\"/>"));
    const ScanResult refused = scan(signature("<Test value=\"foo\" gt=\"1\" scheme=\"pep440\"/>"));
    EXPECT_TRUE(refused.has("version-syntax"));
    EXPECT_TRUE(refused.matches.empty());
}

TEST_F(SignatureTest, OutputDoesNotDependOnThreads) {
    for (int i = 0; i < 200; ++i)
        file("/d" + std::to_string(i % 7) + "/f" + std::to_string(i), "v" + std::to_string(i));
    const std::string text =
        "<Signature guid=\"g\" name=\"n\" place=\"${f.path}\"><Detect><File as=\"f\" name=\"f*\"/><Content "
        "of=\"f\" "
        "match=\"v(?P&lt;v&gt;\\d+)\"/></Detect><Report><Variable name=\"v\" "
        "value=\"${v}\"/></Report></Signature>" +
        named("h", matched("g"));
    const ScanResult one = scan(text, {{"limits/Threads", "1"}});
    EXPECT_EQ(201U, one.matches.size());
    for (const char* threads : {"2", "5", "16"}) {
        const ScanResult many = scan(text, {{"limits/Threads", threads}});
        EXPECT_EQ(one.output, many.output) << threads;
        EXPECT_EQ(one.warnings, many.warnings) << threads;
    }
}

TEST_F(SignatureTest, LimitsRowsResultsAndEvents) {
    for (int i = 0; i < 20; ++i) file("/f" + std::to_string(i), "1");
    const std::string text =
        "<Signature guid=\"g\" name=\"n\" place=\"${f.path}\"><Detect><File as=\"f\" "
        "name=\"f*\"/></Detect></Signature>";
    const ScanResult rows = scan(text, {{"limits/MaxRows", "5"}});
    EXPECT_EQ(5U, rows.matches.size());
    EXPECT_TRUE(rows.has("rows-limit"));
    const ScanResult results = scan(text, {{"limits/MaxResults", "3"}});
    EXPECT_EQ(3U, results.matches.size());
    EXPECT_TRUE(results.has("results-limit"));
    EXPECT_TRUE(scan("<A/><B/><C/>", {{"limits/MaxEvents", "1"}}).has("more-events"));
}

// A prefix declared there would be unknown to whoever reads the result.
TEST_F(SignatureTest, MetadataKeepsItsAttributes) {
    const auto output = [this](const std::string& metadata) {
        return scan(named("a", kTrue, metadata)).output;
    };
    EXPECT_NE(std::string::npos, output("<Metadata xmlns:c=\"urn:c\"><c:a/></Metadata>")
                                     .find("<Metadata xmlns:c=\"urn:c\"><c:a/></Metadata>"));
    EXPECT_NE(std::string::npos, output("<Metadata a=\"$$\"/>").find("<Metadata a=\"$\"></Metadata>"));
    EXPECT_EQ(std::string::npos, output("<Metadata/>").find("Metadata"));
}

TEST_F(SignatureTest, MetadataIsNamedInAscii) {
    const auto metadata = [](const std::string& xml) {
        return "<Signature guid=\"g\" name=\"n\"><Detect>" + std::string(kTrue) +
               "</Detect><Report><Metadata>" + xml + "</Metadata></Report></Signature>";
    };
    EXPECT_TRUE(scan(metadata("<caf\xC3\xA9/>")).has("signature-invalid"));
    EXPECT_TRUE(scan(metadata("<a caf\xC3\xA9=\"1\"/>")).has("signature-invalid"));
    EXPECT_NE(std::string::npos,
              scan(metadata("<a b=\"\xC3\xA9\">\xC3\xA9</a>")).output.find("<a b=\"&#233;\">&#233;</a>"));
}

TEST_F(SignatureTest, ManagersAreKnownByName) {
    file("/var/lib/dpkg/status", "Package: p\nStatus: install ok installed\nVersion: 1\n\n");
    const std::string text = signature("<Package name=\"p\"/>");
    EXPECT_EQ(1U, scan(text, {{"packages/Managers", "all"}}).matches.size());
    EXPECT_EQ(1U, scan(text, {{"packages/Managers", "rpm"}, {"packages/Managers", "dpkg"}}).matches.size());
    EXPECT_EQ(1U, scan(text, {{"packages/Managers", "rpm, dpkg"}}).matches.size());
    EXPECT_EQ(0U, scan(text, {{"packages/Managers", "rpm,apk"}}).matches.size());
    EXPECT_TRUE(scan(text, {{"packages/Managers", "dpkg,yum"}}).has("config-value"));
}

TEST_F(SignatureTest, ConfigurationMistakesAreEvents) {
    EXPECT_TRUE(scan("", {{"limits/Threads", "none"}}).has("config-value"));
    EXPECT_EQ(4, scan("", {{"limits/Threads", "none"}, {"limits/Strict", "yes"}}).status);
    EXPECT_NE(std::string::npos,
              scan("", {{"limits/Thread", "1"}}).textOf("config-unknown").find("'Threads'"));
    EXPECT_TRUE(scan("", {{"nothing/X", "1"}}).has("config-unknown"));
    EXPECT_EQ(0, scan("", {{"content/MaxFileSize", "3K"}}).status);
}

TEST_F(SignatureTest, AnUnknownPlugInIsToldWithoutAttributesToo) {
    const std::string configuration =
        work_.file("bare.xml", "<XSE><Plugins><Plugin name=\"limit\" version=\"1.0\"/></Plugins></XSE>");
    EXPECT_EQ("unknown plug-in 'limit'; did you mean 'limits'?",
              run(configuration, signatureFile("")).textOf("config-unknown"));
}

}  // namespace
