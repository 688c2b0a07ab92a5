#include "tools/timeline/Statements.h"

#include "show/Time.h"
#include "tools/support/Nearest.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace timeline
{
namespace
{
using tools::Quote;

const int maximumHints = 100; // a text without one right name is not made slow by them
const std::vector<std::string> keywords = {"section", "repeat", "track", "tracks", "tempo"};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Names begin with a letter, so that they can't be taken for numbers.
bool IsName(const cToken &token)
{
    const char c = token.mText[0];
    return token.mKind == cToken::eKind::Word &&
           ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_');
}

bool IsNumber(std::string_view text)
{
    return IsDigit(text[0]) || (text.size() > 1 && (text[0] == '-' || text[0] == '.') &&
                                (IsDigit(text[1]) || text[1] == '.'));
}

std::vector<std::string> KeysOf(const auto &map)
{
    std::vector<std::string> keys;
    for (const auto &entry : map)
        keys.push_back(entry.first);
    return keys;
}

bool IsKeyword(std::string_view text)
{
    return std::find(keywords.begin(), keywords.end(), text) != keywords.end();
}
} // namespace

cStatements::cStatements(cTimeline &timeline, tTextFaults &faults)
    : mTimeline(timeline), mFaults(faults)
{
    cSection wholeShow;
    wholeShow.mPlacements.push_back({});
    mTimeline.mSections.push_back(wholeShow);
}

void cStatements::Read(const cLine &line)
{
    const cToken &first = line.mTokens[0];
    if (mFirstLine == 0)
        mFirstLine = line.mNumber;
    if (line.mTokens.size() > 1 && line.mTokens[1].mKind == cToken::eKind::Equals)
        ReadName(line);
    else if (first.mKind == cToken::eKind::Word && IsNumber(first.mText))
        ReadKey(line);
    else
        ReadKeyword(line);
}

bool cStatements::ReadKeyword(const cLine &line)
{
    const cToken &first = line.mTokens[0];
    const std::string_view word = first.mKind == cToken::eKind::Word ? first.mText : "";
    if (word == "section")
        return ReadSection(line);
    if (word == "repeat")
        return ReadRepeat(line);
    if (word == "track")
        return ReadTrack(line);
    if (word == "tracks")
        return ReadTracks(line);
    if (word == "tempo")
        return ReadTempo(line);
    return Fail(line, 0, "a key, NAME = VALUE, track, section, repeat, tracks or tempo",
                Hint(word, keywords));
}

// Lines
// --------------------------------------------------------------------------------------------

bool cStatements::ReadTempo(const cLine &line)
{
    if (mTempoLine != 0)
        return Fail(line, 0,
                    "tempo only once (line " + std::to_string(mTempoLine) + " has said it)");
    mTempoLine = line.mNumber;
    // What times mean is not known after a faulty line; so wide a measure takes nearly all of them.
    mTimeline.mTempo = vyr::TempoOf(120.0, vyr::kMaximumRowsPerBeat, vyr::kMaximumBeatsPerBar);
    if (mFirstLine != line.mNumber)
        return Fail(line, 0,
                    "tempo before anything else (line " + std::to_string(mFirstLine) +
                        " is the first)");
    double beatsPerMinute = 0.0;
    cTempo tempo;
    if (!ReadBeatsPerMinute(line, 1, beatsPerMinute) ||
        !ReadCount(line, 2, vyr::kMaximumRowsPerBeat, "rows a beat", tempo.mRowsPerBeat) ||
        !ReadCount(line, 3, vyr::kMaximumBeatsPerBar, "beats a bar", tempo.mBeatsPerBar) ||
        !CheckEnd(line, 4))
        return false;
    mTimeline.mTempo = vyr::TempoOf(beatsPerMinute, tempo.mRowsPerBeat, tempo.mBeatsPerBar);
    return true;
}

bool cStatements::ReadName(const cLine &line)
{
    const cToken &name = line.mTokens[0];
    if (!IsName(name) || IsKeyword(name.mText))
        return Fail(line, 0, "a name (a letter first, no keyword)");
    const auto [entry, isNew] = mTimeline.mNameLines.emplace(name.mText, line.mNumber);
    if (!isNew)
        return Fail(line, 0,
                    "a new name (line " + std::to_string(entry->second) + " declares this one)");
    float value = 0.0f;
    const bool isGood = ReadValue(line, 2, value) && CheckEnd(line, 3);
    mTimeline.mNames.emplace(name.mText, value);
    return isGood;
}

bool cStatements::ReadTracks(const cLine &line)
{
    for (size_t i = 1; i == 1 || i < line.mTokens.size(); i++) {
        std::string name;
        if (!ReadTrackName(line, i, name))
            return false;
        if (!mDeclaredTracks.insert(name).second)
            return Fail(line, i, "a track that is not declared yet");
        mTimeline.mTracks.push_back(name);
    }
    return true;
}

bool cStatements::ReadTrack(const cLine &line)
{
    cSection &section = mTimeline.mSections[mSection];
    section.mBlocks.push_back({}); // in a faulty line too: its keys belong here and nowhere else
    mBlock = &section.mBlocks.back();
    mBlock->mLine = line.mNumber;
    if (!ReadTrackName(line, 1, mBlock->mTrack))
        return false;
    if (!mDeclaredTracks.empty() && mDeclaredTracks.count(mBlock->mTrack) == 0)
        return Fail(line, 1, "a declared track",
                    Hint(mBlock->mTrack, {mDeclaredTracks.begin(), mDeclaredTracks.end()}));
    if (line.mTokens.size() > 2 && !ReadInterpolation(line, 2, mBlock->mDefaultType))
        return false;
    return CheckEnd(line, 3);
}

bool cStatements::ReadSection(const cLine &line)
{
    mSection = mTimeline.mSections.size();
    mTimeline.mSections.push_back({});
    mTimeline.mSections.back().mLine = line.mNumber;
    mBlock = nullptr;
    std::string name;
    if (!ReadWord(line, 1, "the section's name", name))
        return false;
    if (!mSectionsByName.emplace(name, mSection).second)
        return Fail(line, 1, "a new section name");
    cSection &section = mTimeline.mSections.back();
    section.mName = name;
    cOptions options;
    if (!ReadOptions(line, {"at", "length", "every", "times"}, options))
        return false;
    if (options.Has("length"))
        section.mLength = options.mLength;
    section.mIsPattern = !options.Has("at");
    if (!section.mIsPattern)
        section.mPlacements.push_back(MakePlacement(line, name, options));
    return true;
}

bool cStatements::ReadRepeat(const cLine &line)
{
    mSection = 0;
    mBlock = nullptr;
    size_t section = 0;
    cOptions options;
    if (!FindSection(line, 1, section) ||
        !ReadOptions(line, {"at", "every", "times", "as"}, options))
        return false;
    if (!options.Has("at"))
        return Fail(line, line.mTokens.size(), "at TIME");
    const std::string name = options.Has("as") ? options.mAs : mTimeline.mSections[section].mName;
    mTimeline.mSections[section].mPlacements.push_back(MakePlacement(line, name, options));
    return true;
}

bool cStatements::ReadKey(const cLine &line)
{
    if (!mBlock)
        return Fail(line, 0, "a track line before the first key");
    cKey key;
    key.mType = mBlock->mDefaultType;
    key.mPlace = {line.mNumber, line.mTokens[0].mColumn};
    if (!ReadRows(line, 0, key.mRow) || !ReadValue(line, 1, key.mValue))
        return false;
    if (line.mTokens.size() > 2 && !ReadInterpolation(line, 2, key.mType))
        return false;
    const auto &length = mTimeline.mSections[mSection].mLength;
    if (length && (key.mRow < 0 || key.mRow > *length))
        return Fail(line, 0,
                    "a time within the section, 0 to " + FormatRow(*length, mTimeline.mTempo));
    if (!CheckEnd(line, 3))
        return false;
    mBlock->mKeys.push_back(key);
    if (IsName(line.mTokens[1]))
        mTimeline.mValueNames[mBlock->mTrack].emplace(key.mValue, line.mTokens[1].mText);
    return true;
}

// Parts of lines
// -----------------------------------------------------------------------------------

bool cStatements::ReadTrackName(const cLine &line, size_t index, std::string &name)
{
    const char *expected = "a track's name (\"in quotes\" where it has other characters)";
    if (index >= line.mTokens.size() || line.mTokens[index].mKind == cToken::eKind::Equals)
        return Fail(line, index, expected);
    name = Unquote(line.mTokens[index]);
    if (name.size() > kMaximumNameBytes)
        return Fail(line, index, "a name of at most 244 bytes, which fits into a file name");
    if (name.find('/') != std::string::npos || name.find('\0') != std::string::npos)
        return Fail(line, index, "a name without '/' and \\x00, which no file name can have");
    return true;
}

bool cStatements::ReadValue(const cLine &line, size_t index, float &value)
{
    const char *expected = "a value: a number or a declared name";
    if (index >= line.mTokens.size() || line.mTokens[index].mKind != cToken::eKind::Word)
        return Fail(line, index, expected);
    const cToken &token = line.mTokens[index];
    if (IsName(token)) {
        const auto found = mTimeline.mNames.find(token.mText);
        if (found == mTimeline.mNames.end())
            return Fail(line, index, "a declared name",
                        Hint(token.mText, KeysOf(mTimeline.mNames)));
        value = found->second;
        return true;
    }
    std::string reason;
    return vyr::ParseValue(token.mText, value, reason) || Fail(line, index, reason);
}

bool cStatements::ReadInterpolation(const cLine &line, size_t index, signed char &type)
{
    const std::string_view word = line.mTokens[index].mText;
    for (int i = SYNC_KEY_HOLD; i <= SYNC_KEY_QUADRATIC; i++) {
        if (word != kInterpolations[i])
            continue;
        type = static_cast<signed char>(i);
        return true;
    }
    return Fail(line, index, "hold, linear, smoothstep or quadratic",
                Hint(word, {std::begin(kInterpolations), std::end(kInterpolations)}));
}

bool cStatements::ReadWord(const cLine &line, size_t index, const char *expected, std::string &word)
{
    if (index >= line.mTokens.size() || line.mTokens[index].mKind == cToken::eKind::Equals)
        return Fail(line, index, expected);
    word = Unquote(line.mTokens[index]);
    return true;
}

bool cStatements::ReadRows(const cLine &line, size_t index, int &rows)
{
    std::string expected;
    const bool isThere = index < line.mTokens.size();
    if (ParseRow(isThere ? line.mTokens[index].mText : "", mTimeline.mTempo, rows, expected))
        return true;
    return Fail(line, index, expected);
}

bool cStatements::ReadPositive(const cLine &line, size_t index, const char *expected,
                               long long &value)
{
    const std::string_view text = index < line.mTokens.size() ? line.mTokens[index].mText : "";
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isNumber = result.ec == std::errc() && result.ptr == text.data() + text.size();
    if (isNumber && value > 0 && value <= kMaximumKeys)
        return true;
    value = 1;
    return Fail(line, index, expected);
}

bool cStatements::ReadBeatsPerMinute(const cLine &line, size_t index, double &beatsPerMinute)
{
    const std::string_view text = index < line.mTokens.size() ? line.mTokens[index].mText : "";
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, beatsPerMinute, std::chars_format::fixed);
    if (result.ec == std::errc() && result.ptr == end &&
        beatsPerMinute >= vyr::kMinimumBeatsPerMinute &&
        beatsPerMinute <= vyr::kMaximumBeatsPerMinute)
        return true;
    return Fail(line, index, "beats a minute, 1 to 10000");
}

