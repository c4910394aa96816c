#include "scanners/zuksw/files/member_file.h"

#include <set>
#include <utility>

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/formats/archive.h"

namespace zuksw {
namespace {

constexpr std::size_t kMaxKept = std::size_t{64} * 1024;

ArchiveLimits limitsOf(const Configuration& configuration) {
    const auto& archive = configuration.archive;
    return {archive.maxMembers, archive.maxMemberSize, archive.maxTotal, archive.maxRatio};
}

Causes causesOf(ArchiveState state) {
    if (state == ArchiveState::kOk || state == ArchiveState::kNotAnArchive) return 0;
    if (state == ArchiveState::kStopped) return toCauses(Cause::kTimeBudget);
    return toCauses(state == ArchiveState::kLimit ? Cause::kArchiveLimit : Cause::kBadArchive);
}

void report(ArchiveState state, const std::string& problem, const std::string& path, Machine& machine) {
    if (causesOf(state) == 0 || state == ArchiveState::kStopped) return;
    const bool limit = state == ArchiveState::kLimit;
    machine.events.add(limit ? EventCode::kArchiveLimit : EventCode::kBadArchive, {}, problem, path);
}

// Hands over the wanted members of an archive; the causes say why some may be missing.
Causes readMembers(const FileObject& archive, const std::function<bool(std::string_view)>& wanted,
                   const std::function<void(ArchiveMember)>& take, Machine& machine) {
    if (!machine.configuration.archive.enabled) return toCauses(Cause::kNotSearched);
    if (archive.depth() >= machine.configuration.archive.maxDepth) {
        report(ArchiveState::kLimit, "nested deeper than archive/MaxDepth; not read", archive.path(),
               machine);
        return toCauses(Cause::kArchiveLimit);
    }
    if (archive.size() > machine.configuration.content.maxFileSize) {
        machine.events.add(EventCode::kTooLarge, {}, "larger than content/MaxFileSize; not read",
                           archive.path());
        return toCauses(Cause::kTooLarge);
    }
    const Causes refused = machine.takeBytes(archive.size());
    const Opened opened = refused == 0 ? archive.open(machine) : Opened{nullptr, refused};
    if (!opened.contents) return opened.causes;
    const Contents::Reading reading(*opened.contents, {0, opened.contents->size()});
    Causes causes = 0;
    const auto takeGood = [&](ArchiveMember member) {
        if (member.state == ArchiveState::kOk) return take(std::move(member));
        causes |= causesOf(member.state);
        report(member.state,
               member.state == ArchiveState::kEncrypted ? "encrypted members are not read"
                                                        : "members cannot be read",
               archive.path(), machine);
    };
    const ArchiveOutcome outcome = readArchive(opened.contents->bytes(), limitsOf(machine.configuration),
                                               wanted, takeGood, [&] { return !machine.budget.isSpent(); });
    report(outcome.state, outcome.problem, archive.path(), machine);
    if (opened.contents->changed()) causes |= toCauses(Cause::kChanged);
    return causes | causesOf(outcome.state);
}

}  // namespace

MemberFile::MemberFile(std::shared_ptr<const FileObject> archive, std::string name, std::string content)
    : FileObject(archive->path() + "!/" + name),
      archive_(std::move(archive)),
      name_(std::move(name)),
      size_(content.size()) {
    if (content.size() <= kMaxKept) content_ = std::move(content);
}

Opened MemberFile::open(Machine& machine) const {
    if (content_) return {Contents::ofMemory(*content_), 0};
    std::optional<std::string> content;
    const auto wanted = [&](std::string_view name) { return name == name_ && !content; };
    const Causes causes = readMembers(
        *archive_, wanted, [&](ArchiveMember member) { content = std::move(member.content); }, machine);
    if (content) return {Contents::ofMemory(*std::move(content)), 0};
    return {nullptr, causes};
}

FoundMembers findMembers(const std::shared_ptr<const FileObject>& archive,
                         const std::function<bool(std::string_view)>& wanted, Machine& machine) {
    FoundMembers found;
    std::set<std::string> names;
    const auto take = [&](ArchiveMember member) {
        if (!names.insert(member.name).second) return;
        found.members.push_back(
            std::make_shared<const MemberFile>(archive, std::move(member.name), std::move(member.content)));
    };
    found.causes = readMembers(*archive, wanted, take, machine);
    return found;
}

}  // namespace zuksw
