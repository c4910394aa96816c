// The authors' manual and the program say the same: docs/signatures.md against the tables in the code.

#include <algorithm>
#include <regex>
#include <sstream>
#include <tuple>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/cause.h"
#include "scanners/zuksw/language/properties.h"
#include "scanners/zuksw/output/events.h"
#include "scanners/zuksw/setup/settings.h"
#include "scanners/zuksw/sources/packages.h"
#include "scanners/zuksw/versions/compare.h"
#include "tests/support/files.h"
#include "tests/zuksw/scan_fixture.h"

namespace {

using Words = std::vector<std::string>;

const std::string& manual() {
    static const std::string kText = readFile(ZUK_SOURCE_DIR "/docs/signatures.md");
    return kText;
}

// What stands below a heading, up to the next of the same level or a higher one.
std::string section(const std::string& heading) {
    const std::size_t begin = manual().find("\n" + heading + "\n");
    if (begin == std::string::npos) return {};
    std::size_t end = manual().size();
    for (std::string mark = "\n" + heading.substr(0, heading.find(' ')) + " "; mark.size() > 3;
         mark.erase(1, 1)) {
        end = std::min(end, manual().find(mark, begin + 1));
    }
    return manual().substr(begin, end - begin);
}

// The rows of a section's tables, each as its cells.
std::vector<Words> rows(const std::string& heading) {
    std::vector<Words> found;
    std::istringstream lines(section(heading));
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 2, "| ") != 0) continue;
        Words cells;
        std::istringstream cellText(line.substr(1));
        for (std::string cell; std::getline(cellText, cell, '|');) {
            const std::size_t first = cell.find_first_not_of(' ');
            cells.push_back(first == cell.npos ? ""
                                               : cell.substr(first, cell.find_last_not_of(' ') + 1 - first));
        }
        found.push_back(cells);
    }
    if (!found.empty()) found.erase(found.begin());  // the head
    return found;
}

// The words in code type.
Words codeWords(const std::string& text) {
    static const std::regex kCode("`([^`]*)`");
    Words words;
    for (std::sregex_iterator at(text.begin(), text.end(), kCode); at != std::sregex_iterator(); ++at) {
        words.push_back((*at)[1]);
    }
    return words;
}

bool has(const Words& words, const std::string& word) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

TEST(Manual, NamesEverySetting) {
    Words expected;
    for (const zuksw::Setting& setting : zuksw::settings()) {
        expected.push_back(std::string(setting.plugin) + "/" + setting.attribute);
    }
    Words documented;
    for (const Words& row : rows("### Settings")) documented.push_back(codeWords(row.at(0)).at(0));
    EXPECT_EQ(expected, documented);
}

// All that is no list.
auto valuesOf(const zuksw::Configuration& c) {
    return std::make_tuple(
        std::tie(c.search.fileSystems, c.search.containers, c.search.maxDepth, c.search.maxEntries,
                 c.search.linksToFiles, c.search.incompleteIsUnknown, c.system.prefix),
        std::tie(c.content.maxFileSize, c.content.maxTotal, c.content.regexMemory, c.content.maxCapture),
        std::tie(c.archive.enabled, c.archive.maxDepth, c.archive.maxMembers, c.archive.maxMemberSize,
                 c.archive.maxTotal, c.archive.maxRatio),
        std::tie(c.processes.enabled, c.processes.captureArguments),
        std::tie(c.limits.timeBudget, c.limits.threads, c.limits.nice, c.limits.maxRows, c.limits.maxResults,
                 c.limits.maxEvents, c.limits.strict),
        std::tie(c.output.evidence));
}

TEST(Manual, TellsTheDefaultsOfSettings) {
    const zuksw::Configuration defaults;
    const std::vector<Words> documented = rows("### Settings");
    ASSERT_EQ(zuksw::settings().size(), documented.size());
    for (std::size_t i = 0; i < documented.size(); ++i) {
        const Words value = codeWords(documented[i].at(1));
        const zuksw::Setting& setting = zuksw::settings()[i];
        if (value.size() != 1 || documented[i][1] != "`" + value[0] + "`") continue;  // told in words
        zuksw::Configuration configuration;
        EXPECT_TRUE(setting.apply(value[0], &configuration)) << setting.plugin << "/" << setting.attribute;
        EXPECT_EQ(valuesOf(defaults), valuesOf(configuration)) << setting.plugin << "/" << setting.attribute;
    }
}

