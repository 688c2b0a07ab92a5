#pragma once

#include "show/Show.h"
#include "sync/track.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace test
{
/// Makes a complete small show that vyr-check finds nothing wrong with in the working directory.
/// Its parts are made once a process; the music is a link to them.
void MakeGoodShow();
/// What it says of itself.
const vyr::cShowDescription &GetShow();
/// How many pictures its tracks pick from.
int CountPhotos();
int CountLyrics();

/// Replaces a track file by one of these keys.
void WriteTrack(const std::string &name, const std::vector<sync_key> &keys);
/// The bytes of a track file, for those that are to be broken.
std::string TrackBytes(const std::vector<sync_key> &keys);

/// Replaces the music by what ffmpeg makes of these arguments.
void WriteMusic(const std::vector<std::string> &arguments);

/// Replaces an image by a picture of one colour.
void WriteFlatImage(const std::string &path, int width, int height, int components);

/// A lyric image: letters (grey level, opaque) on a backing of another level and opacity.
void WriteLyricImage(const std::string &path, int letters, int backing, int backingAlpha);
} // namespace test
