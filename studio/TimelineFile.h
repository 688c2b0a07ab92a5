#pragma once

#include "tools/timeline/Document.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace studio
{
/// The author's timeline: the text that is edited, and the file that it stands in. Every change is
/// one step of undo and one write of the file; where the file cannot be written, or somebody else
/// has written it meanwhile, nothing has changed.
class cTimelineFile
{
public:
    /// The timeline in `path`. As long as that has faults or can't be read, and for good where
    /// `path` is empty, `tracks` stands for it, a timeline without faults made of the show's
    /// tracks, which can't be changed.
    cTimelineFile(const std::filesystem::path &path, const std::string &tracks);

    const std::filesystem::path &Path() const { return mPath; } ///< empty: no file
    const timeline::cDocument &Document() const { return *mDocument; }
    /// What is wrong with the file as it is; while there is something, the last good text stands.
    const timeline::tTextFaults &Faults() const { return mFaults; }
    /// Counts the changes, those by undo and by others too.
    int Generation() const { return mGeneration; }

    using tChange = std::function<bool(timeline::cDocument &, timeline::cTextFault &refusal)>;
    /// Does `change`. False with one line in `refusal`, and nothing has changed.
    bool Change(const tChange &change, std::string &refusal);
    bool Apply(const timeline::cEdits &edits, std::string &refusal);
    /// False with a line in `refusal`; true too where there is nothing to undo.
    bool Undo(std::string &refusal);
    bool Redo(std::string &refusal);

    /// The file has changed. Takes its text where that has no faults.
    void ReadAgain();

private:
    bool Write(const std::string &before, std::string &refusal);
    bool IsChangeable(std::string &refusal) const;
    std::string ReadFile();

    std::filesystem::path mPath;
    std::unique_ptr<timeline::cDocument> mDocument;
    timeline::tTextFaults mFaults;
    bool mIsOfTracks = true; ///< the document is not the file's
    int mGeneration = 0;
};
} // namespace studio
