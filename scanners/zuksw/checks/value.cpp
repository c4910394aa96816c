#include <algorithm>
#include <utility>

#include "scanners/zuksw/checks/object_of.h"
#include "scanners/zuksw/checks/table.h"
#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/evaluation/match.h"
#include "scanners/zuksw/formats/value.h"

namespace zuksw {
namespace {

constexpr std::uint64_t kMaxFile = std::uint64_t{16} << 20U;

// One value of a text file or of a member of an archive; several hits are several rows.
class ValueCheck : public Check {
  public:
    explicit ValueCheck(ConditionReader& attributes);

    Cost cost() const override { return Cost::kContent; }

  protected:
    void evaluate(const Row& row, const Context& context, Rows* out) const override;

  private:
    void readFormat(ConditionReader& attributes);
    void report(const FileObject& file, const std::string& value, const Row& row, const Context& context,
                Rows* out) const;

    std::optional<Slot> of_;
    ValueFormat format_ = ValueFormat::kKeyValue;
    Template key_;
    std::optional<Template> section_;
    std::optional<Slot> set_;
    Comparison comparison_;
};

ValueCheck::ValueCheck(ConditionReader& attributes) {
    for (const char* name : {"of", "format", "key"}) attributes.require(name);
    of_ = attributes.object("of", Kind::kFile);
    readFormat(attributes);
    set_ = attributes.binds("set", Kind::kText);
    comparison_ = attributes.comparison();
}

void ValueCheck::readFormat(ConditionReader& attributes) {
    const auto name = attributes.raw("format");
    key_ = attributes.text("key").value_or(Template());
    section_ = attributes.text("section");
    const std::optional<ValueFormat> format = name ? valueFormatByName(*name) : std::nullopt;
    if (name && !format) {
        attributes.report("format=\"" + std::string(*name) +
                          "\": write one of: keyvalue, properties, headers, ini, json, yaml, xml");
    }
    format_ = format.value_or(ValueFormat::kKeyValue);
    if (section_ && format_ != ValueFormat::kIni)
        attributes.report("'section' is for format=\"ini\"; remove it");
    const std::string problem = key_.isLiteral() ? valueKeyProblem(format_, key_.literal()) : std::string();
    if (format && attributes.has("key") && !problem.empty()) attributes.report("'key': " + problem);
}

void ValueCheck::report(const FileObject& file, const std::string& value, const Row& row,
                        const Context& context, Rows* out) const {
    Row found = row;
    const Answer answer = compare(comparison_, value, Scheme::kGeneric, context, &found);
    if (answer.isNo() || (set_ && !bindText(*set_, value, context, &found))) return;
    if (answer.causes != 0) return undecided(found, answer.causes, out);
    holds(std::move(found), {{"kind", "file"}, {"path", file.path()}, {"size", std::to_string(file.size())}},
          out);
}

void ValueCheck::evaluate(const Row& row, const Context& context, Rows* out) const {
    const ObjectOf<FileObject> file(row.at(*of_));
    if (file.causes != 0) undecided(row, file.causes, out);
    if (!file) return;
    const Text key = expand(key_, row, context);
    const Text section = section_ ? expand(*section_, row, context) : Text::of({});
    const Text& missing = key.isSet() ? section : key;
    if (missing.state == Text::State::kUnknown) undecided(row, missing.causes, out);
    if (!missing.isSet()) return;
    if (file->size() > std::min(kMaxFile, context.machine.configuration.content.maxFileSize)) {
        context.machine.events.add(EventCode::kTooLarge, {},
                                   "no values are taken from files above 16 MiB or content/MaxFileSize",
                                   file->path());
        return undecided(row, toCauses(Cause::kTooLarge), out);
    }
    const Opened opened = file->open(context.machine);
    Causes causes = opened.causes;
    if (opened.contents) causes |= context.machine.takeBytes(opened.contents->size());
    if (causes != 0) return undecided(row, causes, out);
    if (!opened.contents) return;
    const Contents::Reading reading(*opened.contents, {0, opened.contents->size()});
    const auto inSection = section_ ? std::make_optional<std::string_view>(section.text) : std::nullopt;
    const Values values = extractValues(format_, opened.contents->bytes(), inSection, key.text);
    if (opened.contents->changed()) return undecided(row, toCauses(Cause::kChanged), out);
    if (values.malformed) {
        context.machine.events.add(EventCode::kBadFormat, {}, "the file is malformed", file->path());
        return undecided(row, toCauses(Cause::kBadFormat), out);
    }
    for (const std::string& value : values.found) report(*file, value, row, context, out);
    limitRows(row, context, out);
}

}  // namespace

std::unique_ptr<Check> makeValue(ConditionReader& attributes, DetectReader& /*reader*/) {
    return std::make_unique<ValueCheck>(attributes);
}

}  // namespace zuksw
