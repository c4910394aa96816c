#include "tests/zukhw/scanner_run.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

ScannerRun runScanner(const std::vector<std::string>& arguments) {
    const TemporaryFolder folder;
    const std::string out = folder.path() + "/out";
    const std::string err = folder.path() + "/err";
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, out.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, err.c_str(), O_WRONLY | O_CREAT, 0600);
    const std::string program = std::string(ZUK_BINARY_DIR) + "/bin/zukhw";
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, program.c_str(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) throw std::runtime_error("cannot start " + program);
    int status = 0;
    waitpid(pid, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, readFile(out), readFile(err)};
}

std::string configFor(const std::vector<std::string>& groups) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<KAV>\n<ZUK>\n<Hardware version=\"1.0\">\n";
    for (const std::string& group : groups) text += "<Group Name=\"" + group + "\"/>\n";
    return text + "</Hardware>\n</ZUK>\n</KAV>\n";
}
