#include "cli/software_scan.h"

#include <cstdio>

#include "cli/event.h"
#include "cli/failure.h"
#include "cli/text.h"

namespace {

constexpr int kConfigurationNotWritten = 201;
constexpr int kRejected = 202;
constexpr int kScannerFailed = 203;
constexpr int kScannerRejects = 3;  // its exit statuses
constexpr int kScannerRefusesSettings = 4;

std::wstring pathArgument(const std::string& path) {
    if (path.find('"') != std::string::npos) {
        throw Failure(kWrongUsage, path +
                                       ": its name holds a quotation mark, with which it cannot be handed to "
                                       "the scanner: rename it, or take a link to it");
    }
    return bytesAsWide(path);
}

int evaluate(ZUKSwCtx* context, const std::vector<SignatureFile>& files) {
    // One that stands alone goes as it is, so that the scanner tells the true places of its mistakes.
    if (files.size() == 1) return ZUK_sw_evaluate_file(context, pathArgument(files.front().path).c_str());
    std::vector<std::wstring> texts;
    std::vector<const wchar_t*> pointers;
    for (const SignatureFile& file : files) {
        texts.push_back(bytesAsWide(file.inner()));
    }
    pointers.reserve(texts.size());
    for (const std::wstring& text : texts) pointers.push_back(text.c_str());
    return ZUK_sw_evaluate_multi(context, pointers.data(), static_cast<unsigned>(pointers.size()));
}

}  // namespace

SoftwareScan::SoftwareScan(const Library& library) : library_(library), log_(library.isVerbose()) {
    ZUKSwCtx* context = nullptr;
    require(ZUK_sw_init(library.get(), ScanLog::receive, &log_, &context), "ZUK_sw_init");
    context_.reset(context);
}

void SoftwareScan::set(const Preset& preset) {
    const int status =
        ZUK_sw_setopt_variable(context_.get(), asAttribute(preset.name).c_str(),
                               asAttribute(preset.value).c_str(), asAttribute(preset.guid).c_str());
    require(status, "ZUK_sw_setopt_variable");
}

void SoftwareScan::set(const PluginSetting& setting) {
    const int status =
        ZUK_sw_setopt_config(context_.get(), asAttribute(setting.plugin).c_str(),
                             asAttribute(setting.attribute).c_str(), asAttribute(setting.value).c_str());
    require(status, "ZUK_sw_setopt_config");
}

void SoftwareScan::run(const std::vector<SignatureFile>& files) {
    if (log_.showsProgress()) {
        std::fprintf(stderr, "zuk: scanning, with %zu file%s of signatures\n", files.size(),
                     files.size() == 1 ? "" : "s");
    }
    if (files.size() > 1) throwIfUnfit(files);
    throwIfFailed(evaluate(context_.get(), files), files);
}

void SoftwareScan::throwIfUnfit(const std::vector<SignatureFile>& files) const {
    for (const SignatureFile& file : files) {
        if (file.mistake.empty()) continue;
        throw Failure(kScanFailed, file.path + ": " + file.mistake + "; " + checkRemedy(file.path));
    }
}

void SoftwareScan::throwIfFailed(int status, const std::vector<SignatureFile>& files) const {
    if (status == 0) return;
    const auto failure = [status](const std::string& message) {
        return Failure(kScanFailed, withStatus(message, status));
    };
    int exitStatus = -1;
    ZUK_sw_get_returncode(context_.get(), &exitStatus);
    if (status == kRejected && exitStatus == kScannerRejects) throw failure(rejection(files));
    if (status == kConfigurationNotWritten || status == kRejected) {
        throw failure(
            "the scanner's files could not be written: is the disk full? TEMP names another "
            "directory for them");
    }
    if (status == kScannerFailed && exitStatus == kScannerRefusesSettings && !log_.complaint().empty()) {
        throw failure("the software scanner refuses a setting: " + log_.complaint());
    }
    if (status == kScannerFailed)
        throw failure(scannerFailure("software scanner", "zuksw", exitStatus, library_));
    throw failure("what the software scanner of " + library_.homeInWords() +
                  " wrote could not be read: -v shows where it is wrong");
}

std::string SoftwareScan::rejection(const std::vector<SignatureFile>& files) const {
    const std::string& first = files.front().path;
    // The complaint begins with the path of the file that the scanner was given.
    const std::string& complaint = log_.complaint();
    const std::size_t pathEnd = files.size() == 1 ? first.size() : complaint.find(": ");
    const std::string why = complaint.size() > pathEnd ? complaint.substr(pathEnd) : "";
    const std::string what =
        files.size() == 1 ? first : "the " + std::to_string(files.size()) + " signature files together";
    return "the scanner rejects " + what + why + "; " + checkRemedy(files.size() == 1 ? first : "FILE");
}

std::string SoftwareScan::checkRemedy(const std::string& path) const {
    return "\"" + library_.scanner("zuksw") + " --check -i " + path + "\" explains every mistake";
}

std::vector<Software> SoftwareScan::results(const SignatureNames& names) const {
    ZUKSwResult** results = nullptr;
    unsigned count = 0;
    require(ZUK_sw_get_results(context_.get(), &results, &count), "ZUK_sw_get_results");
    std::vector<Software> found;
    found.reserve(count);
    for (unsigned i = 0; i < count; ++i) found.push_back(read(results[i], names));
    return found;
}

Software SoftwareScan::read(const ZUKSwResult* result, const SignatureNames& names) const {
    const wchar_t* text = nullptr;
    Software software;
    require(ZUK_sw_get_guid(context_.get(), result, &text), "ZUK_sw_get_guid");
    software.guid = text;
    const auto name = names.find(software.guid);
    software.name = name == names.end() ? software.guid : name->second;
    require(ZUK_sw_get_metadata(context_.get(), result, &text), "ZUK_sw_get_metadata");
    software.metadata = fromLocale(wideAsBytes(text).c_str());

    const wchar_t** variables = nullptr;
    unsigned count = 0;
    require(ZUK_sw_get_variables(context_.get(), result, &variables, &count), "ZUK_sw_get_variables");
    for (unsigned i = 0; i < count; ++i) {
        require(ZUK_sw_get_value(context_.get(), result, variables[i], &text), "ZUK_sw_get_value");
        software.variables.emplace_back(variables[i], text);
    }
    return software;
}

std::vector<Warning> SoftwareScan::warnings() const {
    const wchar_t** texts = nullptr;
    unsigned count = 0;
    require(ZUK_sw_get_warnings(context_.get(), &texts, &count), "ZUK_sw_get_warnings");
    std::vector<Warning> warnings;
    warnings.reserve(count);
    for (unsigned i = 0; i < count; ++i) warnings.push_back(readEvent(texts[i]));
    return warnings;
}
