#include "cli/library.h"

#include <algorithm>
#include <cstdio>

#include "cli/failure.h"
#include "cli/text.h"

namespace {

constexpr int kLastGroup = 51;
constexpr int kNoTemporaryDirectory = 6;
constexpr int kConfigurationNotWritten = 102;
constexpr int kScannerFailed = 103;

// The directory as the library takes it: one byte a character; quoted where it has blanks, since it becomes
// part of a command line that is split at them.
std::wstring homeArgument(const std::string& directory) {
    std::wstring wide;
    for (const char byte : directory) wide.push_back(static_cast<unsigned char>(byte));
    return wide.find_first_of(L" \t") == std::wstring::npos ? wide : L'"' + wide + L'"';
}

void printMessage(int, int, void*, const char* location, const char* text) {
    const std::string line = toUtf8(printable(fromLocale(text)));
    std::fprintf(stderr, "zuk: %s: %s\n", location, line.c_str());
}

std::string withStatus(const std::string& message, int status) {
    return message + " (status " + std::to_string(status) + ")";
}

void require(int status, const char* call) {
    if (status != 0) throw Failure(kScanFailed, withStatus(std::string(call) + " failed", status));
}

std::string scannerFailure(int exitStatus, const std::string& home) {
    if (exitStatus < 0) {
        return "the hardware scanner could not be started from " + home +
               ": name the directory that holds zukhw with --home DIR";
    }
    const std::string end = exitStatus > 128 ? "was ended by signal " + std::to_string(exitStatus - 128)
                                             : "ended with exit status " + std::to_string(exitStatus);
    return "the hardware scanner of " + home + " " + end + ": -v shows its messages";
}

}  // namespace

Library::Library(std::optional<std::string> home, bool verbose)
    : home_(std::move(home)), log_(verbose ? printMessage : nullptr) {
    const std::wstring argument = homeArgument(home_.value_or(""));
    ZUKCtx* context = nullptr;
    const int status = ZUK_init("zuk", log_, nullptr, nullptr, home_ ? argument.c_str() : nullptr, &context);
    if (status == kNoTemporaryDirectory) {
        throw Failure(kScanFailed, withStatus("no private temporary directory could be created: set the "
                                              "environment variable TEMP to a directory you can write to",
                                              status));
    }
    require(status, "ZUK_init");
    context_.reset(context);
}

std::string Library::homeInWords() const {
    return home_ ? *home_
                 : "the installation that /etc/zuk/zuk.ini names (there is none beside this program)";
}

HardwareScan::HardwareScan(const Library& library) : library_(library) {
    ZUKHwCtx* context = nullptr;
    require(ZUK_hw_init(library.get(), library.logCallback(), nullptr, &context), "ZUK_hw_init");
    context_.reset(context);
}

std::vector<Group> HardwareScan::groups() const {
    std::vector<Group> groups;
    for (int number = 1; number <= kLastGroup; ++number) {
        const wchar_t* name = nullptr;
        // Some numbers name no group.
        if (ZUK_hw_get_group_name(context_.get(), number, &name) == 0) groups.push_back({number, name, {}});
    }
    return groups;
}

void HardwareScan::enable(const Group& group) {
    require(ZUK_hw_setopt(context_.get(), group.number, 1), "ZUK_hw_setopt");
}

void HardwareScan::run() {
    const int status = ZUK_hw_run(context_.get());
    if (status == 0) return;
    if (status == kConfigurationNotWritten) {
        throw Failure(kScanFailed, withStatus("the scanner's configuration file could not be written: is the "
                                              "disk full? TEMP names another directory for it",
                                              status));
    }
    if (status == kScannerFailed) {
        int exitStatus = -1;
        ZUK_hw_get_returncode(context_.get(), &exitStatus);
        throw Failure(kScanFailed, withStatus(scannerFailure(exitStatus, library_.homeInWords()), status));
    }
    throw Failure(kScanFailed, withStatus("what the hardware scanner of " + library_.homeInWords() +
                                              " wrote could not be read: -v shows where it is wrong",
                                          status));
}

void HardwareScan::read(Group& group) const {
    int instances = 0;
    require(ZUK_hw_get_group_instances(context_.get(), group.number, &instances),
            "ZUK_hw_get_group_instances");
    for (int i = 0; i < instances; ++i) {
        const wchar_t** names = nullptr;
        int count = 0;
        require(ZUK_hw_get_fields(context_.get(), group.number, i, &names, &count), "ZUK_hw_get_fields");
        Instance instance;
        for (int n = 0; n < count; ++n) {
            const auto same = [&](const auto& field) { return field.first == names[n]; };
            // Only the first of equal names can be asked for.
            if (std::any_of(instance.begin(), instance.end(), same)) continue;
            const wchar_t* value = nullptr;
            require(ZUK_hw_get_value(context_.get(), group.number, i, names[n], &value), "ZUK_hw_get_value");
            instance.emplace_back(names[n], value);
        }
        group.instances.push_back(std::move(instance));
    }
}
