#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "scanners/zukhw/cups_config.h"

// The Internet Printing Protocol, as far as asking a print server for its queues needs it (RFC 8010; the
// operation is the server's own).

// The request for all queues and classes of queues.
std::string ippQueuesRequest();

// The queues of the answer, in its order; empty when it is none. What is cut is kept as far as it goes.
std::vector<PrintQueue> parseIppQueues(std::string_view answer);
