#include "scanners/zuksw/setup/settings.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

#include "scanners/shared/packages/text.h"
#include "scanners/zuksw/language/path_glob.h"
#include "scanners/zuksw/sources/packages.h"

namespace zuksw {
namespace {

constexpr char kNumber[] = "a whole number";
constexpr char kSize[] = "a number of bytes, with K, M or G if wanted";
constexpr char kYesNo[] = "yes or no";
constexpr char kPath[] = "an absolute path";
constexpr char kGlob[] = "an absolute glob ('/...' or '**...') or 'none'";

bool parseYesNo(std::string_view text, bool* value) {
    const bool yes = text == "yes" || text == "true" || text == "1";
    if (!yes && text != "no" && text != "false" && text != "0") return false;
    *value = yes;
    return true;
}

bool parseWhole(std::string_view text, std::uint64_t low, std::uint64_t high, std::uint64_t* value) {
    std::uint64_t parsed = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (error != std::errc() || end != text.data() + text.size()) return false;
    if (parsed < low || parsed > high) return false;
    *value = parsed;
    return true;
}

bool parseSize(std::string_view text, std::uint64_t* value) {
    unsigned shift = 0;
    if (!text.empty()) {
        const std::size_t unit = std::string_view("KMG").find(text.back());
        if (unit != std::string_view::npos) shift = 10 * (static_cast<unsigned>(unit) + 1);
    }
    if (shift != 0) text.remove_suffix(1);
    std::uint64_t number = 0;
    if (!parseWhole(text, 0, std::numeric_limits<std::uint64_t>::max() >> shift, &number)) return false;
    *value = number << shift;
    return true;
}

// Collects "dpkg" or "dpkg,rpm"; "all" stands for every manager.
bool addManagers(std::string_view text, std::vector<std::string>* list) {
    const auto& known = Packages::managers();
    std::vector<std::string> added;
    while (true) {
        const std::size_t comma = text.find(',');
        const std::string_view manager = trimBlanks(text.substr(0, comma));
        const bool all = manager == "all";
        if (!all && std::find(known.begin(), known.end(), manager) == known.end()) return false;
        added.insert(added.end(), all ? known.begin() : known.end(), known.end());
        if (!all) added.emplace_back(manager);
        if (comma == text.npos) break;
        text.remove_prefix(comma + 1);
    }
    list->insert(list->end(), added.begin(), added.end());
    return true;
}

bool isAbsolute(std::string_view text) {
    return !text.empty() && text[0] == '/';
}

bool addPath(std::string_view text, std::vector<std::string>* list) {
    if (!isAbsolute(text)) return false;
    list->emplace_back(text);
    return true;
}

bool setPath(std::string_view text, std::string* path) {
    if (!isAbsolute(text)) return false;
    *path = text;
    return true;
}

bool addGlob(std::string_view text, std::vector<std::string>* list) {
    std::string error;
    if (text != "none") {
        if (!isAbsolute(text) && text.substr(0, 2) != "**") return false;
        if (!Glob::parsePath(text, &error)) return false;
    }
    list->emplace_back(text);
    return true;
}

bool setWord(std::string_view text, std::string_view no, std::string_view yes, bool* value) {
    if (text != no && text != yes) return false;
    *value = text == yes;
    return true;
}

}  // namespace

const std::vector<Setting>& settings() {
    using View = std::string_view;
    using Config = Configuration*;
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
    static const std::vector<Setting> kSettings = {
        {"search", "Root", [](View t, Config c) { return addPath(t, &c->search.roots); }, kPath},
        {"search", "Exclude", [](View t, Config c) { return addGlob(t, &c->search.exclude); }, kGlob},
        {"search", "FileSystems",
         [](View t, Config c) {
             if (t.empty()) return false;
             c->search.fileSystems = t;
             return true;
         },
         "local, all or a comma list of types"},
        {"search", "Containers", [](View t, Config c) { return parseYesNo(t, &c->search.containers); },
         kYesNo},
        {"search", "MaxDepth", [](View t, Config c) { return parseWhole(t, 0, kMost, &c->search.maxDepth); },
         kNumber},
        {"search", "MaxEntries",
         [](View t, Config c) { return parseWhole(t, 0, kMost, &c->search.maxEntries); }, kNumber},
        {"search", "Links",
         [](View t, Config c) { return setWord(t, "none", "files", &c->search.linksToFiles); },
         "files or none"},
        {"search", "IncompleteIs",
         [](View t, Config c) { return setWord(t, "absent", "unknown", &c->search.incompleteIsUnknown); },
         "unknown or absent"},
        {"system", "Prefix", [](View t, Config c) { return t.empty() || setPath(t, &c->system.prefix); },
         kPath},
        {"content", "MaxFileSize", [](View t, Config c) { return parseSize(t, &c->content.maxFileSize); },
         kSize},
        {"content", "MaxTotal", [](View t, Config c) { return parseSize(t, &c->content.maxTotal); }, kSize},
        {"content", "RegexMemory", [](View t, Config c) { return parseSize(t, &c->content.regexMemory); },
         kSize},
        {"content", "MaxCapture", [](View t, Config c) { return parseSize(t, &c->content.maxCapture); },
         kSize},
        {"content", "Deny", [](View t, Config c) { return addGlob(t, &c->content.deny); }, kGlob},
        {"archive", "Enabled", [](View t, Config c) { return parseYesNo(t, &c->archive.enabled); }, kYesNo},
        {"archive", "MaxDepth", [](View t, Config c) { return parseWhole(t, 0, 16, &c->archive.maxDepth); },
         "a whole number up to 16"},
        {"archive", "MaxMembers",
         [](View t, Config c) { return parseWhole(t, 0, kMost, &c->archive.maxMembers); }, kNumber},
        {"archive", "MaxMemberSize", [](View t, Config c) { return parseSize(t, &c->archive.maxMemberSize); },
         kSize},
        {"archive", "MaxTotal", [](View t, Config c) { return parseSize(t, &c->archive.maxTotal); }, kSize},
        {"archive", "MaxRatio",
         [](View t, Config c) { return parseWhole(t, 1, kMost, &c->archive.maxRatio); }, kNumber},
        {"packages", "Managers", [](View t, Config c) { return addManagers(t, &c->packages.managers); },
         "all, or managers separated by commas"},
        {"packages", "DpkgDir", [](View t, Config c) { return setPath(t, &c->packages.dpkgDir); }, kPath},
        {"packages", "ApkDir", [](View t, Config c) { return setPath(t, &c->packages.apkDir); }, kPath},
        {"packages", "RpmDir", [](View t, Config c) { return setPath(t, &c->packages.rpmDir); }, kPath},
        {"packages", "PacmanDir", [](View t, Config c) { return setPath(t, &c->packages.pacmanDir); }, kPath},
        {"processes", "Enabled", [](View t, Config c) { return parseYesNo(t, &c->processes.enabled); },
         kYesNo},
        {"processes", "CaptureArguments",
         [](View t, Config c) { return parseYesNo(t, &c->processes.captureArguments); }, kYesNo},
        {"limits", "TimeBudget",
         [](View t, Config c) { return parseWhole(t, 0, 1U << 30U, &c->limits.timeBudget); },
         "a number of seconds"},
        {"limits", "Threads", [](View t, Config c) { return parseWhole(t, 1, 64, &c->limits.threads); },
         "a number from 1 to 64"},
        {"limits", "Nice", [](View t, Config c) { return parseWhole(t, 0, 39, &c->limits.nice); },
         "a number from 0 to 39"},
        {"limits", "MaxRows", [](View t, Config c) { return parseWhole(t, 1, kMost, &c->limits.maxRows); },
         kNumber},
        {"limits", "MaxResults",
         [](View t, Config c) { return parseWhole(t, 0, kMost, &c->limits.maxResults); }, kNumber},
        {"limits", "MaxEvents",
         [](View t, Config c) { return parseWhole(t, 0, kMost, &c->limits.maxEvents); }, kNumber},
        {"limits", "Strict", [](View t, Config c) { return parseYesNo(t, &c->limits.strict); }, kYesNo},
        {"output", "Evidence", [](View t, Config c) { return parseYesNo(t, &c->output.evidence); }, kYesNo},
    };
    return kSettings;
}

}  // namespace zuksw
