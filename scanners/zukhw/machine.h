#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <typeindex>
#include <vector>

#include "scanners/shared/rooted_fs.h"
#include "scanners/zukhw/deadline.h"
#include "scanners/zukhw/source_log.h"

// The machine that is being scanned: its files, and what is read from them once for all groups. Every read is
// bounded, counted in the source log, and the place where a group that takes too long is cut (GroupTimeout).
// Paths are relative to the machine's root: "sys/class/net".
class Machine {
  public:
    static constexpr std::size_t kAttribute = std::size_t{64} * 1024;     // largest attribute file
    static constexpr std::size_t kTable = std::size_t{64} * 1024 * 1024;  // largest table file

    // cpuidSignature: the hypervisor's signature when a copied machine cannot tell it, else empty.
    Machine(RootedFs files, Deadline deadline, std::string cpuidSignature = "");

    // True when system calls about the running machine tell about the scanned one. False for a copy: then
    // everything has to come from files.
    bool live() const { return files_.live(); }
    const RootedFs& files() const { return files_; }
    SourceLog& sources() { return sources_; }
    Deadline& deadline() { return deadline_; }
    const std::string& cpuidSignature() const { return cpuidSignature_; }

    // The bytes of a file as they are; no value when it cannot be read.
    std::optional<std::string> read(std::string_view path, std::size_t limit = kAttribute);
    // Its first `size` bytes, or fewer when it is shorter.
    std::optional<std::string> readHead(std::string_view path, std::size_t size);
    // The file open for reading; invalid when it cannot be opened, or is no regular file.
    FileDescriptor open(std::string_view path);
    // The file's text without blanks at its ends; empty when it cannot be read.
    std::string text(std::string_view path);
    // The number that is all of the file's text.
    std::optional<std::uint64_t> number(std::string_view path);
    std::optional<std::int64_t> signedNumber(std::string_view path);
    std::optional<std::uint64_t> hexNumber(std::string_view path);
    // The names in a directory in natural order; empty when it cannot be read.
    std::vector<std::string> list(std::string_view path);
    // The same in no order. In *links those that are symbolic links, or may be.
    std::vector<std::string> listUnordered(std::string_view path, std::vector<std::string>* links = nullptr);
    bool exists(std::string_view path);
    std::optional<FileFacts> facts(std::string_view path, bool followLinks = true);
    // The path of what `path` leads to, free of links ("sys/devices/pci0000:00/..."); empty when nothing.
    std::string resolve(std::string_view path);
    // The text of a symbolic link; empty when there is none.
    std::string link(std::string_view path);
    // The last part of a symbolic link's text ("virtio_net" of device/driver); empty when there is none.
    std::string linkName(std::string_view path);

    // A source that several groups use, read on first use and kept: a class with a constructor that takes
    // Machine&. Machine::shared<Mountinfo>() needs no line here.
    template <typename Source>
    Source& shared() {
        const std::type_index key(typeid(Source));
        const auto found = shared_.find(key);
        if (found != shared_.end()) {
            if (found->second.denied) sources_.deniedAgain();
            return *static_cast<Source*>(found->second.source.get());
        }
        // Kept only once it is complete: reading may be cut, and may itself use other shared sources.
        const std::size_t denials = sources_.denials();
        auto source = std::make_shared<Source>(*this);
        shared_.emplace(key, Shared{source, sources_.denials() != denials});
        return *source;
    }

  private:
    struct Shared {
        std::shared_ptr<void> source;
        bool denied;  // something that it is read from
    };

    void count(ReadStatus status, std::string_view path);

    RootedFs files_;
    Deadline deadline_;
    SourceLog sources_;
    std::string cpuidSignature_;
    std::map<std::type_index, Shared> shared_;
};
