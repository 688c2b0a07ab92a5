#include "engine/LWO2Numbers.h"
#include "engine/LWO2Reader.h"
#include "engine/Singleton.h"
#include "engine/TextureManager.h"

namespace vyr
{
using namespace lwo2;

namespace
{
// Objects carry the paths of their author's machine: what counts begins at the last "data/".
int LoadClipTexture(const std::string &path)
{
    size_t start = path.rfind("data/");
    if (start == std::string::npos)
        start = path.rfind("Data/");
    if (start == std::string::npos)
        return -1;
    return tSingleton<cTextureManager>::GetSingleton().LoadTexture(path.substr(start), false);
}
} // namespace

bool cLWO2Reader::ReadClipPart(int &remaining, int clip)
{
    std::string id;
    int size = 0;
    if (!ReadId(mFile, id) || !ReadU2(mFile, size))
        return false;
    remaining -= 6 + (size & 1);
    if (id != "STIL") {
        remaining -= size;
        return Skip(mFile, size) && Skip(mFile, size & 1);
    }
    std::string path;
    const int length = c3DObject::ReadString(path, mFile);
    if (length == 0)
        return false;
    remaining -= length;
    mObject.mClips.push_back({clip, LoadClipTexture(path)});
    return Skip(mFile, size & 1);
}

bool cLWO2Reader::ReadClip(int remaining)
{
    int clip = 0;
    if (!ReadI4(mFile, clip))
        return false;
    remaining -= 4;
    while (remaining > 0)
        if (!ReadClipPart(remaining, clip))
            return false;
    return remaining == 0;
}
} // namespace vyr
