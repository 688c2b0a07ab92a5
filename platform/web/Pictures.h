#pragma once

/// Pictures that the browser decodes: how stbi_load and glTexImage2D work together where a file may
/// not have come yet.
///
/// The page lists its pictures in Module.pictures: a Map from the path that the show loads to an
/// object {width, height, components, pixels, bitmap}. `pixels` (a Uint8Array, or null) is there
/// where a picture has come before the show loads it. Otherwise the texture is empty at first, and
/// the listed object gets a member `texture`; Module.uploadPicture(object) fills it once `bitmap`
/// (an ImageBitmap) is there.

namespace vyr::web
{
/// Whether `pixels` is the memory that stbi_load gave out last, without its picture. True once.
bool TakeUnarrived(const void *pixels);

/// What is uploaded to `texture` comes later: the page learns which one it is.
void ExpectPicture(unsigned texture);
} // namespace vyr::web
