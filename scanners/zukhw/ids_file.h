#pragma once

#include <string>
#include <string_view>

// A text file of names by numbers (pci.ids, usb.ids): lines "1af4  Red Hat, Inc.", below them, after a tab
// each, "1000  Virtio network device", and after two tabs "1af4 0001  Subsystem". Classes begin with "C ".
class IdsFile {
  public:
    explicit IdsFile(std::string text) : text_(std::move(text)) {}

    bool available() const { return !text_.empty(); }
    // The name of the top line with that key ("1af4", "C 03"), or empty.
    std::string_view name(const std::string& key) const;
    // The name of the line below it, and of the line below that.
    std::string_view name(const std::string& key, std::string_view second) const;
    std::string_view name(const std::string& key, std::string_view second, std::string_view third) const;

  private:
    std::string_view block(const std::string& key) const;

    std::string text_;
};
