#include "scanners/zuksw/language/suggestion.h"

#include <algorithm>
#include <cctype>

namespace zuksw {
namespace {

constexpr std::size_t kMaxLength = 64;

char lower(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

// Letters to insert, delete, replace or swap with the next to make one word of the other; case does not
// count.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const bool same = lower(a[i - 1]) == lower(b[j - 1]);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same ? 0 : 1)});
            const bool swapped =
                i > 1 && j > 1 && lower(a[i - 1]) == lower(b[j - 2]) && lower(a[i - 2]) == lower(b[j - 1]);
            if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row[b.size()];
}

}  // namespace

std::string_view closest(std::string_view wrong, const std::vector<std::string_view>& words) {
    std::string_view best;
    if (wrong.size() > kMaxLength) return best;
    std::size_t least = std::max<std::size_t>(2, wrong.size() / 3) + 1;
    for (const std::string_view word : words) {
        const std::size_t steps = distance(wrong, word);
        if (steps >= least) continue;
        least = steps;
        best = word;
    }
    return best;
}

std::string suggest(std::string_view wrong, const std::vector<std::string_view>& words) {
    const std::string_view word = closest(wrong, words);
    return word.empty() ? "remove it" : "did you mean '" + std::string(word) + "'?";
}

}  // namespace zuksw
