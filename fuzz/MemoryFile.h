#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz
{
/// A plain file that lives in memory and has a path, for readers that open their file themselves.
class cMemoryFile
{
public:
    cMemoryFile();
    ~cMemoryFile();
    cMemoryFile(const cMemoryFile &) = delete;
    cMemoryFile &operator=(const cMemoryFile &) = delete;

    void Write(const uint8_t *data, size_t size); ///< replaces what was there
    const std::string &Path() const { return mPath; }

private:
    int mDescriptor;
    std::string mPath;
};
} // namespace fuzz
