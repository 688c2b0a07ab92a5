#include "examples/Example.h"

#include "platform/Window.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{
void RequireFile(bool isRead, const std::string &path)
{
    if (isRead)
        return;
    std::fprintf(stderr, "%s: can't be read\n", path.c_str());
    std::exit(1);
}
} // namespace

double WindowSeconds() { return vyr::platform::GetTime(); }

int LoadPicture(const std::string &path)
{
    const int texture = Textures().LoadTexture(path, false);
    RequireFile(texture != -1, path);
    return texture;
}

vyr::c3DObject::cRenderObject *LoadObject(const std::string &path)
{
    const std::unique_ptr<vyr::c3DObject> mesh(vyr::c3DObject::CreateFromLWO2(path));
    RequireFile(mesh != nullptr, path);
    return mesh->CreateRenderObject();
}
