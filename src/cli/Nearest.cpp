#include "Nearest.h"

#include <algorithm>
#include <cstddef>

namespace genvara {
namespace {

/// Letters to add, drop, change or swap with a neighbour until one word is the other.
std::size_t Distance(std::string_view one, std::string_view other) {
    std::vector<std::vector<std::size_t>> table(one.size() + 1, std::vector<std::size_t>(other.size() + 1));
    for (std::size_t i = 0; i <= one.size(); ++i) {
        for (std::size_t j = 0; j <= other.size(); ++j) {
            if (i == 0 || j == 0) {
                table[i][j] = i + j;
                continue;
            }
            const std::size_t changed = one[i - 1] == other[j - 1] ? 0 : 1;
            table[i][j] = std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + changed});
            if (i > 1 && j > 1 && one[i - 1] == other[j - 2] && one[i - 2] == other[j - 1]) {
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + 1);
            }
        }
    }
    return table.back().back();
}

}  // namespace

std::string Nearest(std::string_view word, const std::vector<std::string>& known) {
    std::string nearest;
    std::size_t least = 4;
    for (const std::string& candidate : known) {
        const std::size_t distance = Distance(word, candidate);
        const std::size_t most = std::max<std::size_t>(1, std::min(word.size(), candidate.size()) / 3);
        if (distance < least && distance <= most) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

}  // namespace genvara
