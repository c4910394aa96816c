#include "platform/command_line.h"

std::vector<std::string> splitCommandLine(const wchar_t* command) {
    std::vector<std::string> words;
    bool quoted = false;
    bool inWord = false;
    for (; *command != L'\0'; ++command) {
        if (*command == L' ' && !quoted) {
            inWord = false;
            continue;
        }
        if (!inWord) words.emplace_back();
        inWord = true;
        if (*command == L'"') {
            quoted = !quoted;
        } else {
            words.back().push_back(static_cast<char>(*command));
        }
    }
    return words;
}
