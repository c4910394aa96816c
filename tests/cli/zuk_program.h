#pragma once

#include <filesystem>
#include <string>

#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"

// The program with a scanner of the test's own making, and a folder for what it leaves behind.
class ZukProgram {
  public:
    ZukProgram() {
        for (const char* folder : {"home", "temp"}) std::filesystem::create_directory(path(folder));
    }

    // body: what the scanner does; its fourth argument is the path of its output file.
    void installScanner(const std::string& body) const { folder_.script("home/zukhw", body); }
    // A scanner that writes these instances.
    void installScannerThatFinds(const std::string& instances) const {
        installScanner("cp " + quoted(folder_.file("found.xml", "<Inventory>" + instances + "</Inventory>")) +
                       " \"$4\"");
    }

    // The same for software: of its arguments the second is the path of the configuration, the fourth of the
    // results, the sixth of the warnings, the eighth of the signatures.
    void installSoftwareScanner(const std::string& body) const { folder_.script("home/zuksw", body); }
    // What goes between the root tags of results and warnings. before: what else it does.
    void installSoftwareScannerThatFinds(const std::string& results, const std::string& warnings = "",
                                         const std::string& before = ":") const {
        const std::string out = folder_.file("results.xml", "<Results>" + results + "</Results>");
        const std::string told = folder_.file("warnings.xml", "<Warnings>" + warnings + "</Warnings>");
        installSoftwareScanner(before + "\ncp " + quoted(out) + " \"$4\"\ncp " + quoted(told) + " \"$6\"");
    }

    // The beginning of a command line that runs the program.
    std::string command() const { return "TEMP=" + path("temp") + " " + ZUK_BINARY_DIR "/bin/zuk "; }
    ShellResult run(const std::string& arguments) const { return shell(command() + arguments); }
    ShellResult runHw(const std::string& arguments = "") const {
        return run("hw --home " + path("home") + " " + arguments);
    }

    ShellResult runSw(const std::string& arguments) const {
        return run("sw --home " + path("home") + " " + arguments);
    }

    bool leftNothingBehind() const { return std::filesystem::is_empty(path("temp")); }
    std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
    const TemporaryFolder& folder() const { return folder_; }

  private:
    TemporaryFolder folder_;
};
