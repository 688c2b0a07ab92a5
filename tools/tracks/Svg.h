#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tracks
{
/// Horizontal anchor of a text.
enum class eAnchor
{
    Start,
    Middle,
    End
};

/// A point of a drawing: pixels, origin top left, y down.
struct cPoint
{
    double x = 0.0, y = 0.0;
};

/// Writes an SVG drawing, shape after shape. Colours are CSS colours.
class cSvg
{
public:
    cSvg(double width, double height, const char *background);

    void Rect(cPoint corner, double width, double height, const char *fill, double opacity = 1.0);
    void Line(cPoint from, cPoint to, const char *stroke, double width = 1.0);
    void Polyline(const std::vector<cPoint> &points, const char *stroke, double width = 1.0);
    void Polygon(const std::vector<cPoint> &points, const char *fill, double opacity = 1.0);
    /// `bold` and `degrees` (clockwise, about `at`) change how the text stands.
    void Text(cPoint at, std::string_view text, double size, const char *fill,
              eAnchor anchor = eAnchor::Start, bool bold = false, double degrees = 0.0);
    /// The finished drawing.
    std::string Finish();

private:
    std::string Points(const std::vector<cPoint> &points) const;

    std::string mText;
};
} // namespace tracks
