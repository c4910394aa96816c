#include "scanners/zuksw/checks/file_restrictions.h"

#include <algorithm>
#include <cctype>

#include "scanners/zuksw/evaluation/expand.h"
#include "scanners/zuksw/index/file_query.h"

namespace zuksw {
namespace {

constexpr std::string_view kFormats[] = {"\177ELF", "#!", "PK\003\004"};

std::vector<std::string> readDigests(ConditionReader& attributes) {
    const auto value = attributes.raw("sha256");
    std::vector<std::string> digests;
    if (!value) return digests;
    std::string_view rest = *value;
    while (!rest.empty()) {
        const std::size_t blank = rest.find(' ');
        std::string digest(rest.substr(0, blank));
        rest.remove_prefix(blank == rest.npos ? rest.size() : blank + 1);
        if (digest.empty()) continue;
        for (char& c : digest) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if (digest.size() != 64 || digest.find_first_not_of("0123456789abcdef") != digest.npos) {
            attributes.report("'sha256' holds something else than 64 hex digits; correct it");
        }
        digests.push_back(std::move(digest));
    }
    if (digests.empty()) attributes.report("'sha256' is empty; add a digest or remove it");
    return digests;
}

}  // namespace

void FileRestrictions::read(ConditionReader& attributes, unsigned types) {
    target_ = attributes.pathGlob("target", true);
    minSize_ = attributes.number("minSize");
    maxSize_ = attributes.number("maxSize");
    executable_ = attributes.yesNo("executable");
    owned_ = attributes.yesNo("owned");
    format_ = attributes.choice("format", {"elf", "script", "zip"});
    digests_ = readDigests(attributes);
    if (target_ && types != kSymlink)
        attributes.report("'target' is for type=\"symlink\"; add that or remove it");
    const bool needsFile = format_ || !digests_.empty() || minSize_ || maxSize_ || executable_;
    if (needsFile && (types & kRegular) == 0) {
        attributes.report(
            "size, 'executable', 'format' and 'sha256' are for regular files; remove them or 'type'");
    }
    if (minSize_ && maxSize_ && *minSize_ > *maxSize_) {
        attributes.report("'minSize' is larger than 'maxSize'; no file is both");
    }
}

Answer FileRestrictions::acceptTarget(const DiskFile& file, const Row& row, const Context& context) const {
    const std::optional<std::string> link = context.machine.tree.readLink(file.path());
    if (!link) return Answer::no();
    const Text text = expand(target_->text, row, context, quoteGlob);
    if (!text.isSet()) return text.causes == 0 ? Answer::no() : Answer::unknown(text.causes);
    std::string error;
    const std::optional<Glob> glob = Glob::parsePath(text.text, &error);
    const bool anywhere = text.text.compare(0, 2, "**") == 0;
    if (!glob || (!anywhere && (text.text[0] == '/') != ((*link)[0] == '/'))) return Answer::no();
    return Answer::of(glob->matches(std::string_view(*link).substr((*link)[0] == '/' ? 1 : 0)));
}

Answer FileRestrictions::acceptFormat(const DiskFile& file, const Context& context) const {
    const std::string_view magic = kFormats[*format_];
    if (file.size() < magic.size()) return Answer::no();
    const Opened opened = file.open(context.machine);
    if (!opened.contents) return opened.causes == 0 ? Answer::no() : Answer::unknown(opened.causes);
    const Contents::Reading reading(*opened.contents, {0, magic.size()});
    const bool same = opened.contents->bytes().substr(0, magic.size()) == magic;
    return opened.contents->changed() ? Answer::unknown(toCauses(Cause::kChanged)) : Answer::of(same);
}

Answer FileRestrictions::accept(const DiskFile& file, const Row& row, const Context& context) const {
    if (minSize_ && file.size() < *minSize_) return Answer::no();
    if (maxSize_ && file.size() > *maxSize_) return Answer::no();
    if (executable_ && ((file.facts().st_mode & 0111U) != 0) != *executable_) return Answer::no();
    Causes causes = 0;
    const auto add = [&causes](const Answer& answer) {
        causes |= answer.causes;
        return !answer.isNo();
    };
    if (target_ && !add(acceptTarget(file, row, context))) return Answer::no();
    if (owned_) {
        const Text owner = context.machine.ownerOf(file.path());
        causes |= owner.causes;
        if (owner.causes == 0 && owner.isSet() != *owned_) return Answer::no();
    }
    if (format_ && !add(acceptFormat(file, context))) return Answer::no();
    if (!digests_.empty()) {
        const Text digest = file.property("sha256", context.machine);
        causes |= digest.causes;
        const bool listed = std::find(digests_.begin(), digests_.end(), digest.text) != digests_.end();
        if (digest.causes == 0 && !listed) return Answer::no();
    }
    return causes == 0 ? Answer::of(true) : Answer::unknown(causes);
}

}  // namespace zuksw
