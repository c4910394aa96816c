#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// One record of the file that logins, logouts and starts of the system are appended to (wtmp).
struct LoginRecord {
    enum Type { kEmpty, kRunLevel, kBootTime, kNewTime, kOldTime, kInit, kLogin, kUser, kDead, kAccounting };

    int type = kEmpty;
    std::int32_t processId = 0;
    std::string line;     // the terminal
    std::string user;     // of system records a word: "reboot", "shutdown"
    std::string host;     // where the login came from, or the display
    std::string address;  // of that host, as IPv4 or IPv6 text; empty when there is none
    std::int64_t time = 0;
};

// How the records of a file are laid out. Neither the width of times nor the order of bytes is told by it.
struct LoginRecordLayout {
    std::size_t size = 384;
    bool wideTimes = false;
    bool bigEndian = false;
};

// The layout in which the most records at the start of the file make sense.
LoginRecordLayout findLoginRecordLayout(std::string_view head);

// The whole records of the bytes, in order, those of no meaning included.
std::vector<LoginRecord> parseLoginRecords(std::string_view bytes, const LoginRecordLayout& layout);
