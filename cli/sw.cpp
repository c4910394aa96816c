#include <algorithm>
#include <cwctype>
#include <tuple>

#include "cli/catalogue.h"
#include "cli/failure.h"
#include "cli/home.h"
#include "cli/page.h"
#include "cli/signature_file.h"
#include "cli/software_json.h"
#include "cli/software_page.h"
#include "cli/software_scan.h"
#include "cli/subcommand.h"
#include "cli/sw_settings.h"
#include "cli/text.h"
#include "cli/warning_places.h"

namespace {

std::vector<SignatureFile> readSignatureFiles(const Options& options) {
    if (options.catalogue && !options.operands.empty()) {
        throw Failure(kWrongUsage,
                      "--catalogue takes the place of signature files: give the one or the other");
    }
    std::vector<std::string> paths = options.operands;
    if (paths.empty()) paths = options.catalogue ? catalogueIn(*options.catalogue) : shippedCatalogue();
    std::vector<SignatureFile> files;
    files.reserve(paths.size());
    for (const std::string& path : paths) files.push_back(readSignatureFile(path));
    return files;
}

SignatureNames namesOf(const std::vector<SignatureFile>& files) {
    SignatureNames names;
    for (const SignatureFile& file : files) names.insert(file.names.begin(), file.names.end());
    return names;
}

std::vector<Preset> parsePresets(const std::vector<std::string>& texts, const SignatureNames& names) {
    std::vector<Preset> presets;
    for (const std::string& text : texts) {
        const Preset preset = parsePreset(text);
        if (!preset.guid.empty() && names.count(fromLocale(preset.guid.c_str())) == 0) {
            throw Failure(kWrongUsage, "--set " + text + ": no signature has the GUID '" + preset.guid +
                                           "': a value that holds an @ itself ends with another");
        }
        const auto same = [&preset](const Preset& other) { return other.name == preset.name; };
        if (std::any_of(presets.begin(), presets.end(), same)) {
            throw Failure(kWrongUsage, "--set " + preset.name +
                                           " is there twice: a variable has one value and "
                                           "one scope");
        }
        presets.push_back(preset);
    }
    return presets;
}

std::wstring lowered(std::wstring text) {
    std::transform(text.begin(), text.end(), text.begin(), std::towlower);
    return text;
}

void sortByNameAndPlace(std::vector<Software>& found) {
    std::stable_sort(found.begin(), found.end(), [](const Software& a, const Software& b) {
        return std::make_tuple(lowered(a.name), a.place()) < std::make_tuple(lowered(b.name), b.place());
    });
}

Answer runSw(const Options& options) {
    const std::vector<SignatureFile> files = readSignatureFiles(options);
    const SignatureNames names = namesOf(files);
    const Library library(options.home ? options.home : findHome(), options.verbose);
    SoftwareScan scan(library);
    for (const Preset& preset : parsePresets(options.presets, names)) scan.set(preset);
    for (const std::string& text : options.pluginSettings) scan.set(parsePluginSetting(text));
    scan.run(files);

    std::vector<Software> found = scan.results(names);
    sortByNameAndPlace(found);
    std::vector<Warning> warnings = scan.warnings();
    nameFilesForLines(warnings, files);
    if (options.json) return softwareAsJson(found, warnings);
    return {toUtf8(softwareAsText(found, standardPage())), toUtf8(warningsAsText(warnings, names))};
}

}  // namespace

const Subcommand kSwCommand = {
    "sw",
    "list the software that signatures describe",
    R"(usage: zuk sw [OPTION...] [FILE...]

Looks for software by signatures, in one scan, and prints each place where some was found: with its version
and the package that it belongs to. A FILE holds signatures; without any it is the catalogue that comes with
zuk.

  --catalogue DIR                  take all files *.xml of DIR
  --set NAME=VALUE[@GUID]          set a variable that signatures may take as input, for all of them or for
                                   the one named; a VALUE that holds an @ ends with another
  --plugin PLUGIN.ATTRIBUTE=VALUE  set one of the scanner's attributes, as in system.Prefix=/mnt
  --json                           print JSON: one object, with arrays of results and of warnings
  --home DIR                       take the scanner zuksw from DIR
  -v, --verbose                    show the library's messages on standard error
  -h, --help                       print this text

--set and --plugin may be repeated. Warnings go to standard error, below the list. A terminal gets a table
that fits it, long cells cut. A file or a pipe gets everything.
)",
    runSw,
    {{"--catalogue", "DIR", [](const std::string& value, Options& options) { options.catalogue = value; }},
     {"--set", "NAME=VALUE[@GUID]",
      [](const std::string& value, Options& options) { options.presets.push_back(value); }},
     {"--plugin", "PLUGIN.ATTRIBUTE=VALUE",
      [](const std::string& value, Options& options) { options.pluginSettings.push_back(value); }}}};
