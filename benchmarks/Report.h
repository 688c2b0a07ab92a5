#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

/// The one way in which a benchmark is measured and reported: this side and its peer in turn, so
/// that whatever else the machine does meets both, and one line a row on standard output, which
/// ./bench gathers into the table. Fields are parted by tabs:
///
///   row  WHAT  OURS  PEER-NAME  PEER  UNIT  MEDIAN  LOW  HIGH  RUNS  BAR
///   skip WHAT  REASON
///   note TEXT
///
/// OURS and PEER are medians in UNIT. MEDIAN, LOW and HIGH are of the pairs' ratios, ours by peer.
/// BAR is "<=1.03", ">=0.9", or "-" where nothing is asked. Lines that begin otherwise are passed
/// over. benchmarks/row writes the same line from a shell.
namespace bench
{
struct cPair
{
    double mOurs = 0.0, mPeer = 0.0; ///< one paired run, both in the row's unit
};

struct cRow
{
    std::string mWhat, mPeerName, mUnit;
    std::string mBar = "-";
};

inline double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t half = values.size() / 2;
    return values.size() % 2 ? values[half] : (values[half - 1] + values[half]) / 2.0;
}

/// `percentile` from 0 to 1; the value that so many lie at or below.
inline double Percentile(std::vector<double> values, double percentile)
{
    std::sort(values.begin(), values.end());
    const size_t index = size_t(double(values.size()) * percentile);
    return values[std::min(index, values.size() - 1)];
}

/// Measures `ours` and `peer` (callables that return what they cost) `runs` times in turn, first
/// one of them ahead and then the other.
template <typename Ours, typename Peer>
std::vector<cPair> MeasurePairs(int runs, Ours ours, Peer peer)
{
    std::vector<cPair> pairs;
    for (int i = 0; i < runs; i++) {
        cPair pair;
        if (i % 2 == 0)
            pair.mOurs = ours();
        pair.mPeer = peer();
        if (i % 2 == 1)
            pair.mOurs = ours();
        pairs.push_back(pair);
    }
    return pairs;
}

inline void PrintRow(const cRow &row, const std::vector<cPair> &pairs)
{
    std::vector<double> ours, peer, ratios;
    for (const cPair &pair : pairs) {
        ours.push_back(pair.mOurs);
        peer.push_back(pair.mPeer);
        ratios.push_back(pair.mOurs / pair.mPeer);
    }
    const auto [low, high] = std::minmax_element(ratios.begin(), ratios.end());
    std::printf("row\t%s\t%.6g\t%s\t%.6g\t%s\t%.4f\t%.4f\t%.4f\t%zu\t%s\n", row.mWhat.c_str(),
                Median(ours), row.mPeerName.c_str(), Median(peer), row.mUnit.c_str(),
                Median(ratios), *low, *high, pairs.size(), row.mBar.c_str());
    std::fflush(stdout);
}

inline void PrintSkip(const char *what, const char *reason)
{
    std::printf("skip\t%s\t%s\n", what, reason);
}
} // namespace bench
