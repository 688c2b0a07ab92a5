#pragma once

#include "tools/timeline/Compiler.h"
#include "tools/timeline/Edits.h"
#include "tools/timeline/History.h"
#include "tools/timeline/Parser.h"
#include "tools/timeline/Text.h"
#include "tools/timeline/Timeline.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace timeline
{
/// A key of the show: where it lies and which line it comes from.
struct cShowKey
{
    cKeyId mId;
    sync_key mKey{}; ///< as the player has it: row of the show, value, interpolation
};

struct cShowTrack
{
    std::string mName;
    std::vector<cShowKey> mKeys; ///< ascending by row, one a row
};

/// Bytes of a line: the first one's column, from 1, and how many. A length of 0: not written.
struct cSpan
{
    int mColumn = 0, mLength = 0;
};

/// How a key is written.
struct cKeyText
{
    int mLine = 0; ///< number of the line, from 1
    cSpan mTime, mValue, mInterpolation;
    std::string mTrack;
    std::string mValueName; ///< the name that its value is written by; empty: a number
    std::string mSection;   ///< that its line belongs to; empty: the whole show
    int mSectionLine = 0;   ///< from 1; 0: the whole show
    int mCopies = 1; ///< how often the section is put: changing the line changes so many keys
    /// Why the key can't be changed where it is written; empty: it can.
    std::string mFixed;
};

/// An author's timeline that is edited in place. Only what an edit names changes in the text; every
/// other byte stays. Every edit is checked by compiling: where the text would come to mean anything
/// else than what was asked for, it is refused and nothing has changed.
///
/// Refusals come as a cTextFault: a reason of one line and the place of the line in question, line
/// 0 where it is none.
class cDocument
{
public:
    /// `text` must be a timeline without faults, or null comes back, with what is wrong in
    /// `faults`.
    static std::unique_ptr<cDocument> Open(std::string_view text, tTextFaults &faults);

    std::string Text() const { return mText.Bytes(); }
    const cText &Lines() const { return mText; }
    const cTimeline &Timeline() const { return mTimeline; }
    const cTempo &Tempo() const { return mTimeline.mTempo; }
    /// All tracks, by their names; declared ones without keys too. Good until the next change.
    const std::vector<cShowTrack> &Tracks() const { return mTracks; }

    const cShowTrack *FindTrack(std::string_view name) const;       ///< null: no such track
    const cShowKey *FindKey(std::string_view track, int row) const; ///< null: no key on that row
    const cShowKey *FindKey(cKeyId id) const;                       ///< null: not there any more
    /// Of a key that is there.
    cKeyText Describe(cKeyId id) const;
    /// All keys that its line makes, itself included: those that light up together.
    std::vector<cKeyId> CopiesOf(cKeyId id) const;

    /// The word for `value` in `track`: its name where the track's values go by names, else the
    /// shortest number. Only names that are declared above line `line` (from 1; 0: any).
    std::string WordFor(std::string_view track, float value, int line = 0) const;

    /// No key can be changed any more, for this reason ("the file is read-only"); empty: they can.
    void SetFixed(std::string reason) { mFixed = std::move(reason); }

    // Changes. Each is one step of undo; false with the reason in `refusal` and nothing changed.
    // ------------------------------------------------------------------------------------------

    bool Apply(const cEdits &edits, cTextFault &refusal);
    /// What the tracks that `edits` changes would become, without changing anything: for drawing
    /// while a hand still drags.
    bool Preview(const cEdits &edits, std::vector<cTrack> &changed, cTextFault &refusal) const;

    /// The copy of its section that `key` belongs to gets lines of its own, which change alone from
    /// then on. Nothing else changes, and no value. `detached` is the same key there.
    bool Detach(cKeyId key, cKeyId &detached, cTextFault &refusal);
    /// Everything that begins at `row` or later comes `count` rows later; a section that `row` lies
    /// in becomes longer, and one that ends there stays as it is.
    bool InsertTime(int row, int count, cTextFault &refusal);
    /// What lies from `row` on goes, for `count` rows, and everything behind it comes earlier.
    bool DeleteTime(int row, int count, cTextFault &refusal);

    /// The text as somebody else has written it since. Lines that are in both keep their identity,
    /// so that edits of them stay good. False with `faults`, and nothing changed, where it has
    /// some.
    bool Become(std::string_view text, tTextFaults &faults);

    /// Several changes become one step: everything from Begin to the End that belongs to it. With
    /// `keep` false End takes them back.
    void Begin();
    void End(bool keep);

    bool CanUndo() const { return mHistory.CanUndo(); }
    bool CanRedo() const { return mHistory.CanRedo(); }
    void Undo(); ///< nothing where there is nothing to take back
    void Redo();

private:
    friend class cKeyPlan;
    friend class cKeyWriter;
    friend class cSectionEditor;

    /// Where a key line belongs.
    struct cOrigin
    {
        int mSection = 0, mBlock = 0, mKey = 0;
    };

    explicit cDocument(std::string_view text) : mText(text) {}
    bool Read(tTextFaults &faults);
    void TakeTracks(const std::vector<cPlacedTrack> &placed);
    void IndexLines();
    void Reread();
    void Note(tPatches done);
    bool MeansTheSame(const std::vector<cPlacedTrack> &placed,
                      const std::vector<cTrack> &expected) const;
    bool Finish(tPatches done, const std::vector<cTrack> &expected, cTextFault &refusal);
    std::string_view ContentOf(int line) const { return mText.Content(line - 1); } // from 1
    tLineId IdOf(int line) const { return mText.At(line - 1).mId; }
    int LastLineOf(size_t section) const;
    bool IsAligned(const cBlock &block, size_t key, size_t word) const;
    int NumberOf(tLineId id) const { return mText.Find(id) + 1; }
    const cOrigin *OriginOf(tLineId id) const;
    const cKey &KeyOf(const cOrigin &origin) const;
    const cBlock &BlockOf(const cOrigin &origin) const;
    const cSection &SectionOf(const cOrigin &origin) const;
    static int CopiesOf(const cSection &section);

    cText mText;
    cTimeline mTimeline;
    std::vector<cShowTrack> mTracks;
    std::vector<int> mOriginOfLine; ///< index into mOrigins by line, from 0; -1: no key there
    std::vector<cOrigin> mOrigins;
    cHistory mHistory;
    tPatches mGroup;                  ///< what has been done since the outermost Begin
    std::vector<size_t> mGroupStarts; ///< its length at each Begin
    std::string mFixed;
};
} // namespace timeline
