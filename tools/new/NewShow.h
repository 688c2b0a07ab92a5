#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace newshow
{
/// What a new show is asked to be.
struct cRequest
{
    std::filesystem::path mFolder; ///< its last part is the show's name
    std::string mTitle;            ///< empty: the name with a capital letter
    double mBeatsPerMinute = 120.0;
};

inline constexpr double kMinimumTempo = 20.0, kMaximumTempo = 400.0;

/// A request that can't be met as it stands: a name, a title or a folder that will not do.
class cRefusal : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Writes a small finished show, ready to be built, into `request.mFolder`, which is empty or does
/// not exist. Its pictures and its music are made by ffmpeg. Throws cRefusal, or record::cFailure
/// when a file or ffmpeg fails; nothing has been written then.
void WriteNewShow(const cRequest &request);
} // namespace newshow
