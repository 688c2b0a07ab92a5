#pragma once

#include "tools/timeline/Lexer.h"
#include "tools/timeline/Parser.h"
#include "tools/timeline/Timeline.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace timeline
{
/// The tokens of one line, of which there is at least one.
struct cLine
{
    const std::vector<cToken> &mTokens;
    int mNumber = 0;
    int mEndColumn = 0; ///< where the line ends: the place of what is missing
};

/// Reads line after line into a timeline. A line that is wrong adds one fault.
class cStatements
{
public:
    /// `timeline` is new; both must outlive this.
    cStatements(cTimeline &timeline, tTextFaults &faults);

    void Read(const cLine &line);

private:
    // One kind of line each; false when the line is wrong and its fault has been added.
    bool ReadTempo(const cLine &line);
    bool ReadName(const cLine &line);
    bool ReadTracks(const cLine &line);
    bool ReadTrack(const cLine &line);
    bool ReadSection(const cLine &line);
    bool ReadRepeat(const cLine &line);
    bool ReadKey(const cLine &line);
    bool ReadKeyword(const cLine &line);

    // What lines are made of, at token `index`.
    bool ReadTrackName(const cLine &line, size_t index, std::string &name);
    bool ReadValue(const cLine &line, size_t index, float &value);
    bool ReadInterpolation(const cLine &line, size_t index, signed char &type);
    bool ReadWord(const cLine &line, size_t index, const char *expected, std::string &word);
    bool ReadRows(const cLine &line, size_t index, int &rows);
    bool ReadPositive(const cLine &line, size_t index, const char *expected, long long &value);
    bool ReadBeatsPerMinute(const cLine &line, size_t index, double &beatsPerMinute);
    bool ReadCount(const cLine &line, size_t index, int limit, const char *what, int &count);
    bool CheckEnd(const cLine &line, size_t count);

    // `section` and `repeat`
    struct cOptions
    {
        std::map<std::string, size_t> mSeen; ///< option, index of its value
        int mAt = 0, mLength = 0, mEvery = 0;
        long long mTimes = 1;
        std::string mAs;

        bool Has(const char *option) const { return mSeen.count(option) != 0; }
    };
    bool ReadOptions(const cLine &line, const std::vector<std::string> &known, cOptions &options);
    bool ReadOption(const cLine &line, size_t index, const std::string &name, cOptions &options);
    bool CheckRepetition(const cLine &line, const cOptions &options);
    cPlacement MakePlacement(const cLine &line, const std::string &name, const cOptions &options);
    bool FindSection(const cLine &line, size_t index, size_t &section);

    bool Fail(const cLine &line, size_t index, const std::string &expected,
              const std::string &hint = "");
    std::string Hint(std::string_view name, const std::vector<std::string> &known);

    cTimeline &mTimeline;
    tTextFaults &mFaults;
    std::set<std::string, std::less<>> mDeclaredTracks;
    std::map<std::string, size_t, std::less<>> mSectionsByName;
    int mTempoLine = 0, mFirstLine = 0; ///< the tempo's, and the first of all; 0: not seen yet
    size_t mSection = 0;
    cBlock *mBlock = nullptr; ///< where keys go; null before the section's first track
    int mHints = 0;
};
} // namespace timeline
