#include "tests/zukhw/system_calls.h"

#include <algorithm>

#include "scanners/zukhw/text.h"
#include "tests/support/files.h"
#include "tests/support/sanitized.h"
#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"

namespace {

// `28501 close(5</proc/stat>) = 0`
std::optional<SystemCall> parseCall(std::string_view line) {
    const std::size_t name = line.find_first_not_of("0123456789 ");
    const std::size_t begin = line.find('(');
    const std::size_t end = line.rfind(") ");
    const std::size_t result = line.find("= ", end);
    if (name > begin || end == std::string_view::npos || result == std::string_view::npos)
        return std::nullopt;
    return SystemCall{std::string(line.substr(name, begin - name)),
                      std::string(line.substr(begin + 1, end - begin - 1)),
                      std::string(line.substr(result + 2))};
}

}  // namespace

std::string SystemCall::opened() const {
    const bool opens = name == "open" || name == "openat" || name == "openat2";
    const std::size_t begin = result.find('<');
    if (!opens || begin == std::string::npos) return "";
    return result.substr(begin + 1, result.rfind('>') - begin - 1);
}

std::string SystemCall::text() const {
    const std::size_t begin = arguments.find('"');
    if (begin == std::string::npos) return "";
    return arguments.substr(begin + 1, arguments.find('"', begin + 1) - begin - 1);
}

std::optional<std::vector<SystemCall>> traceScanner(const std::vector<std::string>& arguments) {
    if (kSanitized) return std::nullopt;
    const TemporaryFolder folder;
    const std::string trace = folder.path() + "/trace";
    std::string command = "strace -f -yy -s 4096 -o " + quoted(trace);
    command += ' ' + quoted(std::string(ZUK_BINARY_DIR) + "/bin/zukhw");
    for (const std::string& argument : arguments) command += ' ' + quoted(argument);
    if (shell(command).status != 0) return std::nullopt;
    std::vector<SystemCall> calls;
    const std::string text = readFile(trace);
    for (const std::string_view line : lines(text)) {
        if (const auto call = parseCall(line)) calls.push_back(*call);
    }
    return calls;
}
