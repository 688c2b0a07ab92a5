#include "tests/support/LWO2Builder.h"

#include <bit>

namespace lwo2
{
std::string U2(int value) { return {char(value >> 8), char(value)}; }

std::string U4(uint32_t value)
{
    return {char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
}

std::string F4(float value) { return U4(std::bit_cast<uint32_t>(value)); }

std::string S0(const std::string &text)
{
    return text + std::string(text.size() % 2 == 0 ? 2 : 1, '\0');
}

static std::string Padded(const std::string &body)
{
    return body.size() % 2 == 0 ? body : body + '\0';
}

std::string Chunk(const std::string &id, const std::string &body)
{
    return id + U4(uint32_t(body.size())) + Padded(body);
}

std::string SubChunk(const std::string &id, const std::string &body)
{
    return id + U2(int(body.size())) + Padded(body);
}

std::string Form(const std::string &chunks)
{
    return "FORM" + U4(uint32_t(chunks.size()) + 4) + "LWO2" + chunks;
}

std::string Points(const std::vector<std::pair<float, float>> &points)
{
    std::string body;
    for (const auto &[x, y] : points)
        body += F4(x) + F4(y) + F4(0.0f);
    return Chunk("PNTS", body);
}

std::string Faces(const std::vector<std::vector<int>> &polygons)
{
    std::string body = "FACE";
    for (const auto &polygon : polygons) {
        body += U2(int(polygon.size()));
        for (int index : polygon)
            body += U2(index);
    }
    return Chunk("POLS", body);
}

std::string Tags(const std::vector<std::string> &names)
{
    std::string body;
    for (const std::string &name : names)
        body += S0(name);
    return Chunk("TAGS", body);
}

std::string PolygonTags(const std::vector<std::pair<int, int>> &tags)
{
    std::string body = "SURF";
    for (const auto &[polygon, tag] : tags)
        body += U2(polygon) + U2(tag);
    return Chunk("PTAG", body);
}

std::string Clip(int index, const std::string &path)
{
    return Chunk("CLIP", U4(uint32_t(index)) + SubChunk("STIL", S0(path)));
}

std::string Surface(const std::string &name, const std::string &parts)
{
    return Chunk("SURF", S0(name) + S0("") + parts);
}

std::string ColorPart(float r, float g, float b)
{
    return SubChunk("COLR", F4(r) + F4(g) + F4(b) + U2(0));
}

std::string ImagePart(int clip)
{
    return SubChunk("BLOK", SubChunk("IMAP", S0("\x80")) + SubChunk("IMAG", U2(clip)));
}

std::string TriangleChunks()
{
    return Tags({"skin"}) + Points({{0, 0}, {1, 0}, {0, 1}}) + Faces({{0, 1, 2}}) +
           PolygonTags({{0, 0}}) + Surface("skin", ColorPart(1, 0, 0));
}
} // namespace lwo2
