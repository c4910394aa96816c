#pragma once

#include <string>

#include "cli/software.h"

// A warning as the library hands it out: the XML of an Event, one character a byte.
Warning readEvent(const std::wstring& xml);
