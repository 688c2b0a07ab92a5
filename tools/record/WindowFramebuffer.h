#pragma once

namespace record
{
/// As long as this lives, binding the window's framebuffer (0) binds another one: a show that
/// draws into a target of its own and goes back to the window, as the post effects do, is recorded
/// all the same. A context must be current. One at a time.
class cWindowFramebuffer
{
public:
    explicit cWindowFramebuffer(unsigned int framebuffer);
    ~cWindowFramebuffer();
    cWindowFramebuffer(const cWindowFramebuffer &) = delete;
    cWindowFramebuffer &operator=(const cWindowFramebuffer &) = delete;
};
} // namespace record
