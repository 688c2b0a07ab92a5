#include "engine/Singleton.h"

#include <gtest/gtest.h>

namespace
{
struct cCounted
{
    static inline int sAlive = 0;
    cCounted() { sAlive++; }
    ~cCounted() { sAlive--; }
};
struct cOther
{};
using tCounted = vyr::tSingleton<cCounted>;

TEST(Singleton, LivesFromCreationToDestruction)
{
    tCounted::CreateSingleton();
    EXPECT_EQ(cCounted::sAlive, 1);
    static_assert(std::is_same_v<decltype(tCounted::GetSingleton()), cCounted &>);
    EXPECT_EQ(&tCounted::GetSingleton(), &tCounted::GetSingleton());
    tCounted::DestroySingleton();
    EXPECT_EQ(cCounted::sAlive, 0);
    tCounted::CreateSingleton();
    EXPECT_EQ(cCounted::sAlive, 1);
    tCounted::DestroySingleton();
}

TEST(SingletonDeath, CreatingTwiceStopsTheProgram)
{
    tCounted::CreateSingleton();
    EXPECT_DEATH(tCounted::CreateSingleton(),
                 "mSingleton == 0 && \"Singleton already initialised!\"\\), function "
                 "CreateSingleton, file Singleton");
    tCounted::DestroySingleton();
}

TEST(SingletonDeath, UsingNoneStopsTheProgram)
{
    const char *message = "mSingleton != 0 && \"Singleton not initialised!\"";
    EXPECT_DEATH(vyr::tSingleton<cOther>::GetSingleton(), message);
    EXPECT_DEATH(vyr::tSingleton<cOther>::DestroySingleton(), message);
}
} // namespace
