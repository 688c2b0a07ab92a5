#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace check
{
/// Walks over the bytes of a chunk. Past the end everything reads as zero or empty and `IsShort`
/// tells so: a walk ends at a place of its own choosing.
class cLwoCursor
{
public:
    explicit cLwoCursor(std::string_view bytes) : mBytes(bytes) {}

    size_t Left() const { return mBytes.size() - mPosition; }
    bool IsShort() const { return mIsShort; }

    std::string Id() { return std::string(Take(4)); }
    uint32_t U4() { return uint32_t(U2()) << 16 | uint32_t(U2()); }
    int U2();
    int Index(); ///< of 2 bytes, or of 4 where the first one is 0xFF
    float F4();
    std::string S0();                         ///< zero-terminated, padded to an even length
    std::string_view Take(size_t count);      ///< that many bytes, or what is left of them
    void Pad(size_t size) { Take(size & 1); } ///< behind a body of `size` bytes

private:
    std::string_view mBytes;
    size_t mPosition = 0;
    bool mIsShort = false;
};
} // namespace check
