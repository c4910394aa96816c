#include "bench/support/software_questions.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

std::string signature(const std::string& guid, const std::string& conditions, const std::string& report) {
    return "<Signature guid=\"" + guid + "\" name=\"" + guid + "\" per=\"place\">\n  <Detect>" + conditions +
           "</Detect>\n  <Report>" + report + "</Report>\n</Signature>\n";
}

std::string setting(const std::string& plugin, const std::string& attribute, const std::string& value) {
    return "<Plugin name=\"" + plugin + "\" version=\"1.0\"><Attribute name=\"" + attribute + "\" value=\"" +
           value + "\"/></Plugin>";
}

std::string element(const std::string& name, const std::string& attributes, const std::string& content) {
    return "<" + name + " " + attributes + ">" + content + "</" + name + ">\n";
}

std::string libraryAndItsPackage(const std::string& number) {
    return "<Package name=\"lib*" + number +
           "\" as=\"p\" ge=\"1.0\"/><File as=\"f\" path=\"/usr/lib/x86_64-linux-gnu/lib*.so." + number +
           "\"/><System key=\"os.id\" set=\"id\"/>";
}

std::string fileBelow(const std::string& directory, const std::string& name) {
    return "<File as=\"f\" name=\"" + name + "\" under=\"" + directory + "\"/>";
}

const char kPath[] = "<Variable name=\"path\" value=\"${f.path}\"/>";

}  // namespace

std::string signaturesIn(const std::string& path) {
    std::ifstream file(path);
    std::stringstream text;
    text << file.rdbuf();
    const std::string all = text.str();
    const std::size_t begin = all.find('>', all.find("<Signatures"));
    const std::size_t end = all.rfind("</Signatures>");
    if (begin == all.npos || end == all.npos) throw std::runtime_error(path + " holds no signatures");
    return all.substr(begin + 1, end - begin - 1);
}

std::string namedSignatures(std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        all += signature(
            "product-" + number,
            "<File as=\"f\" name=\"product-" + std::to_string(i * 7919 % 1'000'003) + "-" + number + "\"/>",
            kPath);
    }
    return all;
}

std::string signaturesWithoutWalk(std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        all += signature("package-" + number, libraryAndItsPackage(number), kPath);
    }
    return all;
}

std::string fileSignatures(const std::vector<std::string>& names, const std::string& directory) {
    std::string all;
    for (const std::string& name : names) {
        all += signature(name, fileBelow(directory, name), kPath);
    }
    return all;
}

std::string fileDefinitions(const std::vector<std::string>& names, const std::string& directory) {
    std::string definitions;
    std::string tests;
    std::string objects;
    for (std::size_t i = 1; i <= names.size(); ++i) {
        const std::string number = std::to_string(i);
        const std::string test = "oval:zuk:tst:" + number;
        const std::string object = "oval:zuk:obj:" + number;
        definitions +=
            element("definition", "class=\"inventory\" version=\"1\" id=\"oval:zuk:def:" + number + "\"",
                    "<metadata><title>t</title><description>d</description></metadata><criteria>"
                    "<criterion test_ref=\"" +
                        test + "\"/></criteria>");
        tests += element(
            "u:file_test",
            "check=\"all\" check_existence=\"at_least_one_exists\" comment=\"c\" version=\"1\" id=\"" + test +
                "\"",
            "<u:object object_ref=\"" + object + "\"/>");
        objects += element("u:file_object", "version=\"1\" id=\"" + object + "\"",
                           "<u:behaviors recurse=\"directories\" recurse_direction=\"down\" "
                           "recurse_file_system=\"local\"/><u:path>" +
                               directory + "</u:path><u:filename>" + names[i - 1] + "</u:filename>");
    }
    const std::string oval = "http://oval.mitre.org/XMLSchema/";
    return "<?xml version=\"1.0\"?>\n" +
           element("oval_definitions",
                   "xmlns=\"" + oval + "oval-definitions-5\" xmlns:o=\"" + oval +
                       "oval-common-5\" xmlns:u=\"" + oval + "oval-definitions-5#unix\"",
                   "<generator><o:schema_version>5.10</o:schema_version>"
                   "<o:timestamp>2020-01-01T00:00:00</o:timestamp></generator>\n"
                   "<definitions>" +
                       definitions + "</definitions><tests>" + tests + "</tests><objects>" + objects +
                       "</objects>");
}

std::string contentSignatures(const std::vector<std::string>& patterns, const std::string& directory) {
    std::string all;
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        all += signature("pattern-" + std::to_string(i),
                         "<File as=\"f\" name=\"*\" under=\"" + directory + "\"/><Content of=\"f\" match=\"" +
                             patterns[i] + "\"/>",
                         kPath);
    }
    return all;
}

std::string contentRules(const std::vector<std::string>& patterns) {
    std::string rules;
    for (std::size_t i = 0; i < patterns.size(); ++i) {
        rules += "rule r" + std::to_string(i) + " { strings: $a = /" + patterns[i] + "/ condition: $a }\n";
    }
    return rules;
}

std::string signatureFile(const std::string& signatures) {
    return "<Signatures>\n" + signatures + "</Signatures>\n";
}

std::string scanConfiguration(const std::string& root, unsigned threads) {
    std::string settings = setting("search", "Root", root) + setting("limits", "Nice", "0");
    if (threads != 0) settings += setting("limits", "Threads", std::to_string(threads));
    return "<KAV><ZUK><XSE version=\"1.0\"><Plugins>" + settings + "</Plugins></XSE></ZUK></KAV>\n";
}
