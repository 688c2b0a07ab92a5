#include "tools/check/CheckObjects.h"

#include "engine/3DObject.h"
#include "tools/check/CheckImages.h"
#include "tools/check/LwoWalk.h"
#include "tools/support/Files.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>

namespace check
{
namespace
{
const size_t maximumObjectBytes = 64u << 20;
}

void CheckObject(const std::string &path, cFindings &findings)
{
    std::error_code ignored;
    std::string bytes, error;
    if (!std::filesystem::exists(path, ignored)) {
        findings.Fault(path, "", "missing");
        return;
    }
    if (!tools::ReadWhole(path, maximumObjectBytes, bytes, error)) {
        findings.Fault(path, "", error);
        return;
    }
    const size_t before = findings.mFaults.size();
    cLwoWalk walk(path, bytes, findings);
    walk.Walk();
    for (const std::string &image : walk.Images())
        CheckImage(image, "texture of " + path, findings);
    const std::unique_ptr<vyr::c3DObject> object(vyr::c3DObject::CreateFromLWO2(path));
    if (!object && findings.mFaults.size() == before)
        findings.Fault(path, "", "the engine's reader refuses it");
}

void CheckObjects(const vyr::cShowDescription &show, cFindings &findings)
{
    std::set<std::string> objects;
    for (const auto &choice : show.mChoices)
        std::ranges::copy_if(choice.mFiles, std::inserter(objects, objects.end()), tools::IsObject);
    std::ranges::copy_if(show.mFiles, std::inserter(objects, objects.end()), tools::IsObject);
    for (const std::string &object : objects)
        CheckObject(object, findings);
}
} // namespace check
