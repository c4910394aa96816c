// The files of the software scanner against their published schemas, judged by xmllint.
#include <filesystem>

#include "scanners/zuksw/output/events.h"
#include "tests/support/files.h"
#include "tests/support/shell.h"
#include "tests/support/xml_schema.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

class Schema : public ScanTest {
  protected:
    void SetUp() override {
        if (!haveXmllint()) GTEST_SKIP() << "xmllint is not installed";
    }
    static std::string ofSignatures(const std::string& files) {
        return schemaComplaint("zuksw-signatures.xsd", files);
    }
    std::string ofOutput() const { return schemaComplaint("zuksw-output.xsd", work_.path() + "/output.xml"); }
    std::string ofWarnings() const {
        return schemaComplaint("zuksw-warnings.xsd", work_.path() + "/warnings.xml");
    }
    // What the scanner's own check says of the signatures of a file, and the schema's judgement.
    int checkStatus(const std::string& path) const { return shell(program() + " --check -i " + path).status; }
};

const std::string kData = ZUK_SOURCE_DIR "/tests/data/signatures/";

// Words that the language fixes, each list with a condition that has '#' for the word.
struct WordList {
    const char* condition;
    std::vector<std::string> words;
};

const WordList kWordLists[] = {
    {"<File name='x' type='#'/>", {"regular", "directory", "symlink"}},
    {"<File name='x' format='#'/>", {"elf", "script", "zip"}},
    {"<File name='x' as='f'/><Content of='f' match='text' take='#'/>", {"first", "last", "all", "only"}},
    {"<File name='x' as='f'/><Content of='f' text='text' encoding='#'/>", {"bytes", "utf16le", "utf16be"}},
    {"<File name='x' as='f'/><Value of='f' key='/x' format='#'/>",
     {"keyvalue", "properties", "headers", "ini", "json", "yaml", "xml"}},
    {"<File name='x' as='f'/><Elf of='f' kind='#'/>", {"program", "library", "module"}},
    {"<Package name='x' manager='#'/>",
     {"any", "dpkg", "opkg", "rpm", "apk", "pacman", "flatpak", "snap", "pip", "npm", "gem", "jar",
      "dpkg rpm", "dpkg,rpm, apk"}},
    {"<Package name='x' state='#'/>", {"present", "installed", "any"}},
    {"<Test value='1' eq='1' scheme='#'/>",
     {"generic", "deb", "rpm", "apk", "pacman", "semver", "pep440", "maven", "gem", "number", "text",
      "textnocase"}},
    {"<System key='#'/>",
     {"os.id", "os.id_like", "os.version_id", "os.pretty_name", "os.cpe_name", "os.variant_id", "kernel.name",
      "kernel.release", "kernel.version", "machine", "hostname", "libc.version", "container", "init"}},
    {"<Set name='x' value='1' case='#'/>", {"lower", "upper"}},
};

const char* const kBadConditions[] = {
    "<Files name='x'/>",
    "<File nme='x' name='x'/>",
    "<File name='x' type='file'/>",
    "<File name='x' as='1x'/>",
    "<File name='x' minSize='-1'/>",
    "<File name='x' maxSize='1K'/>",
    "<File name='x' min=' 1'/>",
    "<File name='x' optional='true'/>",
    "<File name='x' sha256='00'/>",
    "<File name='x'>text</File>",
    "<File name='x'><File name='y'/></File>",
    "<File name='x' as='f'/><Content match='x'/>",
    "<File name='x' as='f'/><Content of='f' hex='7'/>",
    "<File name='x' as='f'/><Content of='f' match='x' take='any'/>",
    "<File name='x' as='f'/><Value of='f' format='toml' key='x'/>",
    "<File name='x' as='f'/><Value of='f' format='ini'/>",
    "<File name='x' as='f'/><Member of='f' path='x'/>",
    "<File name='x' as='f'/><Library of='f' as='l'/>",
    "<File name='x' as='f'/><Elf of='f' kind='shared'/>",
    "<Package name='x' manager='brew'/>",
    "<Package name='x' state='removed'/>",
    "<Process name='x' pid='1'/>",
    "<System key='kernel'/>",
    "<System key='os.ID'/>",
    "<Matched guid=''/>",
    "<Test value='1' eq='1' scheme='debian'/>",
    "<Test value='1' eq='1' min='1'/>",
    "<Test eq='1'/>",
    "<Set name='x' value='1' optional='yes'/>",
    "<Set name='x' value='1' case='title'/>",
    "<Set name='x y' value='1'/>",
    "<All/>",
    "<Any first='1'><File name='x'/></Any>",
    "<AtLeast><File name='x'/></AtLeast>",
    "<AtLeast count='0'><File name='x'/></AtLeast>",
    "<All>text<File name='x'/></All>",
};

