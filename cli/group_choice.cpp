#include "cli/group_choice.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "cli/failure.h"
#include "cli/text.h"

namespace {

std::string lowered(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string loweredName(const Group& group) {
    return lowered(toUtf8(group.name));
}

// The number of letters to insert, remove or replace to turn one word into the other.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[b.size()];
}

bool isClose(const std::string& word, const std::string& name) {
    constexpr std::size_t kShortestPiece = 3;
    constexpr std::size_t kLettersPerSlip = 3;
    if (word.size() >= kShortestPiece && name.find(word) != std::string::npos) return true;
    return distance(word, name) <= std::max(word.size(), name.size()) / kLettersPerSlip;
}

Failure unknownGroup(const std::vector<Group>& groups, const std::string& word) {
    std::string close;
    for (const Group& group : groups) {
        if (isClose(lowered(word), loweredName(group)))
            close += (close.empty() ? "" : ", ") + toUtf8(group.name);
    }
    const std::string remedy = close.empty() ? "\"zuk groups\" lists them" : "close to it: " + close;
    return {kWrongUsage, "there is no group '" + word + "': " + remedy};
}

const Group& findGroup(const std::vector<Group>& groups, const std::string& word) {
    for (const Group& group : groups) {
        if (lowered(word) == loweredName(group) || word == std::to_string(group.number)) return group;
    }
    throw unknownGroup(groups, word);
}

}  // namespace

std::vector<Group> chooseGroups(const std::vector<Group>& groups, const std::vector<std::string>& words) {
    if (words.empty()) return groups;
    std::vector<Group> chosen;
    for (const std::string& word : words) {
        const Group& group = findGroup(groups, word);
        const auto same = [&](const Group& other) { return other.number == group.number; };
        if (std::none_of(chosen.begin(), chosen.end(), same)) chosen.push_back(group);
    }
    return chosen;
}
