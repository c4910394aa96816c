#include "tests/zuksw/catalogue_reader.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "scanners/zuksw/language/xml_reader.h"
#include "tests/support/files.h"

namespace {

std::string attribute(const zuksw::Element& element, std::string_view name) {
    const std::string_view* value = element.find(name);
    return value == nullptr ? std::string() : std::string(*value);
}

void readReport(const zuksw::Element& report, CatalogueEntry* entry) {
    for (const zuksw::Element* child : report.children) {
        if (child->name == "Variable") {
            entry->variables.push_back(attribute(*child, "name") + "=" + attribute(*child, "value"));
        } else if (child->name == "Metadata") {
            for (const zuksw::Element* element : child->children) entry->metadata.emplace_back(element->name);
        }
    }
}

class Reader : public zuksw::XmlSink {
  public:
    Reader(std::string file, std::vector<CatalogueEntry>* entries)
        : file_(std::move(file)), entries_(entries) {}
    std::string onRoot(std::string_view /*name*/) override { return {}; }
    std::string onNode(const zuksw::Element& node) override {
        CatalogueEntry entry;
        entry.file = file_;
        entry.guid = attribute(node, "guid");
        entry.name = attribute(node, "name");
        entry.perMachine = attribute(node, "per") == "machine";
        entry.place = attribute(node, "place");
        for (const zuksw::Element* child : node.children) {
            if (child->name == "Report") readReport(*child, &entry);
        }
        entries_->push_back(std::move(entry));
        return {};
    }

  private:
    std::string file_;
    std::vector<CatalogueEntry>* entries_;
};

}  // namespace

std::vector<std::string> catalogueFiles() {
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(ZUK_SOURCE_DIR "/signatures")) {
        if (entry.path().extension() == ".xml") paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::vector<CatalogueEntry> readCatalogue() {
    std::vector<CatalogueEntry> entries;
    for (const std::string& path : catalogueFiles()) {
        Reader reader(path, &entries);
        if (zuksw::readXml(readFile(path), 2, &reader)) throw std::runtime_error("not readable: " + path);
    }
    return entries;
}

std::string catalogueText() {
    std::string text;
    for (const std::string& path : catalogueFiles()) {
        const std::string file = readFile(path);
        const std::size_t begin = file.find("<Signatures>") + std::string_view("<Signatures>").size();
        text += file.substr(begin, file.rfind("</Signatures>") - begin);
    }
    return text;
}