// May be left out; then `count` stays what it is.
bool cStatements::ReadCount(const cLine &line, size_t index, int limit, const char *what,
                            int &count)
{
    if (index >= line.mTokens.size())
        return true;
    const std::string_view text = line.mTokens[index].mText;
    const char *end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, count);
    if (result.ec == std::errc() && result.ptr == end && count >= 1 && count <= limit)
        return true;
    return Fail(line, index, std::string(what) + ", 1 to " + std::to_string(limit));
}

bool cStatements::CheckEnd(const cLine &line, size_t count)
{
    return line.mTokens.size() <= count || Fail(line, count, "the end of the line");
}

// Sections
// -----------------------------------------------------------------------------------------

bool cStatements::ReadOptions(const cLine &line, const std::vector<std::string> &known,
                              cOptions &options)
{
    for (size_t i = 2; i < line.mTokens.size(); i += 2) {
        const std::string name(line.mTokens[i].mText);
        if (std::find(known.begin(), known.end(), name) == known.end())
            return Fail(line, i,
                        known == std::vector<std::string>{"at", "every", "times", "as"}
                            ? "at, every, times or as"
                            : "at, length, every or times",
                        Hint(name, known));
        if (!options.mSeen.emplace(name, i + 1).second)
            return Fail(line, i, name + " only once");
        if (!ReadOption(line, i + 1, name, options))
            return false;
    }
    return CheckRepetition(line, options);
}

