#include "scanners/shared/packages/status_file.h"

#include <utility>

#include "scanners/shared/packages/text.h"

namespace {

constexpr std::size_t kUsualParagraph = 800;  // bytes

// One paragraph while it is read.
struct Paragraph {
    Package& package;
    std::uint64_t sizeUnit;
    bool statusSeen = false;
    bool good = true;
};

constexpr std::string_view kUsualStatus = "install ok installed";

// What is wanted, remarks with commas between, and how far it is installed.
void setStatus(Paragraph& paragraph, std::string_view value) {
    Package& package = paragraph.package;
    paragraph.statusSeen = true;
    package.held = false;
    package.state = PackageState::Installed;
    if (value == kUsualStatus) return;
    const std::string_view wanted = takeWord(value);
    const std::string_view remarks = takeWord(value);
    const std::optional<PackageState> state = packageStateByName(takeWord(value));
    paragraph.good = paragraph.good && state && takeWord(value).empty();
    // dpkg wants a held package held; opkg remarks that it is.
    package.held = wanted == "hold" || remarks.find("hold") != std::string_view::npos;
    package.state = state.value_or(PackageState::NotInstalled);
}

void setInstalledSize(Paragraph& paragraph, std::string_view value) {
    const std::uint64_t unit = paragraph.sizeUnit;
    const std::optional<std::uint64_t> size = parseUnsigned(value);
    if (size && unit != 0 && *size <= UINT64_MAX / unit) paragraph.package.installedBytes = *size * unit;
}

struct FieldRow {
    std::string_view name;
    void (*set)(Paragraph&, std::string_view);
};

constexpr FieldRow kFields[] = {
    {"Package", [](Paragraph& p, std::string_view v) { p.package.name = v; }},
    {"Status", setStatus},
    {"Version", [](Paragraph& p, std::string_view v) { setVersion(p.package, v); }},
    {"Architecture", [](Paragraph& p, std::string_view v) { p.package.architecture = v; }},
    {"Maintainer", [](Paragraph& p, std::string_view v) { p.package.maintainer = v; }},
    {"Description", [](Paragraph& p, std::string_view v) { p.package.summary = v; }},
    {"Section", [](Paragraph& p, std::string_view v) { p.package.section = v; }},
    // "name (version)", the version only where it differs.
    {"Source", [](Paragraph& p, std::string_view v) { p.package.source = takeWord(v); }},
    {"License", [](Paragraph& p, std::string_view v) { p.package.license = v; }},
    {"Multi-Arch", [](Paragraph& p, std::string_view v) { p.package.multiArch = v; }},
    {"Essential", [](Paragraph& p, std::string_view v) { p.package.essential = v == "yes"; }},
    {"Installed-Size", setInstalledSize},
    {"Installed-Time", [](Paragraph& p, std::string_view v) { p.package.installTime = parseSeconds(v); }},
    {"Auto-Installed", [](Paragraph& p, std::string_view v) { p.package.automatic = v == "yes"; }},
};

void setField(Paragraph& paragraph, const Deb822Reader& reader) {
    const std::string_view name = reader.name();
    for (const FieldRow& row : kFields) {
        if (row.name.front() == name.front() && row.name == name) return row.set(paragraph, reader.value());
    }
}

bool isComplete(const Paragraph& paragraph, const StatusDialect& dialect) {
    const Package& package = paragraph.package;
    if (!paragraph.good || package.name.empty()) return false;
    if (dialect.statusNeeded && !paragraph.statusSeen) return false;
    return !package.version.empty() || !filesArePresent(package.state);
}

}  // namespace

StatusReader::StatusReader(std::string_view text, const StatusDialect& dialect)
    : reader_(text),
      dialect_(dialect),
      size_(text.size()),
      cut_(dialect.finalNewlineNeeded && !text.empty() && text.back() != '\n') {}

// False when it is broken, or the text is at its end.
bool StatusReader::readParagraph(Package* package) {
    using Item = Deb822Reader::Item;
    *package = Package();
    package->manager = dialect_.manager;
    Paragraph paragraph{*package, dialect_.sizeUnit};
    Item item = reader_.next();
    for (; item != Item::EndOfParagraph && item != Item::End; item = reader_.next()) {
        if (item == Item::BadLine) paragraph.good = false;
        if (item == Item::Field) setField(paragraph, reader_);
    }
    atEnd_ = item == Item::End;
    const bool last = reader_.offset() == size_;
    if (atEnd_ || !isComplete(paragraph, dialect_) || (cut_ && last)) return false;
    if (dialect_.sourceIsName && package->source.empty()) package->source = package->name;
    return true;
}

bool StatusReader::next(Package* package) {
    for (;;) {
        const std::size_t begin = reader_.offset();
        if (readParagraph(package)) return true;
        if (atEnd_) return false;
        if (broken_++ == 0) firstBroken_ = begin;
    }
}

PackageList parseStatusFile(std::string_view text, const StatusDialect& dialect) {
    PackageList list;
    list.packages.reserve(text.size() / kUsualParagraph);
    StatusReader reader(text, dialect);
    for (Package package; reader.next(&package);) list.packages.push_back(std::move(package));
    list.broken = reader.broken();
    list.firstBroken = reader.firstBroken();
    return list;
}
