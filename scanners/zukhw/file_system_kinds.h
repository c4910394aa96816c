#pragma once

#include <string>
#include <string_view>

class Machine;

// Kinds of file systems by their type's name; machine.shared<FileSystemKinds>().
class FileSystemKinds {
  public:
    explicit FileSystemKinds(Machine& machine);

    // Those that show the kernel's own state, not stored data.
    bool isPseudo(std::string_view type) const;

  private:
    std::string withoutDevice_;  // the types that /proc/filesystems lists as "nodev", each between line ends
};

bool isNetworkFileSystem(std::string_view type);

// Whether asking for its size can wait forever for a server or a process that does not answer.
bool canHang(std::string_view type);