bool cStatements::ReadOption(const cLine &line, size_t index, const std::string &name,
                             cOptions &options)
{
    if (name == "at")
        return ReadRows(line, index, options.mAt);
    if (name == "as")
        return ReadWord(line, index, "a name", options.mAs);
    if (name == "times")
        return ReadPositive(line, index, "a number of times, 1 or more", options.mTimes);
    int &rows = name == "length" ? options.mLength : options.mEvery;
    if (!ReadRows(line, index, rows))
        return false;
    return rows > 0 || Fail(line, index, "a time above 0");
}

// `every` and `times` come together, and there must be a first time.
bool cStatements::CheckRepetition(const cLine &line, const cOptions &options)
{
    if (options.Has("every") != options.Has("times"))
        return Fail(line, line.mTokens.size(),
                    options.Has("every") ? "times NUMBER" : "every TIME");
    if (options.Has("every") && !options.Has("at"))
        return Fail(line, line.mTokens.size(), "at TIME");
    return true;
}

cPlacement cStatements::MakePlacement(const cLine &line, const std::string &name,
                                      const cOptions &options)
{
    return {
        name, options.mAt, options.mEvery, options.mTimes, {line.mNumber, line.mTokens[0].mColumn}};
}

bool cStatements::FindSection(const cLine &line, size_t index, size_t &section)
{
    std::string name;
    if (!ReadWord(line, index, "a section's name", name))
        return false;
    const auto found = mSectionsByName.find(name);
    if (found == mSectionsByName.end())
        return Fail(line, index, "a section that stands above",
                    Hint(name, KeysOf(mSectionsByName)));
    section = found->second;
    return true;
}

// Faults
// -------------------------------------------------------------------------------------------

bool cStatements::Fail(const cLine &line, size_t index, const std::string &expected,
                       const std::string &hint)
{
    const bool isThere = index < line.mTokens.size();
    const int column = isThere ? line.mTokens[index].mColumn : line.mEndColumn;
    const std::string found = isThere ? Quote(line.mTokens[index].mText) : "the end of the line";
    mFaults.push_back({{line.mNumber, column}, "expected " + expected + ", found " + found + hint});
    return false;
}

std::string cStatements::Hint(std::string_view name, const std::vector<std::string> &known)
{
    return mHints++ < maximumHints ? tools::NearestHint(name, known) : "";
}
} // namespace timeline
