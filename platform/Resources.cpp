#include "platform/Resources.h"

#include <cstring>

namespace vyr::platform
{
bool ResolveResource(const std::string &name, char *buffer, size_t size)
{
    if (size == 0)
        return false;
    const bool fits = name.size() < size;
    const size_t length = fits ? name.size() : 0;
    std::memcpy(buffer, name.data(), length);
    buffer[length] = '\0';
    return fits;
}
} // namespace vyr::platform
