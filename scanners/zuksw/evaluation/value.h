#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "scanners/zuksw/evaluation/cause.h"

namespace zuksw {

class Machine;

/** A text that is there, not there, or not to be had for some reason. */
struct Text {
    enum class State { kUnset, kUnknown, kSet };

    static Text of(std::string text) { return {State::kSet, 0, std::move(text)}; }
    static Text unknown(Causes causes) { return {State::kUnknown, causes, {}}; }

    bool isSet() const { return state == State::kSet; }

    State state = State::kUnset;
    Causes causes = 0;  // of kUnknown
    std::string text;
};

/** What a name such as `bin` stands for: a file, a package, a process, a tag, a result. Objects do not change
 *  once made, except that they remember what was expensive to find out; any thread may ask. */
class Object {
  public:
    virtual ~Object() = default;
    virtual Text property(std::string_view name, Machine& machine) const = 0;
    /** Tells an object from every other one of the machine. */
    virtual std::string identity() const = 0;
};

/** What a row binds to one name. */
struct Value {
    Text::State state = Text::State::kUnset;
    Causes causes = 0;
    std::string text;                      // a text
    std::shared_ptr<const Object> object;  // or an object
};

}  // namespace zuksw
