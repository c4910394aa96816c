#include "tests/support/shell.h"

#include <sys/wait.h>

#include <cstdlib>

#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

ShellResult shell(const std::string& command) {
    const TemporaryFolder folder;
    const std::string out = folder.path() + "/out";
    const std::string err = folder.path() + "/err";
    const std::string line = "{ " + command + "\n} </dev/null >" + quoted(out) + " 2>" + quoted(err);
    const int status = std::system(line.c_str());
    return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status), readFile(out), readFile(err)};
}

std::string quoted(const std::string& text) {
    std::string word = "'";
    for (const char c : text) word += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return word + "'";
}
