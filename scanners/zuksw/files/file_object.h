#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "scanners/zuksw/evaluation/value.h"
#include "scanners/zuksw/files/contents.h"
#include "scanners/zuksw/files/elf_file.h"

namespace zuksw {

/** What an attempt to read came to: the bytes, or why not. Neither: the file is not there any more. */
struct Opened {
    std::shared_ptr<const Contents> contents;
    Causes causes = 0;
};

/** A file, or a member of an archive: something with a path and bytes. */
class FileObject : public Object {
  public:
    explicit FileObject(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; }
    std::string identity() const override { return path_; }
    Text property(std::string_view name, Machine& machine) const override;

    virtual std::uint64_t size() const = 0;
    /** How many archives it lies in. */
    virtual std::uint64_t depth() const { return 0; }
    virtual Opened open(Machine& machine) const = 0;

  protected:
    /** Properties that not every kind has. */
    virtual Text specialProperty(std::string_view /*name*/, Machine& /*machine*/) const { return {}; }

  private:
    Text digest(Machine& machine) const;
    Text elfProperty(std::string_view name, Machine& machine) const;

    std::string path_;
    mutable std::mutex mutex_;
    mutable std::optional<Text> digest_;
    mutable std::optional<ElfFacts> elf_;
};

/** A file of the machine. */
class DiskFile : public FileObject {
  public:
    /** link: the symbolic link by which it was found, or empty. */
    DiskFile(std::string path, const struct stat& facts, std::string link)
        : FileObject(std::move(path)), facts_(facts), link_(std::move(link)) {}

    const struct stat& facts() const { return facts_; }
    const std::string& link() const { return link_; }
    std::uint64_t size() const override { return static_cast<std::uint64_t>(facts_.st_size); }
    Opened open(Machine& machine) const override;

  protected:
    Text specialProperty(std::string_view name, Machine& machine) const override;

  private:
    Opened openAnew(Machine& machine) const;

    struct stat facts_;
    std::string link_;
};

/** "/a/b" for "/a/b/c"; "/" for "/c". */
std::string directoryOf(const std::string& path);
/** "c" for "/a/b/c". */
std::string nameOf(const std::string& path);

}  // namespace zuksw
