#include "tools/check/Messages.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace check
{
namespace
{
const size_t maximumBytes = 64u << 20; // of a message; more is no message of this program

void AppendCount(std::string &bytes, size_t count)
{
    const auto number = uint32_t(count);
    bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

/// Reads what AppendCount and append have written; IsWhole is false from the first gap on.
class cReader
{
public:
    explicit cReader(const std::string &bytes) : mBytes(bytes) {}

    size_t TakeCount()
    {
        uint32_t number = 0;
        if (!Has(sizeof number))
            return 0;
        std::memcpy(&number, mBytes.data() + mPlace, sizeof number);
        mPlace += sizeof number;
        return number;
    }
    std::string TakeText()
    {
        const size_t length = TakeCount();
        if (!Has(length))
            return "";
        mPlace += length;
        return mBytes.substr(mPlace - length, length);
    }
    bool IsWhole() const { return mIsWhole; }
    size_t GetPlace() const { return mPlace; }

private:
    bool Has(size_t count)
    {
        mIsWhole = mIsWhole && count <= maximumBytes && mBytes.size() - mPlace >= count;
        return mIsWhole;
    }

    const std::string &mBytes;
    size_t mPlace = 0;
    bool mIsWhole = true;
};

// Exact, whatever the number.
std::string ToText(double number)
{
    char text[40];
    std::snprintf(text, sizeof text, "%a", number);
    return text;
}

/// The strings of a message, one after another; empty ones where there are no more.
class cStrings
{
public:
    explicit cStrings(const tMessage &message) : mMessage(message) {}

    const std::string &Take()
    {
        static const std::string none;
        mIsWhole = mIsWhole && mNext < mMessage.size();
        return mIsWhole ? mMessage[mNext++] : none;
    }
    double TakeNumber() { return std::strtod(Take().c_str(), nullptr); }
    std::vector<std::string> TakeList()
    {
        std::vector<std::string> list;
        for (auto count = size_t(TakeNumber()); count > 0 && mIsWhole; count--)
            list.push_back(Take());
        return list;
    }
    bool IsWhole() const { return mIsWhole && mNext == mMessage.size(); }

private:
    const tMessage &mMessage;
    size_t mNext = 0;
    bool mIsWhole = true;
};

void AppendList(tMessage &message, const std::vector<std::string> &list)
{
    message.push_back(std::to_string(list.size()));
    message.insert(message.end(), list.begin(), list.end());
}
} // namespace

void Send(int pipe, const tMessage &message)
{
    std::string bytes;
    AppendCount(bytes, message.size());
    for (const std::string &text : message) {
        AppendCount(bytes, text.size());
        bytes += text;
    }
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t written = write(pipe, bytes.data() + done, bytes.size() - done);
        if (written < 0 && errno != EINTR)
            _exit(EXIT_FAILURE);
        done += size_t(written > 0 ? written : 0);
    }
}

std::optional<tMessage> TakeMessage(std::string &bytes)
{
    cReader reader(bytes);
    tMessage message;
    for (size_t count = reader.TakeCount(); count > 0 && reader.IsWhole(); count--)
        message.push_back(reader.TakeText());
    if (!reader.IsWhole())
        return std::nullopt;
    bytes.erase(0, reader.GetPlace());
    return message;
}

tMessage ToMessage(const vyr::cShowDescription &show)
{
    tMessage message = {show.mTitle,
                        show.mMusic,
                        ToText(show.mRowsPerSecond),
                        std::to_string(show.mRowsPerBeat),
                        std::to_string(show.mBeatsPerBar),
                        ToText(show.mLastRow)};
    AppendList(message, show.mTracks);
    AppendList(message, show.mFiles);
    message.push_back(std::to_string(show.mChoices.size()));
    for (const auto &choice : show.mChoices) {
        message.push_back(choice.mTrack);
        AppendList(message, choice.mFiles);
    }
    return message;
}

std::optional<vyr::cShowDescription> ToDescription(const tMessage &message)
{
    cStrings strings(message);
    vyr::cShowDescription show;
    show.mTitle = strings.Take();
    show.mMusic = strings.Take();
    show.mRowsPerSecond = strings.TakeNumber();
    show.mRowsPerBeat = int(strings.TakeNumber());
    show.mBeatsPerBar = int(strings.TakeNumber());
    show.mLastRow = strings.TakeNumber();
    show.mTracks = strings.TakeList();
    show.mFiles = strings.TakeList();
    show.mChoices.resize(size_t(strings.TakeNumber()));
    for (auto &choice : show.mChoices) {
        choice.mTrack = strings.Take();
        choice.mFiles = strings.TakeList();
    }
    return strings.IsWhole() ? std::optional(show) : std::nullopt;
}
} // namespace check
