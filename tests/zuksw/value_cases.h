#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/formats/value.h"

struct ValueCase {
    std::string_view what;
    std::string_view text;
    std::string_view key;
    std::vector<std::string> found;
};

inline void expectValues(zuksw::ValueFormat format, const std::vector<ValueCase>& cases) {
    for (const ValueCase& c : cases) {
        const zuksw::Values values = zuksw::extractValues(format, c.text, std::nullopt, c.key);
        EXPECT_FALSE(values.malformed) << c.what;
        EXPECT_EQ(values.found, c.found) << c.what;
    }
}

struct MalformedCase {
    std::string_view what;
    std::string text;
};

inline void expectMalformed(zuksw::ValueFormat format, std::string_view key,
                            const std::vector<MalformedCase>& cases) {
    for (const MalformedCase& c : cases) {
        EXPECT_TRUE(zuksw::extractValues(format, c.text, std::nullopt, key).malformed) << c.what;
    }
}

struct KeyCase {
    std::string_view key;
    bool good;
};

inline void expectKeys(zuksw::ValueFormat format, const std::vector<KeyCase>& cases) {
    for (const KeyCase& c : cases) EXPECT_EQ(zuksw::valueKeyProblem(format, c.key).empty(), c.good) << c.key;
}

inline std::string repeated(std::string_view text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) all += text;
    return all;
}
