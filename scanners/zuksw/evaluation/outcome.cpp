#include "scanners/zuksw/evaluation/outcome.h"

namespace zuksw {

Text ResultObject::property(std::string_view name, Machine& /*machine*/) const {
    for (const auto& [variable, value] : variables) {
        if (variable == name) return Text::of(value);
    }
    if (name == "guid") return Text::of(guid);
    if (name == "sigName") return Text::of(signatureName);
    return {};
}

// A result is made once, so its own place in memory tells it from others.
std::string ResultObject::identity() const {
    return std::to_string(reinterpret_cast<std::uintptr_t>(this));
}

}  // namespace zuksw
