#include "tools/record/Sheet.h"

#include "tools/record/Failure.h"
#include "tools/record/Interrupt.h"
#include "tools/record/Label.h"
#include "tools/record/OutputFile.h"
#include "tools/record/Stage.h"

#include <cmath>
#include <cstdio>

namespace record
{
namespace
{
using tColor = std::array<uint8_t, 3>;

// Pixels of the sheet.
const int tileWidth = 320;
const int gap = 12;
const int margin = 20;
const int labelHeight = 26;
const int headingHeight = 48;

const float labelLetters = 15.0f;
const float headingLetters = 24.0f;
const tColor background = {16, 20, 24};
const tColor labelColor = {190, 198, 204};
const tColor headingColor = {245, 233, 208};

/// Where things stand on the sheet.
struct cLayout
{
    int mColumns, mCount, mTileHeight;

    cLayout(const cOptions &options, size_t count)
        : mColumns(std::min(options.mColumns, int(count))), mCount(int(count)),
          mTileHeight(std::max(1, int(std::lround(double(tileWidth) * options.mSize.mHeight /
                                                  options.mSize.mWidth))))
    {}

    int Rows() const { return (mCount + mColumns - 1) / mColumns; }
    int Width() const { return 2 * margin + mColumns * (tileWidth + gap) - gap; }
    int Height() const
    {
        return 2 * margin + headingHeight + Rows() * (mTileHeight + labelHeight + gap) - gap;
    }
    int Left(int index) const { return margin + index % mColumns * (tileWidth + gap); }
    int Top(int index) const
    {
        return margin + headingHeight + index / mColumns * (mTileHeight + labelHeight + gap);
    }
};

void Fill(cPicture &picture, const tColor &color)
{
    for (size_t i = 0; i < picture.mBytes.size(); i += 4) {
        std::copy(color.begin(), color.end(), &picture.mBytes[i]);
        picture.mBytes[i + 3] = 255;
    }
}

void Paste(const cPicture &small, cPicture &sheet, int left, int top)
{
    for (int y = 0; y < small.mHeight; y++)
        std::copy(small.Row(y), small.Row(y) + small.RowBytes(), sheet.Row(top + y) + 4 * left);
}

std::string ToMinutes(int64_t microRow, const vyr::cTempo &tempo)
{
    const double microRowsPerTenth = tempo.Rows(0.1) * double(kMicroRows);
    // a row that is printed for a tenth of a second stands for it
    const auto tenths = int64_t(double(microRow + 1) / microRowsPerTenth);
    char text[32];
    std::snprintf(text, sizeof text, "%d:%02d.%d", int(tenths / 600), int(tenths / 10 % 60),
                  int(tenths % 10));
    return text;
}

// "24", "24.5": as few digits as say it.
std::string ToDecimal(int64_t micro)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", double(micro) / double(kMicroRows));
    std::string decimal = text;
    decimal.erase(decimal.find_last_not_of('0') + 1);
    if (decimal.back() == '.')
        decimal.pop_back();
    return decimal;
}

std::string Heading(const cOptions &options, const vyr::cTempo &tempo, size_t count)
{
    return std::to_string(count) + " pictures, one every " +
           ToDecimal(std::llround(options.mEveryBars * double(kMicroRows))) + " bars, bar " +
           ToDecimal(options.mFrom / tempo.RowsPerBar()) + " to " +
           ToDecimal(options.mTo / tempo.RowsPerBar());
}
} // namespace

std::vector<int64_t> SheetRows(const cOptions &options, const vyr::cTempo &tempo)
{
    const int64_t step = ToMicroRow(options.mEveryBars * tempo.RowsPerBar());
    std::vector<int64_t> rows;
    for (int64_t row = options.mFrom; row < options.mTo; row += step)
        rows.push_back(row);
    return rows;
}

std::string SheetLabel(int64_t microRow, const vyr::cTempo &tempo)
{
    return "bar " + ToDecimal(microRow / tempo.RowsPerBar()) + "   row " + ToDecimal(microRow) +
           "   " + ToMinutes(microRow, tempo);
}

eOutcome RecordSheet(const cOptions &options, vyr::cShowFolder &show)
{
    const cFrameGrid grid(options.mRate, show.GetDescription().mRowsPerSecond);
    const vyr::cTempo tempo = vyr::TempoOf(show.GetDescription());
    const std::vector<int64_t> rows = SheetRows(options, tempo);
    const cLayout layout(options, rows.size());
    const cLabelFont font;
    cOutputFile output(options.mOutput);
    cStage stage(show, options.mSize);
    stage.LoadShow();

    cPicture sheet(layout.Width(), layout.Height());
    Fill(sheet, background);
    font.Write(sheet, Heading(options, tempo, rows.size()), margin, margin + 24, headingLetters,
               headingColor);
    for (int i = 0; i < int(rows.size()); i++) {
        if (IsInterrupted())
            throw cInterruption("interrupted: nothing was written");
        const int64_t row = rows[size_t(i)];
        const int left = layout.Left(i), top = layout.Top(i);
        Paste(Shrink(stage.DrawStill(grid, row), tileWidth, layout.mTileHeight), sheet, left, top);
        font.Write(sheet, SheetLabel(row, tempo), left, top + layout.mTileHeight + 19, labelLetters,
                   labelColor);
    }
    if (!WritePng(output.GetTemporaryPath(), sheet))
        throw cFailure(options.mOutput + ": can't be written");
    output.Commit();
    return DONE;
}
} // namespace record
