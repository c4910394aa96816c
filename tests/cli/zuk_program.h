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

    // The beginning of a command line that runs the program.
    std::string command() const { return "TEMP=" + path("temp") + " " + ZUK_BINARY_DIR "/bin/zuk "; }
    ShellResult run(const std::string& arguments) const { return shell(command() + arguments); }
    ShellResult runHw(const std::string& arguments = "") const {
        return run("hw --home " + path("home") + " " + arguments);
    }

    bool leftNothingBehind() const { return std::filesystem::is_empty(path("temp")); }
    std::string path(const std::string& name) const { return folder_.path() + "/" + name; }
    const TemporaryFolder& folder() const { return folder_; }

  private:
    TemporaryFolder folder_;
};
