#pragma once

#include "tools/timeline/Document.h"

#include <string>
#include <string_view>
#include <vector>

/// Edits as words, for a command line and for scripts:
///
///     set TRACK TIME VALUE [INTERPOLATION]
///     move TRACK TIME NEWTIME
///     delete TRACK TIME
///     detach TRACK TIME
///     insert TIME LENGTH
///     remove TIME LENGTH
///
/// TIME is the show's, written as in a timeline.
namespace timeline
{
/// Why an edit has not been done.
struct cEditFault
{
    size_t mWord = 0;        ///< that is not as it should be; the number of words: one is missing
    bool mIsMisused = false; ///< the words are no edit; else the timeline does not allow it
    cTextFault mReason;      ///< its place is in the timeline; line 0: nowhere
};

/// Does the edit that `words` say, as one step of undo. With `isPattern` all copies of a key in a
/// repeated section are meant. False with `fault`, and nothing changed.
bool DoEdit(cDocument &document, const std::vector<std::string> &words, bool isPattern,
            cEditFault &fault);

/// Does the edits of `script`, one a line, each on what the ones before have made, as one step of
/// undo: all, or none with all `faults`. Comments begin with #, as in a timeline. A fault's place
/// is in the script; one that the timeline gives a reason for names `file` and the line there.
bool DoScript(cDocument &document, std::string_view script, const std::string &file, bool isPattern,
              tTextFaults &faults);
} // namespace timeline
