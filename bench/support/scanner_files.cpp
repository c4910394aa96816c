#include "bench/support/scanner_files.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <string_view>

namespace {
struct Field {
    const char* name;
    const char* value;
};

// '#' stands for a digit that differs from instance to instance.
constexpr Field kProcessor[] = {
    {"Index", "##"},
    {"Online", "true"},
    {"SocketId", "#"},
    {"CoreId", "##"},
    {"ThreadIndex", "#"},
    {"NumaNode", "#"},
    {"Manufacturer", "AuthenticAMD"},
    {"Model", "AMD EPYC #### 96-Core Processor"},
    {"Family", "25"},
    {"ModelNumber", "17"},
    {"Stepping", "1"},
    {"Architecture", "x86_64"},
    {"MaxMHz", "3###"},
    {"L1dCacheBytes", "32768"},
    {"L2CacheBytes", "1048576"},
    {"MicrocodeVersion", "0xa1011##"},
    {"BogoMips", "4###.##"},
    {"PhysicalAddressBits", "52"},
};
constexpr Field kPackage[] = {
    {"Name", "libexample######"},
    {"Version", "2.36-9+deb12u##"},
    {"Architecture", "amd64"},
    {"Manager", "dpkg"},
    {"Status", "installed"},
    {"InstalledBytes", "13####00"},
    {"Section", "libs"},
    {"Maintainer", "Example Maintainers &lt;team####@example.org&gt;"},
    {"Summary", "shared library number ###### for things that are to be had"},
};
constexpr Field kAddress[] = {
    {"Address", "10.#.##.##"}, {"PrefixLength", "24"}, {"Family", "IPv4"},
    {"Interface", "eth##"},    {"Scope", "global"},
};

class Writer {
  public:
    explicit Writer(const std::string& path) : out_(path, std::ios::binary) {
        if (!out_) throw std::runtime_error("cannot write " + path);
        put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    }

    void put(std::string_view text) {
        for (const char c : text) line_.push_back(c == '#' ? static_cast<char>('0' + random_() % 10) : c);
        written_ += text.size();
        if (line_.size() > kChunk) flush();
    }
    std::size_t written() const { return written_; }
    void flush() {
        out_ << line_ << std::flush;
        line_.clear();
        if (!out_) throw std::runtime_error("cannot write the scanner file");
    }

  private:
    static constexpr std::size_t kChunk = 1 << 16;

    std::ofstream out_;
    std::string line_;
    std::size_t written_ = 0;
    std::minstd_rand random_;
};

template <std::size_t kFields>
void putInstance(Writer& out, const char* group, const Field (&fields)[kFields]) {
    out.put(std::string("<") + group + ">");
    for (const Field& field : fields) {
        out.put(std::string("<") + field.name + ">" + field.value + "</" + field.name + ">");
    }
    out.put(std::string("</") + group + ">");
}
}  // namespace

void writeHardwareFile(const std::string& path, std::size_t bytes) {
    Writer out(path);
    out.put("<Inventory>");
    while (out.written() < bytes) {
        putInstance(out, "Processor", kProcessor);
        for (int i = 0; i < 3; ++i) putInstance(out, "SoftwarePackages", kPackage);
        putInstance(out, "IPAddress", kAddress);
    }
    out.put("</Inventory>\n");
    out.flush();
}

void writeSoftwareFile(const std::string& path, std::size_t bytes) {
    Writer out(path);
    out.put("<Results>\n");
    while (out.written() < bytes) {
        out.put(
            "  <MatchedSignature guid=\"########-1c##-4d##-9e##-############\" name=\"Example product "
            "####\">\n"
            "    <Variable name=\"version\" value=\"3.#.##\"/>\n"
            "    <Variable name=\"path\" value=\"/usr/lib/x86_64-linux-gnu/example####\"/>\n"
            "    <Variable name=\"edition\" value=\"Standard\"/>\n"
            "    <Metadata><Cpe>cpe:2.3:a:example:product:3.#.##:*:*:*:*:*:*:*</Cpe>\n"
            "      <Evidence><Item kind=\"file\" path=\"/usr/lib/x86_64-linux-gnu/libexample.so.#\" "
            "size=\"473####\" offset=\"335####\"/></Evidence></Metadata>\n"
            "  </MatchedSignature>\n");
    }
    out.put("</Results>\n");
    out.flush();
}

void writeWarningFile(const std::string& path) {
    Writer out(path);
    out.put("<Warnings>\n</Warnings>\n");
    out.flush();
}