TEST(Manual, ListsEveryEventWithItsSeverity) {
    zuksw::Events events(1000);
    for (int code = 0; code <= static_cast<int>(zuksw::EventCode::kMoreEvents); ++code) {
        events.add(static_cast<zuksw::EventCode>(code), {}, "x");
    }
    Words expected;
    static const std::regex kEvent("code=\"([^\"]*)\" severity=\"([^\"]*)\"");
    const std::string xml = events.toXml();
    for (std::sregex_iterator at(xml.begin(), xml.end(), kEvent); at != std::sregex_iterator(); ++at) {
        expected.push_back("`" + (*at)[1].str() + "` " + (*at)[2].str());
    }
    Words documented;
    for (const Words& row : rows("### Events")) documented.push_back(row.at(0) + " " + row.at(1));
    EXPECT_EQ(expected, documented);
}

TEST(Manual, ExplainsEveryCause) {
    const Words words = codeWords(section("### Events"));
    std::istringstream causes(zuksw::describe(~zuksw::Causes{0}));
    for (std::string cause; std::getline(causes >> std::ws, cause, ',');)
        EXPECT_TRUE(has(words, cause)) << cause;
}

TEST(Manual, ListsTheProperties) {
    using zuksw::Kind;
    const std::pair<const char*, Kind> kinds[] = {
        {"file", Kind::kFile}, {"package", Kind::kPackage}, {"process", Kind::kProcess}, {"tag", Kind::kTag}};
    for (const auto& [name, kind] : kinds) {
        Words expected;
        std::istringstream properties{std::string(zuksw::propertiesOf(static_cast<unsigned>(kind)))};
        for (std::string property; std::getline(properties >> std::ws, property, ',');)
            expected.push_back(property);
        for (const Words& row : rows("### Templates")) {
            if (row.at(0) != name) continue;
            EXPECT_EQ(expected, codeWords(row.at(1)));
        }
    }
    EXPECT_EQ(5U, rows("### Templates").size());
}

TEST(Manual, ListsTheSchemes) {
    Words documented;
    for (const Words& row : rows("### Version schemes")) documented.push_back(codeWords(row.at(0)).at(0));
    Words expected;
    for (int scheme = 0; scheme <= static_cast<int>(zuksw::Scheme::kTextNoCase); ++scheme) {
        expected.emplace_back(zuksw::schemeName(static_cast<zuksw::Scheme>(scheme)));
    }
    EXPECT_EQ(expected, documented);
}

TEST(Manual, ListsThePackageManagers) {
    const Words words = codeWords(section("#### Package"));
    for (const std::string_view manager : zuksw::Packages::managers())
        EXPECT_TRUE(has(words, std::string(manager))) << manager;
}

// The attributes that the schema gives to a type, those of attribute groups left out.
Words schemaAttributes(const std::string& type) {
    static const std::string kSchema = readFile(ZUK_SOURCE_DIR "/schemas/zuksw-signatures.xsd");
    const std::size_t begin = kSchema.find("<xs:complexType name=\"" + type + "\"");
    if (begin == std::string::npos) return {};
    const std::string text = kSchema.substr(begin, kSchema.find("\n  </xs:complexType>", begin) - begin);
    static const std::regex kAttribute("<xs:attribute name=\"([^\"]*)\"");
    Words names;
    for (std::sregex_iterator at(text.begin(), text.end(), kAttribute); at != std::sregex_iterator(); ++at) {
        names.push_back((*at)[1]);
    }
    return names;
}

// The section that explains a condition.
std::string sectionOf(const std::string& element) {
    for (const char* heading : {"#### All, Any, Not, AtLeast", "#### Test, Set"}) {
        if ((", " + std::string(heading).substr(5) + ",").find(", " + element + ",") != std::string::npos)
            return section(heading);
    }
    return section("#### " + element);
}

TEST(Manual, ExplainsEveryConditionWithItsAttributes) {
    std::size_t attributes = 0;
    for (const zuksw::CheckKind& kind : zuksw::checkKinds()) {
        const std::string element(kind.element);
        const std::string text = sectionOf(element);
        EXPECT_NE("", text) << element;
        const Words words = codeWords(text);
        for (const std::string& attribute : schemaAttributes(element)) {
            const bool ofEveryone = attribute == "min" || attribute == "max" || attribute == "optional";
            EXPECT_TRUE(ofEveryone || has(words, attribute)) << element << " " << attribute;
            ++attributes;
        }
    }
    EXPECT_GT(attributes, 50U);
}

class ManualExamples : public ScanTest {};

TEST_F(ManualExamples, AreGoodSignatures) {
    std::size_t count = 0;
    for (std::size_t at = manual().find("<Signatures>"); at != std::string::npos;
         at = manual().find("<Signatures>", at + 1)) {
        const std::string text = manual().substr(at, manual().find("</Signatures>", at) + 13 - at);
        const ShellResult result = shell(program() + " --check -i " + work_.file("example.xml", text));
        EXPECT_EQ(0, result.status) << result.out;
        EXPECT_NE(std::string::npos, result.out.find("warnings=0")) << result.out;
        ++count;
    }
    EXPECT_EQ(2U, count);
}

}  // namespace
