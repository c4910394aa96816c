#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/shell.h"
#include "tests/support/temporary_folder.h"

// One <MatchedSignature>.
struct Match {
    std::string guid;
    std::string name;
    std::map<std::string, std::string> variables;
};

// One <Event>.
struct EventRow {
    std::string code;
    std::string guid;
    std::string path;
    std::string text;
    std::string count;
};

// What one run of zuksw came to.
struct ScanResult {
    int status = -1;
    std::string messages;
    std::string output;    // the result file as it stands
    std::string warnings;  // the warning file
    std::vector<Match> matches;
    std::vector<EventRow> events;

    bool has(const std::string& code) const;
    std::string textOf(const std::string& code) const;
    // The values of one variable, in order, joined by blanks.
    std::string values(const std::string& variable) const;
};

// Runs the scanner on a made tree, which is all that it sees as the machine.
class ScanTest : public ::testing::Test {
  protected:
    using Settings = std::vector<std::pair<std::string, std::string>>;  // "plugin/attribute" to value

    // Writes a file below the tree, directories included. Names begin with '/'.
    void file(const std::string& path, std::string_view content = "", mode_t mode = 0644);
    void directory(const std::string& path);
    void link(const std::string& target, const std::string& path);
    std::string treePath(const std::string& path) const { return tree_.path() + path; }

    // One signature "g" with that Detect and the report of the variables named.
    static std::string signature(const std::string& conditions, const std::vector<std::string>& report = {},
                                 const std::string& attributes = "", const std::string& before = "");

    // Evaluates signatures (without the root element). presets: XML of <Variable> elements.
    ScanResult scan(const std::string& signatures, const Settings& settings = {},
                    const std::string& presets = "");
    // Runs the program with files that are there already.
    ScanResult run(const std::string& configuration, const std::string& signatures);

    // "yes", "no" or "unknown": what becomes of one signature with these conditions.
    std::string truth(const std::string& conditions, const Settings& settings = {});

    static std::string program();

    // The parts of scan(), for tests that start the program themselves.
    std::string configurationFile(const Settings& settings = {}, const std::string& presets = "") const;
    std::string signatureFile(const std::string& signatures) const;
    std::string commandLine(const std::string& configuration, const std::string& signatures) const;
    // Reads the files that a run left behind.
    ScanResult take(const ShellResult& shown) const;

    TemporaryFolder tree_;
    TemporaryFolder work_;
    bool usePrefix_ = true;  // false: search/Root is the tree
    std::string before_;     // stands before the program's name: "nice "
};

// Text as an XML attribute value.
std::string xml(const std::string& text);
