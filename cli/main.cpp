#include <clocale>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "cli/ending_signals.h"
#include "cli/failure.h"
#include "cli/standard_streams.h"
#include "cli/subcommand.h"
#include "cli/text.h"

namespace {

const Subcommand* const kSubcommands[] = {&kHwCommand, &kSwCommand, &kGroupsCommand};

std::string help() {
    std::string text =
        "zuk lists what a Linux machine has: hardware and software.\n\nusage: zuk COMMAND [OPTION...]\n\n";
    for (const Subcommand* subcommand : kSubcommands) {
        char line[128];
        std::snprintf(line, sizeof line, "  %-8s  %s\n", subcommand->name, subcommand->summary);
        text += line;
    }
    return text +
           "\n"
           "  zuk COMMAND --help  tells more about a command\n"
           "  zuk --version       prints the version\n"
           "\n"
           "Exit status: 0; 1 when the scan failed or its result could not be written; 2 for wrong usage.\n";
}

const Subcommand& findSubcommand(const std::string& name) {
    for (const Subcommand* subcommand : kSubcommands) {
        if (name == subcommand->name) return *subcommand;
    }
    throw Failure(kWrongUsage, "there is no command '" + name + "': \"zuk --help\" lists them");
}

// What the command line asks for. Everything that the library holds is released when it returns, so that
// nothing is left behind when writing the answer ends the program.
Answer answer(const std::vector<std::string>& words) {
    if (words.empty()) throw Failure(kWrongUsage, "a command is missing: \"zuk --help\" lists them");
    if (words[0] == "--help" || words[0] == "-h") return help();
    if (words[0] == "--version") return std::string("zuk " ZUK_VERSION "\n");

    const Subcommand& subcommand = findSubcommand(words[0]);
    const Options options = parseOptions({words.begin() + 1, words.end()}, subcommand.valueOptions);
    if (options.help) return std::string(subcommand.help);
    const EndingSignals signals;
    return subcommand.run(options);
}

int fail(int status, const char* message) {
    std::fprintf(stderr, "zuk: %s\n", toUtf8(printable(fromLocale(message))).c_str());
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    fillStandardStreams();
    // The output is UTF-8 whatever the user's locale; the library's messages come in the same encoding.
    std::setlocale(LC_CTYPE, "C.UTF-8");
    try {
        const Answer said = answer({argv + 1, argv + argc});
        writeStandardOutput(said.out);
        std::fputs(said.remarks.c_str(), stderr);
        return 0;
    } catch (const Failure& failure) {
        return fail(failure.exitStatus, failure.what());
    } catch (const std::exception& error) {
        return fail(kScanFailed, error.what());
    }
}
