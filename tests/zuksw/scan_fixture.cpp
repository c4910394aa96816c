#include "tests/zuksw/scan_fixture.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "scanners/zuksw/language/xml_reader.h"
#include "tests/support/files.h"

namespace {

std::string attribute(const zuksw::Element& element, std::string_view name) {
    const std::string_view* value = element.find(name);
    return value == nullptr ? std::string() : std::string(*value);
}

std::string textIn(const zuksw::Element& element) {
    std::string text(element.text);
    for (const zuksw::Element* child : element.children) text += textIn(*child);
    return text;
}

// Takes both files apart.
class Reader : public zuksw::XmlSink {
  public:
    explicit Reader(ScanResult* result) : result_(result) {}
    std::string onRoot(std::string_view /*name*/) override { return {}; }
    std::string onNode(const zuksw::Element& node) override {
        if (node.name == "Event") {
            result_->events.push_back({attribute(node, "code"), attribute(node, "guid"),
                                       attribute(node, "path"), textIn(node), attribute(node, "count")});
            return {};
        }
        Match match{attribute(node, "guid"), attribute(node, "name"), {}};
        for (const zuksw::Element* child : node.children) {
            if (child->name == "Variable")
                match.variables[attribute(*child, "name")] = attribute(*child, "value");
        }
        result_->matches.push_back(std::move(match));
        return {};
    }

  private:
    ScanResult* result_;
};

}  // namespace

bool ScanResult::has(const std::string& code) const {
    return std::any_of(events.begin(), events.end(),
                       [&](const EventRow& event) { return event.code == code; });
}

std::string ScanResult::textOf(const std::string& code) const {
    for (const EventRow& event : events) {
        if (event.code == code) return event.text;
    }
    return {};
}

std::string ScanResult::values(const std::string& variable) const {
    std::string joined;
    for (const Match& match : matches) {
        const auto found = match.variables.find(variable);
        if (found == match.variables.end()) continue;
        if (!joined.empty()) joined += ' ';
        joined += found->second;
    }
    return joined;
}

void ScanTest::file(const std::string& path, std::string_view content, mode_t mode) {
    std::filesystem::create_directories(std::filesystem::path(treePath(path)).parent_path());
    tree_.file(path.substr(1), content, mode);
}

void ScanTest::directory(const std::string& path) {
    std::filesystem::create_directories(treePath(path));
}

void ScanTest::link(const std::string& target, const std::string& path) {
    std::filesystem::create_directories(std::filesystem::path(treePath(path)).parent_path());
    std::filesystem::create_symlink(target, treePath(path));
}

std::string xml(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&' || c == '<' || c == '"') {
            escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

std::string ScanTest::signature(const std::string& conditions, const std::vector<std::string>& report,
                                const std::string& attributes, const std::string& before) {
    std::string variables;
    for (const std::string& reference : report) {
        variables += "<Variable name=\"" + reference + "\" value=\"${" + reference + "}\"/>";
    }
    return "<Signature guid=\"g\" name=\"n\" " + attributes + ">" + before + "<Detect>" + conditions +
           "</Detect><Report>" + variables + "</Report></Signature>";
}

std::string ScanTest::program() {
    return ZUK_BINARY_DIR "/bin/zuksw";
}

std::string ScanTest::commandLine(const std::string& configuration, const std::string& signatures) const {
    return program() + " -c " + quoted(configuration) + " -o " + quoted(work_.path() + "/output.xml") +
           " -e " + quoted(work_.path() + "/warnings.xml") + " -i " + quoted(signatures) + " 2>&1";
}

ScanResult ScanTest::run(const std::string& configuration, const std::string& signatures) {
    return take(shell(before_ + commandLine(configuration, signatures)));
}

ScanResult ScanTest::take(const ShellResult& shown) const {
    ScanResult result;
    result.status = shown.status;
    result.messages = shown.out;
    result.output = readFile(work_.path() + "/output.xml");
    result.warnings = readFile(work_.path() + "/warnings.xml");
    Reader reader(&result);
    if (result.status == 0) {
        EXPECT_FALSE(zuksw::readXml(result.output, 2, &reader).has_value()) << result.output;
        EXPECT_FALSE(zuksw::readXml(result.warnings, 2, &reader).has_value()) << result.warnings;
    }
    return result;
}

std::string ScanTest::configurationFile(const Settings& settings, const std::string& presets) const {
    std::string plugins;
    Settings all = {{usePrefix_ ? "system/Prefix" : "search/Root", tree_.path()}};
    all.insert(all.end(), settings.begin(), settings.end());
    for (const auto& [name, value] : all) {
        const std::size_t slash = name.find('/');
        plugins += "<Plugin name=\"" + name.substr(0, slash) + "\" version=\"1.0\"><Attribute name=\"" +
                   name.substr(slash + 1) + "\" value=\"" + xml(value) + "\"/></Plugin>";
    }
    return work_.file("configuration.xml", "<KAV><ZUK><XSE version=\"1.0\"><PresetVariables>" + presets +
                                               "</PresetVariables><Plugins>" + plugins +
                                               "</Plugins></XSE></ZUK></KAV>");
}

std::string ScanTest::signatureFile(const std::string& signatures) const {
    return work_.file("signatures.xml", "<Signatures>" + signatures + "</Signatures>");
}

ScanResult ScanTest::scan(const std::string& signatures, const Settings& settings,
                          const std::string& presets) {
    return run(configurationFile(settings, presets), signatureFile(signatures));
}

std::string ScanTest::truth(const std::string& conditions, const Settings& settings) {
    const ScanResult result = scan(signature(conditions), settings);
    if (result.status != 0) return "status " + std::to_string(result.status) + ": " + result.messages;
    if (result.has("signature-invalid")) return "invalid: " + result.textOf("signature-invalid");
    if (!result.matches.empty()) return "yes";
    return result.has("undecided") ? "unknown" : "no";
}