const char* const kBadSignatures[] = {
    "<Signature name='n'><Detect><File name='x'/></Detect></Signature>",
    "<Signature guid='g'><Detect><File name='x'/></Detect></Signature>",
    "<Signature guid='g' name='n'/>",
    "<Signature guid='g' name='n'><Detect/></Signature>",
    "<Signature guid='g' name='n' per='file'><Detect><File name='x'/></Detect></Signature>",
    "<Signature guid='g' name='n' language='2'><Detect><File name='x'/></Detect></Signature>",
    "<Signature guid='g' name='n'><Input/><Detect><File name='x'/></Detect></Signature>",
    "<Signature guid='g' name='n'><Detect><File name='x'/></Detect><Report><Variable "
    "value='1'/></Report></Signature>",
    "<Signature guid='g' name='n'><Detect><File name='x'/></Detect><Report><Variable "
    "name='v'/></Report></Signature>",
    "<Signature guid='g' name='n'><Detect><File name='x'/></Detect><Detect><File "
    "name='x'/></Detect></Signature>",
};

// What the scanner lets pass, with an event.
const char* const kCarelessSignatures[] = {
    "text",
    "<Signatur/>",
    "<Signature guid='g' name='n' colour='red'><Detect><File name='x'/></Detect></Signature>",
    "<Signature guid='g' name='n'><Detect><File name='x'/></Detect><Reports/></Signature>",
};

}  // namespace

TEST_F(Schema, HoldsForTheExamples) {
    EXPECT_EQ("", ofSignatures(kData + "examples.xml"));
}

TEST_F(Schema, HoldsForTheCatalogue) {
    EXPECT_EQ("", ofSignatures(ZUK_SOURCE_DIR "/signatures/*.xml"));
}

TEST_F(Schema, HoldsForEveryElementAndAttribute) {
    EXPECT_EQ("", ofSignatures(kData + "everything.xml"));
    EXPECT_EQ(0, checkStatus(kData + "everything.xml"));
}

TEST_F(Schema, HoldsForEveryWordThatTheScannerKnows) {
    std::string signatures;
    for (const WordList& list : kWordLists) {
        for (const std::string& word : list.words) {
            std::string condition = list.condition;
            condition.replace(condition.find('#'), 1, word);
            signatures += "<Signature guid='" + std::to_string(signatures.size()) + "' name='n'><Detect>" +
                          condition + "</Detect></Signature>\n";
        }
    }
    const std::string path = signatureFile(signatures);
    EXPECT_EQ("", ofSignatures(path));
    EXPECT_EQ(0, checkStatus(path)) << shell(program() + " --check -i " + path).out;
}

TEST_F(Schema, RefusesTheConditionsThatTheScannerRefuses) {
    for (const char* condition : kBadConditions) {
        const std::string path = signatureFile(signature(condition));
        EXPECT_NE("", ofSignatures(path)) << condition;
        EXPECT_EQ(3, checkStatus(path)) << condition;
    }
}

TEST_F(Schema, RefusesTheSignaturesThatTheScannerRefuses) {
    for (const char* signature : kBadSignatures) {
        const std::string path = signatureFile(signature);
        EXPECT_NE("", ofSignatures(path)) << signature;
        EXPECT_EQ(3, checkStatus(path)) << signature;
    }
}

TEST_F(Schema, RefusesWhatTheScannerOnlyIgnores) {
    for (const char* signature : kCarelessSignatures) {
        const std::string path = signatureFile(signature);
        EXPECT_NE("", ofSignatures(path)) << signature;
        EXPECT_EQ(0, checkStatus(path)) << signature;
    }
}

TEST_F(Schema, HoldsForTwoSignaturesWithOneGuid) {
    const std::string path = signatureFile(signature("<File name='x'/>") + signature("<File name='y'/>"));
    EXPECT_EQ("", ofSignatures(path));
    EXPECT_EQ(0, checkStatus(path));
}

TEST_F(Schema, HoldsForAnEmptyRun) {
    scan("");
    EXPECT_EQ("", ofOutput());
    EXPECT_EQ("", ofWarnings());
}

