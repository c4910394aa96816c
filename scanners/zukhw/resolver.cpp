#include "scanners/zukhw/resolver.h"

#include "scanners/zukhw/machine.h"
#include "scanners/zukhw/text.h"

Resolver::Resolver(Machine& machine) {
    parse(machine.text("etc/resolv.conf"));
    if (servers_ != std::vector<std::string>{"127.0.0.53"}) return;
    const std::string upstream = machine.text("run/systemd/resolve/resolv.conf");
    if (!upstream.empty()) parse(upstream);
}

void Resolver::parse(const std::string& text) {
    servers_.clear();
    search_.clear();
    for (const std::string_view line : lines(text)) {
        const std::vector<std::string_view> fields = words(line);
        if (fields.size() < 2) continue;
        if (fields[0] == "nameserver") servers_.emplace_back(fields[1]);
        // The last of these lines counts.
        if (fields[0] == "search" || fields[0] == "domain") search_.assign(fields.begin() + 1, fields.end());
    }
}
