#include "scanners/zuksw/language/signature_reader.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/language/condition_reader.h"
#include "scanners/zuksw/language/metadata_reader.h"
#include "scanners/zuksw/language/suggestion.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxInputs = 64;
constexpr std::size_t kMaxVariables = 256;
constexpr std::size_t kMaxGuid = 128;
constexpr std::size_t kMaxIgnored = 100;  // findings; a hostile file can hold millions
constexpr std::uint64_t kLanguage = 1;

class Reader {
  public:
    Reader(const Element& element, PatternStore* patterns, Presets* presets, SignatureReport* report)
        : element_(element), patterns_(patterns), presets_(presets), report_(report) {}

    Signature read();

  private:
    void readAttributes();
    void readLanguage(std::string_view value);
    void readInput(const Element& element);
    void readDetect();
    void readReport(const Element& element);
    void readVariable(const Element& element);
    void readMetadata(const Element& element);
    void readOutcome();
    using Words = std::initializer_list<std::string_view>;
    void ignore(const Element& element, Words known);
    void ignoreAttributes(const Element& element, Words known);
    void problem(const Element& element, std::string text) { scope_.report(element.offset, std::move(text)); }

    const Element& element_;
    PatternStore* patterns_;
    Presets* presets_;
    SignatureReport* report_;
    Scope scope_;
    Signature signature_;
    const Element* detect_ = nullptr;
    const Element* reportElement_ = nullptr;
    bool hasMetadata_ = false;
};

std::string valueOf(const Element& element, std::string_view attribute) {
    const std::string_view* value = element.find(attribute);
    return value == nullptr ? std::string() : std::string(*value);
}

void Reader::ignore(const Element& element, Words known) {
    if (report_->ignored.size() == kMaxIgnored) return;
    if (element.name.empty()) {
        if (!isBlank(element.text))
            report_->ignored.push_back({element.offset, "text that belongs nowhere; remove it"});
        return;
    }
    const bool isCondition = findCheckKind(element.name) != nullptr;
    report_->ignored.push_back({element.offset, "unknown element <" + std::string(element.name) + ">; " +
                                                    (isCondition ? "a condition stands inside <Detect>"
                                                                 : suggest(element.name, known))});
}

void Reader::ignoreAttributes(const Element& element, Words known) {
    for (const Attribute& attribute : element.attributes) {
        if (report_->ignored.size() == kMaxIgnored) return;
        if (std::find(known.begin(), known.end(), attribute.name) != known.end()) continue;
        report_->ignored.push_back(
            {element.offset, "<" + std::string(element.name) + "> has an unknown attribute '" +
                                 std::string(attribute.name) + "'; " + suggest(attribute.name, known)});
    }
}

void Reader::readLanguage(std::string_view value) {
    const auto version = parseNumber(value);
    if (!version || *version == 0) {
        return problem(element_, "language=\"" + std::string(value) + "\": the only version is 1");
    }
    if (*version <= kLanguage) return;
    report_->newerLanguage = true;
    problem(element_, "it is written for language version " + std::string(value) +
                          "; this scanner knows version 1; write it for that, or take a newer scanner");
}

void Reader::readAttributes() {
    ignoreAttributes(element_, {"guid", "name", "per", "place", "prefer", "language"});
    signature_.guid = valueOf(element_, "guid");
    signature_.name = valueOf(element_, "name");
    if (signature_.guid.empty())
        problem(element_, "the attribute 'guid' is missing; add one that is used nowhere else");
    if (signature_.guid.size() > kMaxGuid) problem(element_, "the guid is longer than 128 bytes; shorten it");
    if (element_.find("name") == nullptr) problem(element_, "the attribute 'name' is missing; add it");
    const std::string per = valueOf(element_, "per");
    signature_.perMachine = per == "machine";
    if (element_.find("per") != nullptr && per != "machine" && per != "place") {
        problem(element_, "per=\"" + per + "\": write 'place' or 'machine'");
    }
    const std::string_view* language = element_.find("language");
    if (language != nullptr) readLanguage(*language);
}

