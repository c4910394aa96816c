#include "scanners/zuksw/checks/table.h"

#include <algorithm>

namespace zuksw {

const std::vector<CheckKind>& checkKinds() {
    static const std::vector<CheckKind> kKinds = {
        {"All", makeAll, true, true},          {"Any", makeAny, true, true},
        {"Not", makeNot, true, true},          {"AtLeast", makeAtLeast, true, true},
        {"File", makeFile, false, true},       {"Content", makeContent, false, true},
        {"Value", makeValue, false, true},     {"Member", makeMember, false, true},
        {"Elf", makeElf, false, true},         {"Library", makeLibrary, false, true},
        {"Package", makePackage, false, true}, {"Tag", makeTag, false, true},
        {"Process", makeProcess, false, true}, {"System", makeSystem, false, true},
        {"Matched", makeMatched, false, true}, {"Test", makeTest, false, false},
        {"Set", makeSet, false, false},
    };
    return kKinds;
}

const CheckKind* findCheckKind(std::string_view element) {
    const auto& kinds = checkKinds();
    const auto found =
        std::find_if(kinds.begin(), kinds.end(), [&](const auto& k) { return k.element == element; });
    return found == kinds.end() ? nullptr : &*found;
}

}  // namespace zuksw
