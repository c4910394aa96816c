#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "scanners/zukhw/machine.h"

using Json = nlohmann::json;

// A JSON document, of which objects and lists that are nested too deep are left out; no value when it is
// none.
std::optional<Json> parseJson(std::string_view text);

// That of the file at `path`; no value when it cannot be read. What is no JSON is told to the source log.
std::optional<Json> readJson(Machine& machine, const std::string& path);

// What an object has under a name, or null; null too for what is no object.
const Json* findMember(const Json& object, const char* name);

// The text that an object has under a name; empty when there is none.
std::string textMember(const Json& object, const char* name);
