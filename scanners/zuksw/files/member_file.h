#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/files/file_object.h"

namespace zuksw {

/** A member of an archive. Small ones are kept; a large one is taken from its archive again when it is read,
 * so that thousands of rows with members do not fill the memory. */
class MemberFile : public FileObject {
  public:
    MemberFile(std::shared_ptr<const FileObject> archive, std::string name, std::string content);

    std::uint64_t size() const override { return size_; }
    std::uint64_t depth() const override { return archive_->depth() + 1; }
    Opened open(Machine& machine) const override;

  private:
    std::shared_ptr<const FileObject> archive_;
    std::string name_;
    std::uint64_t size_;
    std::optional<std::string> content_;
};

/** What the members of an archive came to. */
struct FoundMembers {
    std::vector<std::shared_ptr<const MemberFile>> members;  // each name once
    Causes causes = 0;                                       // why some may be missing
};

/** The members whose names are wanted; none when the file is no archive. */
FoundMembers findMembers(const std::shared_ptr<const FileObject>& archive,
                         const std::function<bool(std::string_view)>& wanted, Machine& machine);

}  // namespace zuksw