TEST_F(Schema, HoldsForResultsWithEvidenceOfAllKinds) {
    file("/opt/t/tool", "tool 1.2\x01\xFF\n");
    file("/var/lib/dpkg/status",
         "Package: tool\nStatus: install ok installed\nArchitecture: all\nVersion: 1\n");
    file("/opt/x.swidtag",
         "<SoftwareIdentity xmlns='http://standards.iso.org/iso/19770/-2/2015/schema.xsd' name='Tool' "
         "tagId='t' "
         "version='1'><Entity name='e' regid='r' role='tagCreator'/></SoftwareIdentity>");
    shell("cd " + treePath("/opt") + " && tar -cf t.tar t");
    const std::string one = signature(
        "<File as='f' name='tool'/><Content of='f' match='(?s)tool (?P&lt;v&gt;.*)'/><Package name='tool'/>"
        "<Tag name='Tool'/><System key='kernel.name'/><File as='t' name='t.tar'/><Member of='t' "
        "path='t/tool' as='m'/>"
        "<Matched guid='h'/>",
        {"v"});
    const ScanResult result =
        scan(one +
             "<Signature guid='h' name='caf&#233;&#10;'><Detect><Test value='1' eq='1'/></Detect><Report>"
             "<Metadata d='${host.name}'>a<b c='${host.name}'/></Metadata></Report></Signature>");
    ASSERT_EQ(2U, result.matches.size()) << result.warnings;
    for (const char* kind : {"file", "member", "package", "tag", "system", "signature"}) {
        EXPECT_NE(std::string::npos, result.output.find("kind=\"" + std::string(kind) + "\"")) << kind;
    }
    EXPECT_EQ("", ofOutput());
    EXPECT_EQ("", ofWarnings());
}

TEST_F(Schema, HoldsForARunOfTheExamples) {
    file("/usr/bin/busybox",
         "\x7F"
         "ELF BusyBox v1.36.1 ");
    file("/srv/node_modules/npm/package.json", "{\"name\": \"npm\", \"version\": \"9.9\"}");
    file("/opt/firefox/application.ini", "[App]\nName=Firefox\nVersion=1\n");
    file("/opt/node_modules/npm/package.json", "{broken");
    const ScanResult result = run(configurationFile({}), kData + "examples.xml");
    EXPECT_LT(2U, result.matches.size()) << result.output;
    EXPECT_TRUE(result.has("bad-format"));
    EXPECT_EQ("", ofOutput());
    EXPECT_EQ("", ofWarnings());
}

TEST_F(Schema, HoldsForEveryEvent) {
    zuksw::Events events(1000);
    for (int code = 0; code <= static_cast<int>(zuksw::EventCode::kMoreEvents); ++code) {
        events.add(static_cast<zuksw::EventCode>(code), "g\x01", "why <\xFF>", "/path\n");
    }
    work_.file("warnings.xml", events.toXml());
    EXPECT_EQ("", ofWarnings());
}

TEST_F(Schema, RefusesOtherWarnings) {
    for (const char* event :
         {"<Event severity='info' count='1'/>", "<Event code='denied' count='1'/>",
          "<Event code='denied' severity='info'/>", "<Event code='denied' severity='info' count='0'/>",
          "<Event code='strange' severity='info' count='1'/>",
          "<Event code='denied' severity='fatal' count='1'/>",
          "<Event code='denied' severity='info' count='1'><b/></Event>", "<Warning/>", "text"}) {
        work_.file("warnings.xml", "<Warnings>" + std::string(event) + "</Warnings>");
        EXPECT_NE("", ofWarnings()) << event;
    }
}

TEST_F(Schema, RefusesOtherResults) {
    for (const char* result :
         {"<MatchedSignature name='n'/>", "<MatchedSignature guid='g'/>", "<Signature guid='g' name='n'/>",
          "text", "<MatchedSignature guid='g' name='n'><Variable name='v'/></MatchedSignature>",
          "<MatchedSignature guid='g' name='n'><Variable name='' value=''/></MatchedSignature>",
          "<MatchedSignature guid='g' name='n'><Metadata/><Variable name='v' value=''/></MatchedSignature>",
          "<MatchedSignature guid='g' name='n'><Metadata/><Metadata/></MatchedSignature>",
          ("<MatchedSignature guid='g' name='n'><Metadata>"
           "<Evidence><Item kind='dream'/></Evidence></Metadata></MatchedSignature>"),
          ("<MatchedSignature guid='g' name='n'><Metadata>"
           "<Evidence><Item kind='file' size='big'/></Evidence></Metadata></MatchedSignature>")}) {
        work_.file("output.xml", "<Results>" + std::string(result) + "</Results>");
        EXPECT_NE("", ofOutput()) << result;
    }
}
