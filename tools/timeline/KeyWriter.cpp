#include "tools/timeline/KeyWriter.h"

#include "show/Time.h"
#include "tools/timeline/KeyLine.h"
#include "tools/timeline/Lexer.h"

#include <algorithm>

namespace timeline
{
namespace
{
bool Refuse(cTextFault &refusal, int line, const std::string &why)
{
    refusal = {{line, 1}, why};
    return false;
}
} // namespace

// New lines take their style from lines that are still there, so deleted ones go last.
bool cKeyWriter::Write(cText &text, tPatches &done, cTextFault &refusal)
{
    for (const auto &[line, plan] : mPlan.Lines())
        if (!plan.mIsDeleted && !WriteChange(text, plan, done, refusal))
            return false;
    FindPlaces();
    MakeBlocks(text, done);
    for (const cKeyPlan::cNewLine &line : mPlan.NewLines())
        if (!line.mIsDropped && !WriteNew(text, line, done, refusal))
            return false;
    for (const auto &[line, plan] : mPlan.Lines())
        if (plan.mIsDeleted)
            text.Remove(text.Find(line), done);
    return true;
}

bool cKeyWriter::WriteChange(cText &text, const cKeyPlan::cLinePlan &plan, tPatches &done,
                             cTextFault &refusal) const
{
    const cBlock &block = mDocument.BlockOf(*plan.mOrigin);
    const cKey &key = mDocument.KeyOf(*plan.mOrigin);
    const size_t index = size_t(plan.mOrigin->mKey);
    const int line = text.Find(plan.mLine);
    std::string content(text.Content(line));
    if (plan.mRow != key.mRow)
        content =
            ReplaceWord(content, kTimeWord,
                        FormatRowLike(plan.mRow, WordOf(content, kTimeWord), mDocument.Tempo()),
                        mDocument.IsAligned(block, index, kValueWord));
    if (!plan.mWord.empty() && plan.mWord != WordOf(content, kValueWord))
        content = ReplaceWord(content, kValueWord, plan.mWord,
                              mDocument.IsAligned(block, index, kInterpolationWord));
    if (plan.mType != key.mType) {
        const char *word = kInterpolations[plan.mType];
        const bool isWritten = CountWords(content) > kInterpolationWord;
        content = isWritten ? ReplaceWord(content, kInterpolationWord, word, false)
                            : AppendWord(content, word, InterpolationColumn(block));
    }
    if (content.size() > kMaximumLineBytes)
        return Refuse(refusal, key.mPlace.mLine,
                      "expected a line of at most " + std::to_string(kMaximumLineBytes) +
                          " bytes, which the change would exceed");
    if (content != text.Content(line))
        text.Replace(line, content, done);
    return true;
}

// Where the first keys of the block say their interpolation; 0 where none of them does.
size_t cKeyWriter::InterpolationColumn(const cBlock &block) const
{
    const size_t mostKeys = 64; // so many say how a block is written
    for (size_t i = 0; i < std::min(block.mKeys.size(), mostKeys); i++) {
        const std::string_view line = mDocument.ContentOf(block.mKeys[i].mPlace.mLine);
        if (CountWords(line) > kInterpolationWord)
            return ColumnOf(line, kInterpolationWord);
    }
    return 0;
}

// New lines
// ---------------------------------------------------------------------------------------------

// Line numbers are those of the document, so all of this is found out before a line is made.
void cKeyWriter::FindPlaces()
{
    for (const cKeyPlan::cNewLine &line : mPlan.NewLines()) {
        const tPlaceKey key{line.mSection, line.mBlock, line.mTrack};
        if (!line.mIsDropped && !mPlaces.count(key))
            mPlaces[key] = line.mBlock < 0 ? PlaceOfNewBlock(line) : PlaceInBlock(line);
    }
}

// Before any key is made: a key that comes to the end of a section's last block must stay above
// them.
void cKeyWriter::MakeBlocks(cText &text, tPatches &done)
{
    for (auto entry = mPlaces.rbegin(); entry != mPlaces.rend(); ++entry) {
        cPlaceOfKeys &place = entry->second;
        if (place.mTrackLine == kNoLine)
            place.mTrackLine =
                text.Insert(text.Find(place.mLineBefore) + 1,
                            place.mIndent + "track " + QuoteName(std::get<2>(entry->first)), done);
    }
}

cKeyWriter::cPlaceOfKeys cKeyWriter::PlaceInBlock(const cKeyPlan::cNewLine &line) const
{
    const cSection &section = mDocument.mTimeline.mSections[line.mSection];
    const cBlock &block = section.mBlocks[size_t(line.mBlock)];
    cPlaceOfKeys place;
    place.mTrackLine = mDocument.IdOf(block.mLine);
    place.mNumber = block.mLine;
    place.mDefaultType = block.mDefaultType;
    place.mInterpolationColumn = InterpolationColumn(block);
    place.mIndent = IndentOf(mDocument.ContentOf(block.mLine));
    for (const cKey &key : block.mKeys) {
        const cKeyPlan::cLinePlan *plan = mPlan.PlanOf(key.mPlace.mLine);
        place.mKeys.push_back({plan && !plan->mIsDeleted ? plan->mRow : key.mRow,
                               mDocument.IdOf(key.mPlace.mLine), key.mPlace.mLine});
    }
    return place;
}

// Behind the last line of the section, or of what comes before all sections.
cKeyWriter::cPlaceOfKeys cKeyWriter::PlaceOfNewBlock(const cKeyPlan::cNewLine &line) const
{
    const cSection &section = mDocument.mTimeline.mSections[line.mSection];
    cPlaceOfKeys place;
    place.mNumber = mDocument.LastLineOf(line.mSection);
    place.mLineBefore = place.mNumber > 0 ? mDocument.IdOf(place.mNumber) : kNoLine;
    if (!section.mBlocks.empty())
        place.mIndent = IndentOf(mDocument.ContentOf(section.mBlocks.back().mLine));
    else if (section.mLine > 0)
        place.mIndent = std::string(IndentOf(mDocument.ContentOf(section.mLine))) + "  ";
    return place;
}

bool cKeyWriter::WriteNew(cText &text, const cKeyPlan::cNewLine &line, tPatches &done,
                          cTextFault &refusal)
{
    cPlaceOfKeys &place = mPlaces.at({line.mSection, line.mBlock, line.mTrack});
    // In the order of rows, as far as the lines have one.
    const cStanding *before = nullptr;
    for (const cStanding &key : place.mKeys)
        if (key.mRow <= line.mRow && (!before || key.mRow >= before->mRow))
            before = &key;
    const bool isFirst = !before && !place.mKeys.empty();
    const cStanding like = before    ? *before
                           : isFirst ? place.mKeys.front()
                                     : cStanding{0, kNoLine, place.mNumber};
    const std::string content = ContentOfNew(text, line, place, like);
    if (content.size() > kMaximumLineBytes)
        return Refuse(refusal, like.mNumber,
                      "expected room for a line of at most " + std::to_string(kMaximumLineBytes) +
                          " bytes, found a longer one");
    const tLineId anchor = like.mLine == kNoLine ? place.mTrackLine : like.mLine;
    const int index = text.Find(anchor) + (isFirst ? 0 : 1);
    const cStanding made{line.mRow, text.Insert(index, content, done), like.mNumber};
    const auto next = std::find_if(place.mKeys.begin(), place.mKeys.end(),
                                   [&](const cStanding &key) { return key.mRow > line.mRow; });
    place.mKeys.insert(next, made);
    return true;
}

// Whether the values of the key and of the one above or below it stand in one column.
bool cKeyWriter::IsAligned(const cText &text, const cPlaceOfKeys &place, const cStanding &key)
{
    const auto column = [&](const cStanding &of) {
        return ColumnOf(text.Content(text.Find(of.mLine)), kValueWord);
    };
    const auto at = std::find_if(place.mKeys.begin(), place.mKeys.end(),
                                 [&](const cStanding &other) { return other.mLine == key.mLine; });
    return (at != place.mKeys.begin() && column(*(at - 1)) == column(key)) ||
           (at + 1 != place.mKeys.end() && column(*(at + 1)) == column(key));
}

std::string cKeyWriter::ContentOfNew(const cText &text, const cKeyPlan::cNewLine &line,
                                     const cPlaceOfKeys &place, const cStanding &like) const
{
    const bool isAlone = like.mLine == kNoLine;
    const std::string sample =
        isAlone ? place.mIndent + "  0:0:0   0" : std::string(text.Content(text.Find(like.mLine)));
    const bool isAligned = isAlone || IsAligned(text, place, like);
    const bool saysType = CountWords(sample) > kInterpolationWord;
    const char *type = kInterpolations[line.mType];
    const std::string content = MakeKeyLine(
        sample, isAligned, FormatRowLike(line.mRow, WordOf(sample, kTimeWord), mDocument.Tempo()),
        WordOfNew(line, like.mNumber), saysType ? type : "");
    return saysType || line.mType == place.mDefaultType
               ? content
               : AppendWord(content, type, place.mInterpolationColumn);
}

// A name only where it is declared above.
std::string cKeyWriter::WordOfNew(const cKeyPlan::cNewLine &line, int number) const
{
    const auto declared = mDocument.mTimeline.mNameLines.find(line.mWord);
    const bool isUnknown =
        declared != mDocument.mTimeline.mNameLines.end() && declared->second >= number;
    return line.mWord.empty() || isUnknown ? mDocument.WordFor(line.mTrack, line.mValue, number)
                                           : line.mWord;
}
} // namespace timeline
