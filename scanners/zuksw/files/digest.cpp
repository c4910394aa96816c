#include "scanners/zuksw/files/digest.h"

#include <openssl/evp.h>

#include <array>
#include <new>

namespace zuksw {
namespace {

EVP_MD_CTX* asContext(void* context) {
    return static_cast<EVP_MD_CTX*>(context);
}

}  // namespace

Sha256::Sha256() : context_(EVP_MD_CTX_new()) {
    if (context_ == nullptr || EVP_DigestInit_ex(asContext(context_), EVP_sha256(), nullptr) != 1) {
        EVP_MD_CTX_free(asContext(context_));
        throw std::bad_alloc();
    }
}

Sha256::~Sha256() {
    EVP_MD_CTX_free(asContext(context_));
}

void Sha256::add(std::string_view bytes) {
    EVP_DigestUpdate(asContext(context_), bytes.data(), bytes.size());
}

std::string Sha256::finish() {
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest = {};
    unsigned length = 0;
    EVP_DigestFinal_ex(asContext(context_), digest.data(), &length);
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (unsigned i = 0; i < length; ++i) {
        text += kDigits[digest[i] >> 4U];
        text += kDigits[digest[i] & 15U];
    }
    return text;
}

}  // namespace zuksw
