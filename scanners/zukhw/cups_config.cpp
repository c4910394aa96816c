#include "scanners/zukhw/cups_config.h"

#include <algorithm>

#include "scanners/zukhw/text.h"

namespace {

// "#" begins a comment unless a backslash stands before it.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] == '\\' && i + 1 < value.size()) ++i;
        text += value[i];
    }
    return text;
}

// "<DefaultPrinter office>"; false for any other line.
bool parseStart(std::string_view line, PrintQueue* queue) {
    if (!startsWith(line, "<") || !endsWith(line, ">")) return false;
    line = line.substr(1, line.size() - 2);
    queue->isDefault = startsWith(line, "Default");
    if (queue->isDefault) line.remove_prefix(std::string_view("Default").size());
    const std::size_t blank = line.find(' ');
    const std::string_view kind = line.substr(0, blank);
    if (blank == std::string_view::npos || (kind != "Printer" && kind != "Class")) return false;
    queue->isClass = kind == "Class";
    queue->name = trim(line.substr(blank));
    return !queue->name.empty();
}

void parseSetting(std::string_view line, PrintQueue* queue) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    const std::string_view key = line.substr(0, blank);
    std::string value = unescaped(trim(line.substr(blank)));
    if (key == "Info")
        queue->info = std::move(value);
    else if (key == "Location")
        queue->location = std::move(value);
    else if (key == "MakeModel")
        queue->makeModel = std::move(value);
    else if (key == "DeviceURI")
        queue->deviceUri = std::move(value);
    else if (key == "State")
        queue->state = std::move(value);
    else if (key == "Accepting")
        queue->accepting = std::move(value);
    else if (key == "Shared")
        queue->shared = std::move(value);
    else if (key == "Printer")
        queue->members.push_back(std::move(value));
}

}  // namespace

std::vector<PrintQueue> parseCupsConfig(std::string_view text) {
    std::vector<PrintQueue> queues;
    bool inside = false;
    for (const std::string_view raw : lines(text)) {
        const std::string_view line = trim(raw);
        PrintQueue queue;
        if (parseStart(line, &queue)) {
            queues.push_back(std::move(queue));
            inside = true;
        } else if (startsWith(line, "</")) {
            inside = false;
        } else if (inside) {
            parseSetting(line, &queues.back());
        }
    }
    return queues;
}

std::string withoutPassword(const std::string& uri) {
    constexpr std::string_view kMark = "://";
    const std::size_t mark = uri.find(kMark);
    if (mark == std::string::npos) return uri;
    const std::size_t start = mark + kMark.size();
    // A password may itself have a "@", so the last one before the path counts.
    const std::size_t end = std::min(uri.find_first_of("/?#", start), uri.size());
    const std::size_t at = uri.substr(0, end).rfind('@');
    if (at == std::string::npos || at < start) return uri;
    const std::size_t colon = uri.find(':', start);
    return colon < at ? uri.substr(0, colon) + uri.substr(at) : uri;
}
