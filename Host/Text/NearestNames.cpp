#include "Host/Text/NearestNames.h"

#include "Host/Text/WordList.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

/// Returns the restricted Damerau-Levenshtein distance: how many letters must be inserted, removed,
/// replaced or swapped with a neighbour. No letter is edited twice.
std::size_t EditDistance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> current(to.size() + 1);
    std::iota(last.begin(), last.end(), 0U);
    for (std::size_t i = 1; i <= from.size(); ++i) {
        current[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
            }
        }
        std::swap(beforeLast, last);
        std::swap(last, current);
    }
    return last.back();
}

} // namespace

std::string Suggestion(std::string_view word, std::span<const std::string> names) {
    const std::size_t tolerated = std::max<std::size_t>(1, word.size() / 3);
    constexpr std::size_t kShortestBeginning = 3;
    std::vector<std::pair<std::size_t, std::string_view>> near;
    for (const std::string_view name : names) {
        const std::size_t distance = EditDistance(word, name);
        const bool begins = word.size() >= kShortestBeginning && name.starts_with(word);
        if (distance <= tolerated || begins) {
            near.emplace_back(distance, name);
        }
    }
    std::ranges::stable_sort(near, {}, &decltype(near)::value_type::first);
    constexpr std::size_t kMost = 3;
    near.resize(std::min(near.size(), kMost));
    std::vector<std::string> words;
    words.reserve(near.size());
    for (const auto& [distance, name] : near) {
        words.emplace_back(name);
    }
    return words.empty() ? "" : fmt::format("; did you mean {}?", WordList(words));
}

} // namespace Kerovane::Host
