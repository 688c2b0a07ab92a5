#pragma once

#include "base/Assert.h"

namespace vyr
{
/// Holds the one instance of a class: the show has one renderer and one texture manager.
/// Creating twice, and getting or destroying what does not exist, are assertions. Not locked: all
/// use is on the main thread.
template <typename T>
class tSingleton
{
public:
    static void CreateSingleton()
    {
        VYR_ASSERT("Singleton", mSingleton == 0 && "Singleton already initialised!");
        mSingleton = new T;
    }

    static T &GetSingleton()
    {
        VYR_ASSERT("Singleton", mSingleton != 0 && "Singleton not initialised!");
        return *mSingleton;
    }

    static void DestroySingleton()
    {
        VYR_ASSERT("Singleton", mSingleton != 0 && "Singleton not initialised!");
        delete mSingleton;
        mSingleton = nullptr;
    }

private:
    static inline T *mSingleton = nullptr;
};
} // namespace vyr
