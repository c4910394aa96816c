#pragma once

#include <memory>

#include "scanners/zuksw/evaluation/row.h"

namespace zuksw {

/** The object that an attribute such as `of` names in a row, if it is bound to one of that kind. */
template <typename Type>
struct ObjectOf {
    explicit ObjectOf(const Value& value)
        : pointer(std::dynamic_pointer_cast<const Type>(value.object)), causes(value.causes) {}

    explicit operator bool() const { return pointer != nullptr; }
    const Type& operator*() const { return *pointer; }
    const Type* operator->() const { return pointer.get(); }

    std::shared_ptr<const Type> pointer;
    Causes causes;  // not 0: whether there is such an object is undecided
};

}  // namespace zuksw