void Reader::readInput(const Element& element) {
    if (signature_.inputs.size() == kMaxInputs)
        return problem(element, "there are more than 64 Inputs; merge some");
    ignoreAttributes(element, {"name", "default"});
    for (const Element* child : element.children) ignore(*child, {});
    const std::string name = valueOf(element, "name");
    Input input;
    input.slot = scope_.bind(name, Kind::kText, element.offset);
    const bool twice = std::any_of(signature_.inputs.begin(), signature_.inputs.end(),
                                   [&](const Input& other) { return other.slot == input.slot; });
    if (twice) problem(element, "the Input '" + name + "' stands there twice; remove one");
    const std::string* preset = presets_->take(signature_.guid, name);
    if (preset != nullptr) {
        input.value = *preset;
    } else if (element.find("default") != nullptr) {
        input.value = valueOf(element, "default");
    }
    if (input.value) scope_.fix(input.slot, *input.value);
    signature_.inputs.push_back(std::move(input));
}

void Reader::readDetect() {
    if (detect_ == nullptr)
        return problem(element_, "there is no <Detect>; add one with at least one condition");
    DetectReader reader(&scope_, patterns_);
    std::unique_ptr<Check> detect = reader.readDetect(*detect_);
    signature_.detect.reset(static_cast<All*>(detect.release()));
    signature_.references = reader.takeReferences();
}

void Reader::readVariable(const Element& element) {
    auto& variables = signature_.variables;
    if (variables.size() == kMaxVariables)
        return problem(element, "more than 256 variables are reported; leave some out");
    ignoreAttributes(element, {"name", "value"});
    for (const Element* child : element.children) ignore(*child, {});
    const std::string name = valueOf(element, "name");
    if (name.empty()) problem(element, "a reported <Variable> needs a 'name'; add it");
    if (element.find("value") == nullptr) problem(element, "the attribute 'value' is missing; add it");
    variables.erase(std::remove_if(variables.begin(), variables.end(),
                                   [&](const ReportVariable& other) { return other.name == name; }),
                    variables.end());
    variables.push_back({name, Template::parse(valueOf(element, "value"), &scope_, element.offset)});
}

void Reader::readMetadata(const Element& element) {
    if (hasMetadata_) return problem(element, "there is more than one <Metadata>; merge them");
    hasMetadata_ = true;
    signature_.metadata = zuksw::readMetadata(element, &scope_);
}

void Reader::readReport(const Element& element) {
    ignoreAttributes(element, {});
    for (const Element* child : element.children) {
        if (child->name == "Variable") {
            readVariable(*child);
        } else if (child->name == "Metadata") {
            readMetadata(*child);
        } else {
            ignore(*child, {"Variable", "Metadata"});
        }
    }
}

// What makes one result of several rows.
void Reader::readOutcome() {
    const std::string_view* place = element_.find("place");
    if (place != nullptr) signature_.place = Template::parse(*place, &scope_, element_.offset);
    const std::string prefer = valueOf(element_, "prefer");
    if (prefer.empty()) return;
    if (scope_.isBound(prefer.substr(0, prefer.find('.')))) {
        signature_.prefer = Template::parse("${" + prefer + "}", &scope_, element_.offset);
        return;
    }
    const auto& variables = signature_.variables;
    const auto found = std::find_if(variables.begin(), variables.end(),
                                    [&](const ReportVariable& variable) { return variable.name == prefer; });
    if (found == variables.end()) {
        return problem(element_, "prefer=\"" + prefer +
                                     "\": nothing binds or reports that name; report it or correct it");
    }
    signature_.preferVariable = static_cast<std::size_t>(found - variables.begin());
}

Signature Reader::read() {
    readAttributes();
    for (const Element* child : element_.children) {
        if (child->name == "Input") {
            readInput(*child);
        } else if (child->name == "Detect") {
            if (detect_ != nullptr) problem(*child, "there is more than one <Detect>; merge them");
            detect_ = child;
        } else if (child->name == "Report") {
            if (reportElement_ != nullptr) problem(*child, "there is more than one <Report>; merge them");
            reportElement_ = child;
        } else {
            ignore(*child, {"Input", "Detect", "Report"});
        }
    }
    readDetect();
    if (reportElement_ != nullptr) readReport(*reportElement_);
    readOutcome();
    scope_.checkUses();
    signature_.slots = scope_.size();
    report_->advice = scope_.advice();
    report_->problems = scope_.problems();
    signature_.valid = report_->problems.empty();
    return std::move(signature_);
}

}  // namespace

Signature readSignature(const Element& element, PatternStore* patterns, Presets* presets,
                        SignatureReport* report) {
    return Reader(element, patterns, presets, report).read();
}

}  // namespace zuksw
