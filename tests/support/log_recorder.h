#pragma once

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

// One message as a callback got it.
struct LogLine {
    int level;
    int loggerLevel;
    std::string location;
    std::string text;
};

inline std::ostream& operator<<(std::ostream& out, const LogLine& line) {
    return out << line.level << " " << line.location << ": " << line.text;
}

// Keeps every message: give LogRecorder::callback and the recorder's address as callback and user data.
class LogRecorder {
  public:
    static void callback(int level, int loggerLevel, void* self, const char* location, const char* text) {
        static_cast<LogRecorder*>(self)->lines.push_back({level, loggerLevel, location, text});
    }

    std::size_t count(int level, const std::string& location, const std::string& text) const {
        return static_cast<std::size_t>(std::count_if(lines.begin(), lines.end(), [&](const LogLine& line) {
            return line.level == level && line.location == location && line.text == text;
        }));
    }
    bool has(int level, const std::string& location, const std::string& text) const {
        return count(level, location, text) > 0;
    }
    // The texts spoken under one location, in order.
    std::vector<std::string> textsOf(const std::string& location) const {
        std::vector<std::string> texts;
        for (const LogLine& line : lines) {
            if (line.location == location) texts.push_back(line.text);
        }
        return texts;
    }
    void clear() { lines.clear(); }

    std::vector<LogLine> lines;
};
