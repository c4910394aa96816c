#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zuksw {

/** The SHA-256 of bytes that come piece by piece. */
class Sha256 {
  public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void add(std::string_view bytes);
    /** 64 lower-case hex digits. Call once, at the end. */
    std::string finish();

  private:
    void* context_;
};

}  // namespace zuksw
