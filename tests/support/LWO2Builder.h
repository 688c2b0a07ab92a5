#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// Pieces of LWO2 files, as bytes.
namespace lwo2
{
std::string U2(int value);
std::string U4(uint32_t value);
std::string F4(float value);
std::string S0(const std::string &text); ///< zero-terminated, padded to an even length

std::string Chunk(const std::string &id, const std::string &body);    ///< with its pad byte
std::string SubChunk(const std::string &id, const std::string &body); ///< 16-bit size, pad byte
std::string Form(const std::string &chunks);                          ///< the whole file

std::string Points(const std::vector<std::pair<float, float>> &points); ///< PNTS, z = 0
std::string Faces(const std::vector<std::vector<int>> &polygons);       ///< POLS
std::string Tags(const std::vector<std::string> &names);                ///< TAGS
std::string PolygonTags(const std::vector<std::pair<int, int>> &tags);  ///< PTAG
std::string Clip(int index, const std::string &path);                   ///< CLIP
std::string Surface(const std::string &name, const std::string &parts); ///< SURF
std::string ColorPart(float r, float g, float b);                       ///< COLR
std::string ImagePart(int clip);                                        ///< BLOK with an IMAG

/// A triangle with one red surface "skin".
std::string TriangleChunks();
} // namespace lwo2
