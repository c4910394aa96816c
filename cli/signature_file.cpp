#include "cli/signature_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "cli/failure.h"
#include "cli/xml_parser.h"

namespace fs = std::filesystem;

namespace {

constexpr std::uintmax_t kMaxSize = std::uintmax_t{64} << 20U;  // the scanner takes no more

// Notes a file's root element, its signatures and its mistake while expat reads it.
class Reading {
  public:
    // encoding: what the bytes are taken for, whatever the file declares, as the scanner does.
    Reading(SignatureFile& file, const char* encoding) : file_(file), parser_(XML_ParserCreate(encoding)) {
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), onStart, onEnd);
        XML_SetStartDoctypeDeclHandler(parser_.get(), onDoctype);
    }

    void run() {
        const std::string& text = file_.text;
        const XML_Status status = XML_Parse(parser_.get(), text.data(), static_cast<int>(text.size()), 1);
        if (status != XML_STATUS_OK) refuse(XML_ErrorString(XML_GetErrorCode(parser_.get())));
    }

  private:
    static Reading& self(void* data) { return *static_cast<Reading*>(data); }
    static void onStart(void* data, const XML_Char* name, const XML_Char** attributes) {
        self(data).start(name, attributes);
    }
    static void onEnd(void* data, const XML_Char*) { self(data).end(); }
    static void onDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
        self(data).refuse("a DOCTYPE is not allowed: remove it");
    }

    std::size_t position() const { return static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get())); }

    void start(std::string_view name, const XML_Char** attributes) {
        ++depth_;
        if (depth_ == 1) startRoot(name);
        if (depth_ == 2 && name == "Signature") {
            file_.names.emplace(attributeOf(attributes, "guid"), attributeOf(attributes, "name"));
        }
    }
    void startRoot(std::string_view name) {
        if (name != "Signatures") {
            refuse("the root element is <" + std::string(name) + ">, but must be <Signatures>");
        }
        file_.innerBegin = position() + static_cast<std::size_t>(XML_GetCurrentByteCount(parser_.get()));
    }
    void end() {
        if (--depth_ == 0) file_.innerEnd = position();
    }
    // Only the first mistake counts: stopping the parser is an error of its own to it.
    void refuse(const std::string& why) {
        XML_StopParser(parser_.get(), XML_FALSE);
        if (!file_.mistake.empty()) return;
        file_.mistake = "line " + std::to_string(XML_GetCurrentLineNumber(parser_.get())) + ", column " +
                        std::to_string(XML_GetCurrentColumnNumber(parser_.get()) + 1) + ": " + why;
    }

    SignatureFile& file_;
    XmlParser parser_;
    int depth_ = 0;
};

std::string readAll(const std::string& path) {
    const auto refuse = [&path](const std::string& why) { return Failure(kWrongUsage, path + ": " + why); };
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status)) throw refuse("is a directory: \"--catalogue DIR\" takes all files of one");
    if (error || !fs::exists(status)) throw refuse("there is no such signature file that can be reached");
    if (!fs::is_regular_file(status)) throw refuse("is not a regular file");
    if (fs::file_size(path, error) > kMaxSize)
        throw refuse("is longer than 64 MiB, which the scanner refuses");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw refuse(std::string("cannot be read: ") + std::strerror(errno));
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

SignatureFile readSignatureFile(const std::string& path) {
    SignatureFile file;
    file.text = readAll(path);
    file.path = fs::absolute(path).string();
    Reading(file, "UTF-8").run();
    // The scanner would take it all for ISO 8859-1; so the names are right whatever it then says.
    if (!file.mistake.empty()) Reading(file, "ISO-8859-1").run();
    return file;
}
