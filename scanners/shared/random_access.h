#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/file_descriptor.h"

// A file, or bytes that stand for one, of which pieces are read by place: databases are too large to hold.
class RandomAccess {
  public:
    virtual ~RandomAccess() = default;

    virtual std::uint64_t size() const = 0;

    // Replaces *piece by the `length` bytes at `offset`. False, with *piece empty, when they do not all exist
    // or cannot be read.
    virtual bool read(std::uint64_t offset, std::size_t length, std::string* piece) const = 0;
};

class MemoryAccess final : public RandomAccess {
  public:
    // The bytes must outlive it.
    explicit MemoryAccess(std::string_view bytes) : bytes_(bytes) {}

    std::uint64_t size() const override { return bytes_.size(); }
    bool read(std::uint64_t offset, std::size_t length, std::string* piece) const override;

  private:
    std::string_view bytes_;
};

class FileAccess final : public RandomAccess {
  public:
    explicit FileAccess(FileDescriptor file);

    std::uint64_t size() const override { return size_; }
    bool read(std::uint64_t offset, std::size_t length, std::string* piece) const override;

  private:
    FileDescriptor file_;
    std::uint64_t size_ = 0;
};
