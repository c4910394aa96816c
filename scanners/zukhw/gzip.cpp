#include "scanners/zukhw/gzip.h"

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <climits>

namespace {

constexpr int kGzipOnly = 16 + MAX_WBITS;

// Ends with its owner.
class Inflater {
  public:
    Inflater() : ready_(::inflateInit2(&stream_, kGzipOnly) == Z_OK) {}
    ~Inflater() { ::inflateEnd(&stream_); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    bool ready() const { return ready_; }
    z_stream& stream() { return stream_; }

  private:
    z_stream stream_ = {};
    bool ready_;
};

}  // namespace

bool gunzip(std::string_view bytes, std::size_t limit, std::string* text) {
    constexpr std::size_t kBlock = 64 * 1024;
    std::string block(kBlock, '\0');
    Inflater inflater;
    if (!inflater.ready() || bytes.size() > UINT_MAX) return false;
    z_stream& stream = inflater.stream();
    stream.next_in = reinterpret_cast<const Bytef*>(bytes.data());
    stream.avail_in = static_cast<uInt>(bytes.size());
    std::size_t left = limit;
    for (int status = Z_OK; status != Z_STREAM_END;) {
        stream.next_out = reinterpret_cast<Bytef*>(block.data());
        stream.avail_out = static_cast<uInt>(block.size());
        status = ::inflate(&stream, Z_NO_FLUSH);
        const std::size_t count = block.size() - stream.avail_out;
        text->append(block, 0, std::min(count, left));
        if (count > left || (status != Z_OK && status != Z_STREAM_END)) return false;
        left -= count;
        // Files may be put behind one another.
        if (status == Z_STREAM_END && stream.avail_in != 0) status = ::inflateReset(&stream);
    }
    return true;
}
