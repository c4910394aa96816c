#include "scanners/zuksw/files/file_object.h"

#include <array>
#include <cerrno>
#include <ctime>

#include "scanners/zuksw/evaluation/machine.h"
#include "scanners/zuksw/files/digest.h"

namespace zuksw {
namespace {

constexpr std::uint64_t kBlock = std::uint64_t{4} << 20U;

// Hidden files such as ".profile" have no extension.
std::size_t extensionOf(const std::string& name) {
    const std::size_t dot = name.rfind('.');
    return dot == 0 || dot == name.npos ? name.size() : dot;
}

std::string isoTime(std::time_t seconds) {
    std::tm parts = {};
    std::array<char, 64> text = {};
    if (::gmtime_r(&seconds, &parts) == nullptr) return {};
    return std::string(text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts));
}

std::string octal(unsigned value) {
    std::array<char, 16> text = {};
    std::snprintf(text.data(), text.size(), "%04o", value);
    return text.data();
}

}  // namespace

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == 0 || slash == path.npos ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

Text FileObject::property(std::string_view name, Machine& machine) const {
    if (name == "path") return Text::of(path_);
    if (name == "dir") return Text::of(directoryOf(path_));
    if (name == "size") return Text::of(std::to_string(size()));
    if (name == "sha256") return digest(machine);
    if (name.substr(0, 4) == "elf.") return elfProperty(name.substr(4), machine);
    const std::string file = nameOf(path_);
    if (name == "name") return Text::of(file);
    if (name == "stem") return Text::of(file.substr(0, extensionOf(file)));
    if (name == "ext") {
        const std::size_t dot = extensionOf(file);
        return Text::of(dot == file.size() ? std::string() : file.substr(dot + 1));
    }
    return specialProperty(name, machine);
}

Text FileObject::elfProperty(std::string_view name, Machine& machine) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!elf_) elf_ = readElfFacts(*this, machine);
    if (name == "soname") return elf_->soname;
    if (name == "buildId") return elf_->buildId;
    if (name == "machine") return elf_->machine;
    return name == "class" ? elf_->className : elf_->interpreter;
}

Text FileObject::digest(Machine& machine) const {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (digest_) return *digest_;
    if (size() > machine.configuration.content.maxFileSize) {
        machine.events.add(EventCode::kTooLarge, {}, "larger than content/MaxFileSize; no digest", path_);
        return *(digest_ = Text::unknown(toCauses(Cause::kTooLarge)));
    }
    const Opened opened = open(machine);
    if (!opened.contents) return *(digest_ = opened.causes == 0 ? Text() : Text::unknown(opened.causes));
    Sha256 sha;
    const Contents& contents = *opened.contents;
    for (std::uint64_t at = 0; at < contents.size(); at += kBlock) {
        const Range range = {at, std::min(at + kBlock, contents.size())};
        const Causes refused = machine.takeBytes(range.end - range.begin);
        if (refused != 0) return *(digest_ = Text::unknown(refused));
        const Contents::Reading reading(contents, range);
        sha.add(contents.bytes().substr(range.begin, range.end - range.begin));
    }
    digest_ = contents.changed() ? Text::unknown(toCauses(Cause::kChanged)) : Text::of(sha.finish());
    return *digest_;
}

Text DiskFile::specialProperty(std::string_view name, Machine& machine) const {
    if (name == "mtime") return Text::of(isoTime(facts_.st_mtime));
    if (name == "mode") return Text::of(octal(facts_.st_mode & 07777U));
    if (name == "uid") return Text::of(std::to_string(facts_.st_uid));
    if (name == "gid") return Text::of(std::to_string(facts_.st_gid));
    if (name == "link") return link_.empty() ? Text() : Text::of(link_);
    if (name == "package") return machine.ownerOf(path());
    return {};
}

Opened DiskFile::open(Machine& machine) const {
    if (!S_ISREG(facts_.st_mode)) return {};  // directories and links have nothing to be read
    if (machine.territory.isDenied(path())) {
        machine.events.add(EventCode::kDenied, {}, "content that must not be read (content/Deny)", path());
        return {nullptr, toCauses(Cause::kDenied)};
    }
    Opened opened;
    opened.contents = machine.openFiles.get(path(), [&] { return (opened = openAnew(machine)).contents; });
    return opened;
}

Opened DiskFile::openAnew(Machine& machine) const {
    FileDescriptor fd = machine.tree.openRegular(path());
    if (!fd.valid()) {
        if (errno == ENOENT || errno == ENOTDIR) return {};
        const bool changed = errno == ESTALE || errno == ELOOP || errno == EINVAL;
        const bool denied = errno == EACCES || errno == EPERM;
        machine.events.add(changed ? EventCode::kChanged : EventCode::kUnreadable, {},
                           changed  ? "replaced while it was looked at"
                           : denied ? "permission denied; files not read"
                                    : "files cannot be read",
                           path());
        return {nullptr, toCauses(changed ? Cause::kChanged : Cause::kUnreadable)};
    }
    struct stat now = {};
    if (::fstat(fd.get(), &now) != 0) return {nullptr, toCauses(Cause::kUnreadable)};
    ++machine.opened;
    std::shared_ptr<Contents> contents =
        Contents::ofFile(std::move(fd), static_cast<std::uint64_t>(now.st_size));
    if (!contents) return {nullptr, toCauses(Cause::kUnreadable)};
    return {std::move(contents), 0};
}

}  // namespace zuksw
