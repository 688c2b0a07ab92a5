#include "tools/check/LwoCursor.h"

#include <algorithm>
#include <bit>

namespace check
{
std::string_view cLwoCursor::Take(size_t count)
{
    mIsShort = mIsShort || count > Left();
    const std::string_view taken = mBytes.substr(mPosition, count);
    mPosition += taken.size();
    return taken;
}

int cLwoCursor::U2()
{
    const std::string_view bytes = Take(2);
    if (bytes.size() < 2)
        return 0;
    return int(static_cast<unsigned char>(bytes[0])) << 8 | static_cast<unsigned char>(bytes[1]);
}

int cLwoCursor::Index()
{
    const int first = U2();
    return first >> 8 == 0xFF ? (first & 0xFF) << 16 | U2() : first;
}

float cLwoCursor::F4() { return std::bit_cast<float>(U4()); }

std::string cLwoCursor::S0()
{
    const size_t end = mBytes.find('\0', mPosition);
    if (end == std::string_view::npos) {
        mIsShort = true;
        return std::string(Take(Left()));
    }
    std::string text(Take(end - mPosition));
    Take(text.size() % 2 == 0 ? 2 : 1);
    return text;
}
} // namespace check
