#include "scanners/zukhw/sha256.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace {

constexpr std::size_t kBlock = 64;
using State = std::array<std::uint32_t, 8>;

constexpr std::uint32_t kRounds[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::uint32_t rotate(std::uint32_t value, unsigned bits) {
    return value >> bits | value << (32 - bits);
}

std::array<std::uint32_t, 64> schedule(std::string_view block) {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t i = 0; i < kBlock; ++i) {
        words[i / 4] = words[i / 4] << 8 | static_cast<unsigned char>(block[i]);
    }
    for (std::size_t i = 16; i < words.size(); ++i) {
        const std::uint32_t a = words[i - 15];
        const std::uint32_t b = words[i - 2];
        words[i] = words[i - 16] + words[i - 7] + (rotate(a, 7) ^ rotate(a, 18) ^ a >> 3) +
                   (rotate(b, 17) ^ rotate(b, 19) ^ b >> 10);
    }
    return words;
}

void addBlock(State* state, std::string_view block) {
    const std::array<std::uint32_t, 64> words = schedule(block);
    auto [a, b, c, d, e, f, g, h] = *state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::uint32_t one =
            h + (rotate(e, 6) ^ rotate(e, 11) ^ rotate(e, 25)) + ((e & f) ^ (~e & g)) + kRounds[i] + words[i];
        const std::uint32_t two =
            (rotate(a, 2) ^ rotate(a, 13) ^ rotate(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + one;
        d = c;
        c = b;
        b = a;
        a = one + two;
    }
    const State sum = {a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < sum.size(); ++i) (*state)[i] += sum[i];
}

// What is left after the last whole block, filled up: one bit, zeros, and the length in bits.
std::string paddedEnd(std::string_view rest, std::uint64_t length) {
    std::string end(rest);
    end += '\x80';
    while (end.size() % kBlock != kBlock - 8) end += '\0';
    for (unsigned shift = 64; shift > 0; shift -= 8)
        end += static_cast<char>(length * 8 >> (shift - 8) & 0xFFU);
    return end;
}

}  // namespace

std::string sha256Hex(std::string_view bytes) {
    State state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    const std::size_t whole = bytes.size() / kBlock * kBlock;
    const std::string end = paddedEnd(bytes.substr(whole), bytes.size());
    for (std::size_t at = 0; at < whole; at += kBlock) addBlock(&state, bytes.substr(at, kBlock));
    for (std::size_t at = 0; at < end.size(); at += kBlock) {
        addBlock(&state, std::string_view(end).substr(at, kBlock));
    }
    std::array<char, 8 * state.size() + 1> hex{};
    for (std::size_t i = 0; i < state.size(); ++i) {
        std::snprintf(hex.data() + 8 * i, 9, "%08x", static_cast<unsigned>(state[i]));
    }
    return hex.data();
}
