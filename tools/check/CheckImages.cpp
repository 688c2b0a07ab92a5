#include "tools/check/CheckImages.h"

#include "tools/check/Stage.h"
#include "tools/support/Files.h"

#include <epoxy/gl.h>
#include <stb_image.h>

#include <filesystem>
#include <set>

namespace check
{
namespace
{
std::string Pixels(float width, float height)
{
    return Decimal(double(width), 0) + " by " + Decimal(double(height), 0) + " pixels";
}

void CheckSize(const std::string &path, const std::string &place, const vyr::cVector2 &size,
               cFindings &findings)
{
    GLint driver = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &driver);
    const float limit = float(std::min(driver, kMaximumImageSize));
    if (size.x > limit || size.y > limit)
        findings.Fault(path, place,
                       "expected at most " + Pixels(limit, limit) +
                           ", which every driver takes, found " + Pixels(size.x, size.y));
}

// The texture manager calls everything but four components GL_RGB, in rows that start at every
// fourth byte.
void CheckComponents(const std::string &path, const std::string &place,
                     const vyr::cTextureManager::cTexture &texture, cFindings &findings)
{
    const int components = texture.mComponents;
    if (components < 3)
        findings.Fault(
            path, place,
            std::string("expected colour (3 components) or colour and alpha (4), found ") +
                (components == 1 ? "grey (1)" : "grey and alpha (2)") +
                ", which is uploaded as something else");
    const int rowBytes = int(texture.mSize.x) * components;
    if (components == 3 && rowBytes % 4 != 0)
        findings.Fault(path, place,
                       "expected rows of a multiple of 4 bytes, found " + std::to_string(rowBytes) +
                           " (" + Pixels(texture.mSize.x, texture.mSize.y) +
                           " of 3 components): a width that 4 divides, or alpha");
}
} // namespace

void CheckImage(const std::string &path, const std::string &place, cFindings &findings)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) {
        findings.Fault(path, place, "missing");
        return;
    }
    const int id = LoadImage(path);
    if (id < 0) {
        const char *reason = stbi_failure_reason();
        findings.Fault(path, place,
                       std::string("can't be read as an image: ") +
                           (reason ? reason : "no reason given"));
        return;
    }
    const vyr::cTextureManager::cTexture &texture = Textures().GetTexture(id);
    CheckSize(path, place, texture.mSize, findings);
    CheckComponents(path, place, texture, findings);
}

void CheckImages(const vyr::cShowDescription &show, cFindings &findings)
{
    std::set<std::string> checked;
    const auto check = [&](const std::string &file, const std::string &place) {
        if (!tools::IsObject(file) && !tools::IsShader(file) && checked.insert(file).second)
            CheckImage(file, place, findings);
    };
    for (const auto &choice : show.mChoices)
        for (size_t i = 0; i < choice.mFiles.size(); i++)
            check(choice.mFiles[i], choice.mTrack + " " + std::to_string(i));
    for (const std::string &file : show.mFiles)
        check(file, "");
}
} // namespace check
