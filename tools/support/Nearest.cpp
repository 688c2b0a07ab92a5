#include "tools/support/Nearest.h"

#include "tools/support/Faults.h"

#include <algorithm>
#include <cstdlib>

namespace tools
{
namespace
{
const size_t maximumCompared = 100; // characters: the work grows with the square of the length

// One row of the edit-distance table from the one above it.
void NextRow(std::vector<size_t> &row, char c, std::string_view other)
{
    size_t diagonal = row[0]++;
    for (size_t i = 0; i < other.size(); i++) {
        const size_t replaced = diagonal + (other[i] == c ? 0 : 1);
        diagonal = row[i + 1];
        row[i + 1] = std::min({replaced, row[i] + 1, row[i + 1] + 1});
    }
}

size_t EditDistance(std::string_view a, std::string_view b)
{
    std::vector<size_t> row(b.size() + 1);
    for (size_t i = 0; i < row.size(); i++)
        row[i] = i;
    for (char c : a)
        NextRow(row, c, b);
    return row.back();
}
} // namespace

std::string Nearest(std::string_view name, const std::vector<std::string> &known)
{
    std::string best;
    if (name.size() > maximumCompared)
        return best;
    size_t bestDistance = std::max<size_t>(name.size() * 2 / 3, 1) + 1;
    for (const std::string &candidate : known) {
        if (candidate.size() > maximumCompared)
            continue;
        const size_t distance = EditDistance(name, candidate);
        if (distance >= bestDistance)
            continue;
        best = candidate;
        bestDistance = distance;
    }
    return best;
}

std::string NearestHint(std::string_view name, const std::vector<std::string> &known)
{
    const std::string nearest = Nearest(name, known);
    return nearest.empty() ? "" : ", nearest known name " + Quote(nearest);
}
} // namespace tools
