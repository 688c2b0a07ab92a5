#pragma once

#include "tools/timeline/Document.h"
#include "tools/timeline/EditLanguage.h"

#include <memory>
#include <string>
#include <vector>

namespace test
{
/// The document of `text`; null, and a failed test, where it has faults.
std::unique_ptr<timeline::cDocument> Open(const std::string &text);

/// The tracks of `text`; a failed test where it has faults.
std::vector<timeline::cTrack> CompileText(const std::string &text);

/// A document and what edits change in it.
class cEditing
{
public:
    explicit cEditing(const std::string &text, bool isPattern = false);

    /// Does an edit ("set a 0 1") and answers the lines that it has changed: first all old ones
    /// ("-..."), then all new ones ("+..."), as a diff without context. A line without line end is
    /// followed by "\". A refused edit fails the test.
    std::string Do(const std::string &edit);
    std::string Apply(const timeline::cEdits &edits);

    std::unique_ptr<timeline::cDocument> mDocument; ///< null where the text has faults

private:
    const bool mIsPattern;
};

/// Why an edit of `text` is refused: "LINE: REASON". The text stays as it is.
std::string Refusal(const std::string &text, const std::string &edit, bool isPattern = false);
} // namespace test
