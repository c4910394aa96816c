#include "scanners/zuksw/setup/configuration.h"

#include <algorithm>
#include <utility>

#include "scanners/zuksw/language/line_index.h"
#include "scanners/zuksw/language/suggestion.h"
#include "scanners/zuksw/language/utf8.h"
#include "scanners/zuksw/language/xml_reader.h"
#include "scanners/zuksw/setup/settings.h"

namespace zuksw {
namespace {

constexpr int kDepthOfOptions = 4;

std::string valueOf(const Element& element, std::string_view attribute) {
    const std::string_view* value = element.find(attribute);
    return value == nullptr ? std::string() : std::string(*value);
}

const Element* findOptions(const Element& element, int depth) {
    if (element.name == "XSE") return &element;
    if (depth == kDepthOfOptions) return nullptr;
    for (const Element* child : element.children) {
        const Element* found = findOptions(*child, depth + 1);
        if (found != nullptr) return found;
    }
    return nullptr;
}

class Reader : public XmlSink {
  public:
    Reader(Configuration* configuration, Events* events) : configuration_(configuration), events_(events) {}

    std::string onRoot(std::string_view /*name*/) override { return {}; }
    std::string onNode(const Element& root) override;

    /** The first value that could not be parsed: where, and why. */
    std::optional<XmlError> badValue;

  private:
    void readPresets(const Element& element);
    void readPlugin(const Element& element);
    void readAttribute(const std::string& plugin, const Element& element);
    void unknown(const Element& element, std::string_view remedy = "it is ignored");
    void unknownPlugin(const std::string& plugin);
    void unknownSetting(const std::string& plugin, const std::string& attribute);

    Configuration* configuration_;
    Events* events_;
};

void Reader::unknown(const Element& element, std::string_view remedy) {
    if (element.name.empty()) return;
    events_->add(EventCode::kConfigUnknown, {},
                 "unknown element <" + std::string(element.name) + ">; " + std::string(remedy));
}

std::string Reader::onNode(const Element& root) {
    const Element* options = findOptions(root, 1);
    if (options == nullptr) {
        events_->add(EventCode::kConfigUnknown, {}, "there is no element <XSE>; every default is used");
        return {};
    }
    for (const Element* child : options->children) {
        if (child->name == "PresetVariables") {
            readPresets(*child);
        } else if (child->name == "Plugins") {
            for (const Element* plugin : child->children) readPlugin(*plugin);
        } else {
            unknown(*child);
        }
    }
    return {};
}

void Reader::readPresets(const Element& element) {
    for (const Element* child : element.children) {
        if (child->name != "Variable") {
            unknown(*child);
            continue;
        }
        configuration_->presets.push_back(
            {valueOf(*child, "name"), valueOf(*child, "value"), valueOf(*child, "guid")});
    }
}

void Reader::readPlugin(const Element& element) {
    if (element.name != "Plugin") return unknown(element);
    const std::string name = valueOf(element, "name");
    const std::string version = valueOf(element, "version");
    if (version != "1.0") {
        events_->add(EventCode::kConfigUnknown, {},
                     "plug-in '" + name + "' has version '" + version + "'; it is read as 1.0");
    }
    const auto& known = settings();
    const bool isKnown = std::any_of(known.begin(), known.end(),
                                     [&](const Setting& setting) { return name == setting.plugin; });
    if (!isKnown) return unknownPlugin(name);
    for (const Element* child : element.children) {
        if (child->name == "Attribute") {
            readAttribute(name, *child);
        } else {
            unknown(*child);
        }
    }
}

void Reader::unknownPlugin(const std::string& plugin) {
    std::vector<std::string_view> plugins;
    for (const Setting& setting : settings()) plugins.emplace_back(setting.plugin);
    events_->add(EventCode::kConfigUnknown, {},
                 "unknown plug-in '" + plugin + "'; " + suggest(plugin, plugins));
}

void Reader::unknownSetting(const std::string& plugin, const std::string& attribute) {
    std::vector<std::string_view> attributes;
    for (const Setting& setting : settings()) {
        if (plugin == setting.plugin) attributes.emplace_back(setting.attribute);
    }
    events_->add(
        EventCode::kConfigUnknown, {},
        "plug-in '" + plugin + "' has no attribute '" + attribute + "'; " + suggest(attribute, attributes));
}

void Reader::readAttribute(const std::string& plugin, const Element& element) {
    const std::string name = valueOf(element, "name");
    const std::string value = valueOf(element, "value");
    const auto setting = std::find_if(settings().begin(), settings().end(), [&](const Setting& known) {
        return plugin == known.plugin && name == known.attribute;
    });
    if (setting == settings().end()) return unknownSetting(plugin, name);
    if (setting->apply(value, configuration_)) return;
    const std::string text = plugin + "/" + name + "=\"" + value + "\" is not " + setting->expected;
    events_->add(EventCode::kConfigValue, {}, text + "; the default is used");
    if (!badValue) badValue = XmlError{element.offset, text};
}

}  // namespace

std::string readConfiguration(std::string_view bytes, Configuration* configuration, Events* events) {
    Reader reader(configuration, events);
    std::optional<XmlError> error = readXml(bytes, 1, &reader);
    if (!error && configuration->limits.strict) error = std::move(reader.badValue);
    if (error) return LineIndex(bytes).describe(error->offset) + ": " + error->text;
    if (!isUtf8(bytes)) {
        events->add(EventCode::kEncoding, {}, "the configuration is no UTF-8; it is read as ISO 8859-1");
    }
    events->setLimit(configuration->limits.maxEvents);
    return {};
}

}  // namespace zuksw
