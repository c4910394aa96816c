#include "scanners/zuksw/setup/command_line.h"

#include "scanners/shared/options.h"

namespace zuksw {

const char kUsage[] =
    "zuksw - judges the software of this machine by signatures\n"
    "\n"
    "usage: zuksw -c CONFIG -o OUTPUT -e WARNINGS -i SIGNATURES\n"
    "       zuksw --check -i SIGNATURES\n"
    "       zuksw --help | --version\n"
    "\n"
    "  -c, --config FILE      configuration: preset variables and settings (XML)\n"
    "  -o, --output FILE      receives the results (XML)\n"
    "  -e, --warnings FILE    receives what else there is to say (XML)\n"
    "  -i, --input FILE       signatures (XML)\n"
    "      --check            explain every mistake in the signatures; scan nothing\n"
    "\n"
    "exit status: 0 done, 1 internal failure, 2 usage, 3 signatures rejected,\n"
    "             4 configuration unreadable or malformed, 5 a file cannot be written\n";

std::string readCommandLine(const std::vector<std::string>& words, CommandLine* line) {
    const std::string error =
        parseOptions(words,
                     {{"-c", "--config", &line->configuration},
                      {"-o", "--output", &line->output},
                      {"-e", "--warnings", &line->warnings},
                      {"-i", "--input", &line->signatures}},
                     {{"--help", &line->help}, {"--version", &line->version}, {"--check", &line->check}});
    if (!error.empty() || line->help || line->version) return error;
    if (line->signatures.empty()) return "-i SIGNATURES is missing";
    const bool files = !line->configuration.empty() || !line->output.empty() || !line->warnings.empty();
    if (line->check) return files ? "--check takes -i SIGNATURES only" : "";
    if (line->configuration.empty()) return "-c CONFIG is missing";
    if (line->output.empty()) return "-o OUTPUT is missing";
    if (line->warnings.empty()) return "-e WARNINGS is missing";
    return line->output == line->warnings ? "OUTPUT and WARNINGS are the same file" : "";
}

}  // namespace zuksw
