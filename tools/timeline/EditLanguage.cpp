#include "tools/timeline/EditLanguage.h"

#include "show/Time.h"
#include "tools/support/Nearest.h"
#include "tools/timeline/Lexer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace timeline
{
namespace
{
using tools::Quote;

/// One edit being read and done. What fails leaves its fault.
class cEdit
{
public:
    cEdit(cDocument &document, const std::vector<std::string> &words, bool isPattern,
          cEditFault &fault)
        : mDocument(document), mWords(words), mFault(fault)
    {
        mEdits.mPattern = isPattern;
    }

    bool Do()
    {
        const std::string command = mWords.empty() ? "" : mWords[0];
        for (const cCommand &known : commands)
            if (command == known.mName)
                return HasWords(known) && (this->*known.mDo)();
        return Misuse(0, "set, move, delete, detach, insert or remove");
    }

private:
    struct cCommand
    {
        const char *mName;
        size_t mLeast, mMost; ///< words
        bool (cEdit::*mDo)();
    };
    static const cCommand commands[6];

    bool Set()
    {
        cNewKey key;
        key.mTrack = mWords[1];
        if (!ReadTrack() || !ReadRow(2, key.mRow) || !ReadValue(3, key.mValue, key.mWord) ||
            !ReadInterpolation(4, key.mType))
            return false;
        mEdits.mNew.push_back(key);
        return Apply();
    }

    bool Move()
    {
        cKeyChange change;
        int row = 0;
        if (!ReadTrack() || !ReadKey(change.mKey) || !ReadRow(3, row))
            return false;
        change.mRow = row;
        mEdits.mChanges.push_back(change);
        return Apply();
    }

    bool Delete()
    {
        cKeyId key;
        if (!ReadTrack() || !ReadKey(key))
            return false;
        mEdits.mDeleted.push_back(key);
        return Apply();
    }

    bool Detach()
    {
        cKeyId key, detached;
        return ReadTrack() && ReadKey(key) &&
               Allow(mDocument.Detach(key, detached, mFault.mReason));
    }

    bool Insert()
    {
        int row = 0, count = 0;
        return ReadRow(1, row) && ReadLength(2, count) &&
               Allow(mDocument.InsertTime(row, count, mFault.mReason));
    }

    bool Remove()
    {
        int row = 0, count = 0;
        return ReadRow(1, row) && ReadLength(2, count) &&
               Allow(mDocument.DeleteTime(row, count, mFault.mReason));
    }

    // Words
    // -----------------------------------------------------------------------------------------

    bool HasWords(const cCommand &command)
    {
        static const char *const names[] = {"a track", "a time", "a value or a time"};
        if (mWords.size() > command.mMost)
            return Misuse(command.mMost, "the end of the edit");
        if (mWords.size() >= command.mLeast)
            return true;
        const bool hasTrack = command.mLeast > 3 || command.mName[0] == 'd';
        const size_t missing = mWords.size() - (hasTrack ? 1 : 0);
        return Misuse(mWords.size(), names[std::min<size_t>(missing, 2)]);
    }

    bool ReadTrack()
    {
        if (mDocument.FindTrack(mWords[1]))
            return true;
        std::vector<std::string> names;
        for (const cShowTrack &track : mDocument.Tracks())
            names.push_back(track.mName);
        return Refuse(1, "a track of this timeline", tools::NearestHint(mWords[1], names));
    }

    bool ReadRow(size_t word, int &row)
    {
        std::string expected;
        return ParseRow(mWords[word], mDocument.Tempo(), row, expected) || Misuse(word, expected);
    }

    bool ReadLength(size_t word, int &rows)
    {
        return ReadRow(word, rows) && (rows > 0 || Misuse(word, "a time above 0"));
    }

    bool ReadKey(cKeyId &id)
    {
        int row = 0;
        if (!ReadRow(2, row))
            return false;
        const cShowKey *key = mDocument.FindKey(mWords[1], row);
        if (key)
            id = key->mId;
        return key || Refuse(2, "a key of " + Quote(mWords[1]) + " there", NearestKey(row));
    }

    std::string NearestKey(int row) const
    {
        const auto distance = [&](const cShowKey &key) {
            return std::llabs(static_cast<long long>(key.mKey.row) - row);
        };
        const std::vector<cShowKey> &keys = mDocument.FindTrack(mWords[1])->mKeys;
        const auto nearest =
            std::min_element(keys.begin(), keys.end(), [&](const cShowKey &a, const cShowKey &b) {
                return distance(a) < distance(b);
            });
        return nearest == keys.end()
                   ? ", it has no keys"
                   : ", the nearest one is at " + FormatRow(nearest->mKey.row, mDocument.Tempo());
    }

    // Spelled as the words say, a number with a name by its name.
    bool ReadValue(size_t word, float &value, std::string &spelling)
    {
        const std::string &text = mWords[word];
        const auto declared = mDocument.Timeline().mNames.find(text);
        if (declared != mDocument.Timeline().mNames.end()) {
            value = declared->second;
            spelling = text;
            return true;
        }
        std::string expected;
        if (vyr::ParseValue(text, value, expected)) {
            const bool hasName = mDocument.WordFor(mWords[1], value) != vyr::FormatValue(value);
            spelling = hasName ? "" : text;
            return true;
        }
        std::vector<std::string> names;
        for (const auto &[name, ofName] : mDocument.Timeline().mNames)
            names.push_back(name);
        return Refuse(word, expected, tools::NearestHint(text, names));
    }

    bool ReadInterpolation(size_t word, std::optional<signed char> &type)
    {
        for (int i = SYNC_KEY_HOLD; word < mWords.size() && i <= SYNC_KEY_QUADRATIC; i++)
            if (mWords[word] == kInterpolations[i])
                type = static_cast<signed char>(i);
        return word >= mWords.size() || type ||
               Misuse(word, "hold, linear, smoothstep or quadratic");
    }

    // Ends
    // -----------------------------------------------------------------------------------------

    bool Apply() { return Allow(mDocument.Apply(mEdits, mFault.mReason)); }

    bool Allow(bool isDone)
    {
        mFault.mWord = 0;
        mFault.mIsMisused = false;
        return isDone;
    }

    bool Refuse(size_t word, const std::string &expected, const std::string &hint = "")
    {
        const std::string found = word < mWords.size() ? Quote(mWords[word]) : "nothing";
        mFault = {word, false, {{}, "expected " + expected + ", found " + found + hint}};
        return false;
    }

    bool Misuse(size_t word, const std::string &expected)
    {
        Refuse(word, expected);
        mFault.mIsMisused = true;
        return false;
    }

    cDocument &mDocument;
    const std::vector<std::string> &mWords;
    cEditFault &mFault;
    cEdits mEdits;
};

const cEdit::cCommand cEdit::commands[6] = {
    {"set", 4, 5, &cEdit::Set},       {"move", 4, 4, &cEdit::Move},
    {"delete", 3, 3, &cEdit::Delete}, {"detach", 3, 3, &cEdit::Detach},
    {"insert", 3, 3, &cEdit::Insert}, {"remove", 3, 3, &cEdit::Remove}};

std::string_view TakeLine(std::string_view &text)
{
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

void DoLine(cDocument &document, std::string_view line, int number, const std::string &file,
            bool isPattern, tTextFaults &faults)
{
    std::vector<cToken> tokens;
    cLexFault lexFault;
    if (!SplitLine(line, tokens, lexFault)) {
        faults.push_back({{number, lexFault.mColumn},
                          "expected " + lexFault.mExpected + ", found " + lexFault.mFound});
        return;
    }
    std::vector<std::string> words;
    for (const cToken &token : tokens)
        words.push_back(Unquote(token));
    cEditFault fault;
    if (words.empty() || DoEdit(document, words, isPattern, fault))
        return;
    const cPlace &place = fault.mReason.mPlace;
    const std::string there = place.mLine == 0 ? ""
                                               : file + ":" + std::to_string(place.mLine) + ":" +
                                                     std::to_string(place.mColumn) + ": ";
    const bool isThere = fault.mWord < tokens.size();
    faults.push_back({{number, isThere ? tokens[fault.mWord].mColumn : int(line.size()) + 1},
                      there + fault.mReason.mWhat});
}
} // namespace

bool DoEdit(cDocument &document, const std::vector<std::string> &words, bool isPattern,
            cEditFault &fault)
{
    return cEdit(document, words, isPattern, fault).Do();
}

bool DoScript(cDocument &document, std::string_view script, const std::string &file, bool isPattern,
              tTextFaults &faults)
{
    document.Begin();
    for (int number = 1; !script.empty() && faults.size() < kMaximumFaults; number++)
        DoLine(document, TakeLine(script), number, file, isPattern, faults);
    document.End(faults.empty());
    return faults.empty();
}
} // namespace timeline
