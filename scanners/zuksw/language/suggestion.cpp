#include "scanners/zuksw/language/suggestion.h"

#include <algorithm>
#include <cctype>

namespace zuksw {
namespace {

constexpr std::size_t kMaxLength = 64;

char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

// Letters to insert, delete or replace to make one word of the other; case does not count.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row[b.size()];
}

}  // namespace

std::string suggest(std::string_view wrong, const std::vector<std::string_view>& words) {
    std::string_view best;
    std::size_t least = std::max<std::size_t>(2, wrong.size() / 3) + 1;
    for (const std::string_view word : words) {
        const std::size_t steps = wrong.size() > kMaxLength ? least : distance(wrong, word);
        if (steps >= least) continue;
        least = steps;
        best = word;
    }
    return best.empty() ? "remove it" : "did you mean '" + std::string(best) + "'?";
}

}  // namespace zuksw
