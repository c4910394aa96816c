#include "scanners/zuksw/sources/tags.h"

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/language/xml_reader.h"

namespace zuksw {
namespace {

constexpr std::uint64_t kMaxFile = std::uint64_t{16} << 20U;

std::string valueOf(const Element& element, std::string_view attribute) {
    const std::string_view* value = element.find(attribute);
    return value == nullptr ? std::string() : std::string(*value);
}

std::string_view localName(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

bool isTrue(const Element& element, const char* attribute) {
    const std::string value = valueOf(element, attribute);
    return value == "true" || value == "1";
}

class Reader : public XmlSink {
  public:
    std::string onRoot(std::string_view name) override {
        return localName(name) == "SoftwareIdentity" ? "" : "no software identification tag";
    }

    std::string onNode(const Element& root) override {
        tag.name = valueOf(root, "name");
        tag.version = valueOf(root, "version");
        tag.tagId = valueOf(root, "tagId");
        tag.isPrimary = !isTrue(root, "corpus") && !isTrue(root, "patch") && !isTrue(root, "supplemental");
        for (const Element* child : root.children) {
            if (localName(child->name) != "Entity") continue;
            const bool isCreator = valueOf(*child, "role").find("tagCreator") != std::string::npos;
            if (isCreator || tag.regid.empty()) tag.regid = valueOf(*child, "regid");
            if (isCreator) break;
        }
        return {};
    }

    TagObject tag;
};

}  // namespace

Text TagObject::property(std::string_view property, Machine& /*machine*/) const {
    if (property == "path") return Text::of(path);
    const std::string& text = property == "name"      ? name
                              : property == "version" ? version
                              : property == "tagId"   ? tagId
                                                      : regid;
    return text.empty() ? Text() : Text::of(text);
}

std::optional<TagObject> parseTag(std::string_view bytes) {
    Reader reader;
    if (readXml(bytes, 1, &reader)) return std::nullopt;
    return std::move(reader.tag);
}

FileQuery Tags::query() {
    FileQuery query;
    std::string error;
    query.key = "tags";
    query.names.push_back(*NameGlob::parse("*.swidtag", &error));
    return query;
}

void Tags::read(Machine& machine) {
    const FoundFiles& files = machine.files.walked(query());
    found_.causes = files.causes;
    for (const auto& file : files.files) {
        Causes causes =
            file->size() > kMaxFile ? toCauses(Cause::kTooLarge) : machine.takeBytes(file->size());
        const Opened opened = causes == 0 ? file->open(machine) : Opened{nullptr, causes};
        found_.causes |= opened.causes;
        if (!opened.contents) continue;
        std::optional<TagObject> tag = parseTag(opened.contents->bytes());
        if (!tag || opened.contents->changed()) {
            machine.events.add(EventCode::kBadFormat, {}, "the file is malformed", file->path());
            found_.causes |= toCauses(Cause::kBadFormat);
            continue;
        }
        tag->path = file->path();
        if (tag->isPrimary) found_.tags.push_back(std::make_shared<const TagObject>(*std::move(tag)));
    }
}

const Tags::Found& Tags::all(Machine& machine) {
    std::call_once(once_, [&] { read(machine); });
    return found_;
}

}  // namespace zuksw
