#include "fuzz/MemoryFile.h"

#include "fuzz/Fuzz.h"

#include <sys/mman.h>
#include <unistd.h>

namespace fuzz
{
cMemoryFile::cMemoryFile()
    : mDescriptor(memfd_create("fuzz", MFD_CLOEXEC)),
      mPath("/proc/self/fd/" + std::to_string(mDescriptor))
{
    FUZZ_EXPECT(mDescriptor >= 0);
}

cMemoryFile::~cMemoryFile() { close(mDescriptor); }

void cMemoryFile::Write(const uint8_t *data, size_t size)
{
    FUZZ_EXPECT(ftruncate(mDescriptor, 0) == 0);
    FUZZ_EXPECT(pwrite(mDescriptor, data, size, 0) == ssize_t(size));
}
} // namespace fuzz
