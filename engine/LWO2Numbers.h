#pragma once

#include <bit>
#include <cstdint>
#include <cstdio>
#include <string>

/// The pieces that LWO2 chunks are made of, read from where `file` stands. Numbers are big-endian.
/// Every function that answers false has met the file's end, and leaves what it should have read.
///
/// Objects are read in pieces of one to four bytes, millions of them, by one thread: each byte
/// comes straight from the stream's buffer, without the lock that `std::fread` takes.
namespace vyr::lwo2
{
template <size_t Count>
bool ReadBytes(std::FILE *file, unsigned char (&bytes)[Count])
{
    for (unsigned char &byte : bytes) {
        const int c = getc_unlocked(file);
        if (c == EOF)
            return false;
        byte = static_cast<unsigned char>(c);
    }
    return true;
}

inline bool ReadU4(std::FILE *file, uint32_t &value)
{
    unsigned char b[4];
    if (!ReadBytes(file, b))
        return false;
    value = uint32_t(b[0]) << 24 | uint32_t(b[1]) << 16 | uint32_t(b[2]) << 8 | uint32_t(b[3]);
    return true;
}

inline bool ReadI4(std::FILE *file, int &value)
{
    uint32_t bits = 0;
    if (!ReadU4(file, bits))
        return false;
    value = static_cast<int>(bits);
    return true;
}

inline bool ReadU2(std::FILE *file, int &value)
{
    unsigned char b[2];
    if (!ReadBytes(file, b))
        return false;
    value = b[0] << 8 | b[1];
    return true;
}

inline bool ReadFloat(std::FILE *file, float &value)
{
    uint32_t bits = 0;
    if (!ReadU4(file, bits))
        return false;
    value = std::bit_cast<float>(bits);
    return true;
}

/// An index of 2 bytes, or of 4 when the first is 0xFF; `remaining` is lowered by its length.
inline bool ReadIndex(std::FILE *file, int &index, int &remaining)
{
    if (!ReadU2(file, index))
        return false;
    remaining -= 2;
    if (index >> 8 != 0xFF)
        return true;
    int low = 0;
    if (!ReadU2(file, low))
        return false;
    index = (index & 0xFF) << 16 | low;
    remaining -= 2;
    return true;
}

/// The four characters that name a chunk or what is in it.
inline bool ReadId(std::FILE *file, std::string &id)
{
    unsigned char bytes[4];
    if (!ReadBytes(file, bytes))
        return false;
    id.assign(bytes, bytes + 4);
    return true;
}

/// Never backwards: a negative `count` would be read for ever, and is false. The place reached may
/// lie beyond the file's end.
inline bool Skip(std::FILE *file, int count)
{
    return count >= 0 && std::fseek(file, count, SEEK_CUR) == 0;
}

inline bool SkipToEven(std::FILE *file, int count)
{
    return count >= 0 && Skip(file, count) && Skip(file, count & 1);
}
} // namespace vyr::lwo2
