#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scanners/zuksw/versions/compare.h"
#include "tests/zuksw/numbers.h"

// One row: `order` is "<", "=", ">" or "refused".
struct VersionCase {
    std::string_view a;
    std::string_view order;
    std::string_view b;
};

inline std::string_view orderSign(std::optional<int> order) {
    if (!order) return "refused";
    return *order < 0 ? "<" : *order > 0 ? ">" : "=";
}

// Every row must hold, and turned round as well.
template <std::size_t count>
void expectOrders(zuksw::Scheme scheme, const VersionCase (&rows)[count]) {
    for (const VersionCase& row : rows) {
        const std::string_view turned = row.order == "<" ? ">" : row.order == ">" ? "<" : row.order;
        EXPECT_EQ(orderSign(zuksw::compareVersions(scheme, row.a, row.b)), row.order)
            << row.a << " and " << row.b;
        EXPECT_EQ(orderSign(zuksw::compareVersions(scheme, row.b, row.a)), turned)
            << row.b << " and " << row.a;
    }
}

// Texts made of pieces that matter to a scheme; the same sequence in every run.
class VersionMaker {
  public:
    explicit VersionMaker(std::vector<std::string> pieces) : pieces_(std::move(pieces)) {}

    std::string make() {
        std::string text = numbers_.below(2) == 0 ? "1." : "";
        for (std::size_t left = 1 + numbers_.below(6); left > 0; --left) text += piece();
        return text;
    }
    // Differs from `text` in one place, so that the two are alike for long enough to matter.
    std::string alike(const std::string& text) {
        const std::size_t at = numbers_.below(text.size() + 1);
        return text.substr(0, at) + piece() + text.substr(std::min(text.size(), at + numbers_.below(3)));
    }

  private:
    const std::string& piece() { return pieces_[numbers_.below(pieces_.size())]; }

    std::vector<std::string> pieces_;
    Numbers numbers_;
};
