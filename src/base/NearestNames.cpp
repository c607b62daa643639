#include "NearestNames.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace genvara {
namespace {

constexpr std::size_t kMostNames = 3;
/// Longest of a wrong name that is looked at: the cost grows with its length.
constexpr std::size_t kLongestName = 100;

char Lower(char letter) noexcept {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Letters to put in, take out, change or swap with a neighbour until one text is the other (Damerau's
/// distance, no letter touched twice).
std::size_t LettersBetween(std::string_view left, std::string_view right) {
    std::vector<std::size_t> before;
    std::vector<std::size_t> above(right.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::vector<std::size_t> row{i + 1};
        row.reserve(above.size());
        for (std::size_t j = 0; j < right.size(); ++j) {
            const auto same = [&](std::size_t l, std::size_t r) { return Lower(left[l]) == Lower(right[r]); };
            std::size_t least = std::min({above[j] + (same(i, j) ? 0 : 1), above[j + 1] + 1, row[j] + 1});
            if (i > 0 && j > 0 && same(i, j - 1) && same(i - 1, j)) {
                least = std::min(least, before[j - 1] + 1);
            }
            row.push_back(least);
        }
        before = std::exchange(above, std::move(row));
    }
    return above.back();
}

/// How far a name is from a wrong one; the beginning of a name is as good as all of it.
std::size_t Distance(std::string_view wrong, std::string_view name) {
    constexpr std::size_t kLeastBeginning = 3;
    const bool begins = wrong.size() >= kLeastBeginning && SameLetters(wrong, name.substr(0, wrong.size()));
    return begins ? 0 : LettersBetween(wrong, name);
}

}  // namespace

bool SameLetters(std::string_view left, std::string_view right) noexcept {
    return std::ranges::equal(left, right, {}, Lower, Lower);
}

std::vector<std::string_view> NearestNames(std::string_view wrong, std::span<const std::string_view> names) {
    wrong = wrong.substr(0, kLongestName);
    std::vector<std::pair<std::size_t, std::string_view>> byDistance;
    byDistance.reserve(names.size());
    for (const std::string_view name : names) {
        byDistance.emplace_back(Distance(wrong, name), name);
    }
    std::ranges::stable_sort(byDistance, {}, &std::pair<std::size_t, std::string_view>::first);
    std::vector<std::string_view> nearest;
    for (const auto& [distance, name] : byDistance) {
        // Behind the first, only what is as near as a slip or two.
        const bool near = distance <= byDistance.front().first + 1 && distance <= 1 + name.size() / 2;
        if (nearest.empty() || (near && nearest.size() < kMostNames)) {
            nearest.push_back(name);
        }
    }
    return nearest;
}

std::string_view SlipOf(std::string_view wrong, std::span<const std::string_view> names) {
    const std::vector<std::string_view> nearest = NearestNames(wrong, names);
    if (nearest.empty()) {
        return {};
    }
    const std::size_t most = std::max<std::size_t>(1, std::min(wrong.size(), nearest.front().size()) / 3);
    return Distance(wrong, nearest.front()) <= most ? nearest.front() : std::string_view{};
}

std::string SuggestionText(std::string_view wrong, std::span<const std::string_view> names) {
    const std::vector<std::string_view> nearest = NearestNames(wrong, names);
    return (nearest.size() == 1 ? "the nearest is " : "the nearest are ") + Enumeration(nearest);
}

std::string Enumeration(std::span<const std::string_view> names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "" : i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

}  // namespace genvara
