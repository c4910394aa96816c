#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/output/events.h"

namespace zuksw {

/** A value that the caller gives to signatures: to all that have such an Input, or to those with one guid. */
struct Preset {
    std::string name;
    std::string value;
    std::string guid;  // empty: all
};

/** Everything that the configuration file can set, at its default. Sizes are bytes. */
struct Configuration {
    std::vector<Preset> presets;

    struct {
        std::vector<std::string> roots;
        std::vector<std::string> exclude;  // "none" drops the built-in list
        std::string fileSystems = "local";
        bool containers = false;
        std::uint64_t maxDepth = 64;
        std::uint64_t maxEntries = 50'000'000;
        bool linksToFiles = true;
        bool incompleteIsUnknown = true;
    } search;
    struct {
        std::string prefix;
    } system;
    struct {
        std::uint64_t maxFileSize = std::uint64_t{256} << 20U;
        std::uint64_t maxTotal = std::uint64_t{16} << 30U;
        std::uint64_t regexMemory = std::uint64_t{64} << 20U;
        std::uint64_t maxCapture = 1024;
        std::vector<std::string> deny;  // "none" drops the built-in list
    } content;
    struct {
        bool enabled = true;
        std::uint64_t maxDepth = 2;
        std::uint64_t maxMembers = 100'000;
        std::uint64_t maxMemberSize = std::uint64_t{16} << 20U;
        std::uint64_t maxTotal = std::uint64_t{512} << 20U;
        std::uint64_t maxRatio = 200;
    } archive;
    struct {
        std::vector<std::string> managers;  // empty: all
        std::string dpkgDir, apkDir, rpmDir, pacmanDir;
    } packages;
    struct {
        bool enabled = true;
        bool captureArguments = false;
    } processes;
    struct {
        std::uint64_t timeBudget = 900;  // seconds, 0: none
        std::uint64_t threads = 0;       // 0: as many as there are cores, up to 4
        std::uint64_t nice = 10;
        std::uint64_t maxRows = 10'000;
        std::uint64_t maxResults = 100'000;
        std::uint64_t maxEvents = 1000;
        bool strict = false;
    } limits;
    struct {
        bool evidence = true;
    } output;
};

/** Reads the configuration in `bytes`. Returns an empty string, or why the file is refused ("line 3, column
 * 7:
 *  ..."). What is unknown or cannot be parsed becomes an event, unless limits/Strict refuses it. */
std::string readConfiguration(std::string_view bytes, Configuration* configuration, Events* events);

}  // namespace zuksw
