#include "tools/tracks/Svg.h"

#include "tools/support/Faults.h"
#include "tools/tracks/Markup.h"

#include <algorithm>
#include <cstdio>

namespace tracks
{
namespace
{
// A hundredth of a pixel is finer than any screen or printer shows.
std::string Number(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    std::string number(text);
    while (number.back() == '0')
        number.pop_back();
    if (number.back() == '.')
        number.pop_back();
    return number == "-0" ? "0" : number;
}

std::string Attribute(const char *name, const std::string &value)
{
    std::string text(" ");
    return text.append(name).append("=\"").append(value).append("\"");
}

// How many bytes that continue a character must follow `lead`; -1 when it can't be a first byte.
int ContinuationBytes(unsigned char lead)
{
    if (lead < 0x80)
        return 0;
    if (lead >= 0xC2 && lead < 0xE0)
        return 1;
    if (lead >= 0xE1 && lead < 0xF0 && lead != 0xED) // 0xE0 and 0xED have forbidden successors:
        return 2;                                    // no name of a track needs them
    return lead >= 0xF1 && lead < 0xF4 ? 3 : -1;
}

bool IsUtf8(std::string_view text)
{
    for (size_t i = 0; i < text.size(); i++)
        for (int left = ContinuationBytes(static_cast<unsigned char>(text[i])); left != 0; left--)
            if (left < 0 || ++i >= text.size() || (text[i] & 0xC0) != 0x80)
                return false;
    return true;
}

// A byte that is no UTF-8 would make the whole page unreadable.
std::string Escape(std::string_view text)
{
    const bool isUtf8 = IsUtf8(text);
    std::string line = tools::OnOneLine(text);
    if (!isUtf8)
        std::replace_if(
            line.begin(), line.end(), [](unsigned char c) { return c >= 0x80; }, '?');
    return EscapeMarkup(line);
}
} // namespace

cSvg::cSvg(double width, double height, const char *background)
    : mText(
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
          Attribute("width", Number(width)) + Attribute("height", Number(height)) +
          Attribute("viewBox", std::string("0 0 ").append(Number(width)) + " " + Number(height)) +
          Attribute("font-family", "DejaVu Sans, sans-serif") + ">\n")
{
    Rect({0, 0}, width, height, background);
}

void cSvg::Rect(cPoint corner, double width, double height, const char *fill, double opacity)
{
    mText += "<rect" + Attribute("x", Number(corner.x)) + Attribute("y", Number(corner.y)) +
             Attribute("width", Number(width)) + Attribute("height", Number(height)) +
             Attribute("fill", fill);
    if (opacity < 1.0)
        mText += Attribute("fill-opacity", Number(opacity));
    mText += "/>\n";
}

void cSvg::Line(cPoint from, cPoint to, const char *stroke, double width)
{
    mText += "<line" + Attribute("x1", Number(from.x)) + Attribute("y1", Number(from.y)) +
             Attribute("x2", Number(to.x)) + Attribute("y2", Number(to.y)) +
             Attribute("stroke", stroke) + Attribute("stroke-width", Number(width)) + "/>\n";
}

void cSvg::Polyline(const std::vector<cPoint> &points, const char *stroke, double width)
{
    mText += "<polyline fill=\"none\" stroke-linejoin=\"round\"" + Attribute("stroke", stroke) +
             Attribute("stroke-width", Number(width)) + Points(points) + "/>\n";
}

void cSvg::Polygon(const std::vector<cPoint> &points, const char *fill, double opacity)
{
    mText += "<polygon" + Attribute("fill", fill);
    if (opacity < 1.0)
        mText += Attribute("fill-opacity", Number(opacity));
    mText += Points(points) + "/>\n";
}

void cSvg::Text(cPoint at, std::string_view text, double size, const char *fill, eAnchor anchor,
                bool bold, double degrees)
{
    static const char *const anchors[] = {"start", "middle", "end"};
    mText += "<text" + Attribute("x", Number(at.x)) + Attribute("y", Number(at.y)) +
             Attribute("font-size", Number(size)) + Attribute("fill", fill) +
             Attribute("text-anchor", anchors[static_cast<int>(anchor)]);
    if (bold)
        mText += " font-weight=\"bold\"";
    if (degrees != 0.0)
        mText += Attribute("transform", std::string("rotate(").append(Number(degrees)) + " " +
                                            Number(at.x) + " " + Number(at.y) + ")");
    mText += ">";
    mText += Escape(text) + "</text>\n";
}

std::string cSvg::Finish() { return mText + "</svg>\n"; }

std::string cSvg::Points(const std::vector<cPoint> &points) const
{
    std::string text;
    for (const cPoint &point : points) {
        if (!text.empty())
            text += ' ';
        text += Number(point.x) + "," + Number(point.y);
    }
    return Attribute("points", text);
}
} // namespace tracks
