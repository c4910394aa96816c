#pragma once

#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <utility>

#include "scanners/zuksw/files/contents.h"

namespace zuksw {

/** The files opened last, so that all conditions of all signatures look into a file while it is open once.
 *  Any thread may ask. */
class OpenFiles {
  public:
    using File = std::shared_ptr<const Contents>;

    /** The file at `path`, opened by `open` when it is not open. Nothing is kept of a file that cannot be
     *  opened: whoever asks next shall be told, too. */
    File get(const std::string& path, const std::function<File()>& open);

  private:
    struct Slot {
        std::mutex mutex;  // one thread opens, others that want the same file wait for it
        File file;
    };
    using Entry = std::pair<std::string, std::shared_ptr<Slot>>;

    std::shared_ptr<Slot> slotOf(const std::string& path);

    std::mutex mutex_;
    std::list<Entry> entries_;  // the one used last comes first
    std::unordered_map<std::string, std::list<Entry>::iterator> places_;
};

}  // namespace zuksw
