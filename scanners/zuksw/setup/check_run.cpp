#include "scanners/zuksw/setup/check_run.h"

#include <atomic>
#include <cstdint>

#include "scanners/zuksw/language/line_index.h"
#include "scanners/zuksw/language/signature_set.h"
#include "scanners/zuksw/setup/configuration.h"
#include "scanners/zuksw/setup/messages.h"
#include "scanners/zuksw/setup/threads.h"

namespace zuksw {
namespace {

const char* levelName(Finding::Level level) {
    return level == Finding::Level::kError ? "error" : level == Finding::Level::kWarning ? "warning" : "info";
}

std::string describe(const std::string& path, const Finding& finding, const SignatureSet& set,
                     LineIndex* lines) {
    std::string text = path + ":" + lines->brief(finding.offset) + ": ";
    if (finding.signature != Finding::kNone) {
        const ListedSignature& signature = set.signatures()[finding.signature];
        text += "signature '" + (signature.name.empty() ? signature.guid : signature.name) + "': ";
    }
    return text + finding.text;
}

}  // namespace

int checkSignatures(const std::string& path) {
    std::string error;
    const std::optional<std::string> bytes = readInput(path, &error);
    if (!bytes) {
        say("error", path + ": " + error);
        return kExitSignatures;
    }
    const Configuration configuration;
    PatternStore patterns(static_cast<std::int64_t>(configuration.content.regexMemory));
    Presets presets(configuration.presets);
    const std::atomic<bool> stop{false};
    SignatureSet set;
    error = set.read(*bytes, &patterns, &presets, threadsFor(configuration.limits.threads), stop);
    if (!error.empty()) {
        say("error", path + ": " + error);
        return kExitSignatures;
    }
    LineIndex lines(*bytes);
    std::size_t notes = 0;
    for (const Finding& finding : set.findings()) {
        say(levelName(finding.level), describe(path, finding, set, &lines));
        notes += finding.level == Finding::Level::kError ? 0 : 1;
    }
    const std::size_t invalid = set.invalidCount();
    say("checked", "signatures=" + std::to_string(set.signatures().size()) +
                       " invalid=" + std::to_string(invalid) + " warnings=" + std::to_string(notes));
    return invalid == 0 ? kExitDone : kExitSignatures;
}

}  // namespace zuksw
