#include <ctime>
#include <string>
#include <string_view>

#include "scanners/shared/descriptor_path.h"
#include "scanners/shared/xml_events.h"
#include "scanners/zukhw/calendar.h"
#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/package_databases.h"
#include "scanners/zukhw/parse.h"
#include "scanners/zukhw/text.h"

namespace {

constexpr char kPath[] = "var/db/xbps/pkgdb-0.38.plist";

// "2026-05-20 10:11 UTC": of which the day is what is reported.
std::optional<std::int64_t> dayOf(const std::string& text) {
    struct tm day = {};
    if (::strptime(text.c_str(), "%Y-%m-%d", &day) == nullptr) return std::nullopt;
    return secondsOf(day);
}

// A property list: a dictionary of packages, each a dictionary of keys and, behind each key, its value.
class PropertyListReader : public XmlEvents {
  public:
    void onStart(const std::string&, const XmlAttributes&) override { text_.clear(); }

    void onText(const std::string&, std::string_view text) override { text_ += text; }

    void onEnd(const std::string& path) override {
        if (path == "plist/dict/dict/key") {
            key_ = text_;
        } else if (path == "plist/dict/dict") {
            endPackage();
        } else if (startsWith(path, kValue) && path.find('/', kValue.size()) == std::string::npos) {
            setField(path.substr(kValue.size()) == "true");
        }
        text_.clear();
    }

    std::vector<Package> takePackages() { return std::move(packages_); }

  private:
    static constexpr std::string_view kValue = "plist/dict/dict/";

    void setField(bool isTrue) {
        if (key_ == "pkgver") setNameAndVersion();
        if (key_ == "state") isInstalled_ = text_ == "installed";
        if (key_ == "architecture") package_.architecture = text_;
        if (key_ == "maintainer") package_.maintainer = text_;
        if (key_ == "short_desc") package_.summary = text_;
        if (key_ == "license") package_.license = text_;
        if (key_ == "installed_size") package_.installedBytes = parseDecimal(text_);
        if (key_ == "install-date") package_.installTime = dayOf(text_);
        if (key_ == "automatic-install") package_.automatic = isTrue;
        if (key_ == "hold") package_.held = isTrue;
    }

    // "bash-5.2_1"
    void setNameAndVersion() {
        const std::size_t hyphen = text_.rfind('-');
        if (hyphen == std::string::npos || hyphen == 0) return;
        package_.name = text_.substr(0, hyphen);
        package_.version = text_.substr(hyphen + 1);
    }

    void endPackage() {
        package_.manager = "xbps";
        if (isInstalled_ && !package_.name.empty()) packages_.push_back(std::move(package_));
        package_ = Package();
        isInstalled_ = false;
    }

    std::vector<Package> packages_;
    Package package_;
    bool isInstalled_ = false;
    std::string key_, text_;
};

}  // namespace

std::vector<Package> readXbpsPackages(Machine& machine) {
    const FileDescriptor file = machine.open(kPath);
    if (!file.valid()) return {};
    PropertyListReader reader;
    const std::string problem = readXmlFile(descriptorPath(file), &reader);
    if (!problem.empty()) machine.sources().malformed(kPath, 0);
    return reader.takePackages();
}
