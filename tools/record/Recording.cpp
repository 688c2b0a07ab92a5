#include "tools/record/Recording.h"

#include "tools/record/Failure.h"
#include "tools/record/FlashReport.h"
#include "tools/record/Interrupt.h"
#include "tools/record/Manifest.h"
#include "tools/record/Progress.h"
#include "tools/record/Readback.h"
#include "tools/record/Stage.h"
#include "tools/record/Video.h"

#include <cstdio>
#include <deque>
#include <memory>
#include <optional>

namespace record
{
namespace
{
/// Everything that becomes of the frames.
class cResults
{
public:
    cResults(const cOptions &options, const cFrameGrid &grid, const cFrameRange &range,
             const cFrameRange &piece, const vyr::cShowFolder &show)
        : mGrid(grid), mPiece(piece)
    {
        if (!options.mFlashReport.empty())
            mFlashReport.emplace(options.mFlashReport);
        if (mFlashReport)
            mFlashMeter.emplace(options.mSize.mWidth, options.mSize.mHeight, options.mRate);
        if (!options.mManifest.empty())
            mManifest.emplace(options.mManifest, Describe(options));
        if (options.mOutput.empty())
            return;
        if (!options.mLyrics.empty())
            mCaptions.emplace(options.mLyrics, show, grid, piece);
        const cEncoding encoding{options.mSize, options.mRate, range, piece,
                                 show.GetDescription().mMusic};
        mVideo.emplace(options.mOutput, encoding, mCaptions ? &*mCaptions : nullptr);
    }

    std::vector<cFrameSink *> GetSinks()
    {
        std::vector<cFrameSink *> sinks;
        if (mVideo)
            sinks.push_back(&*mVideo);
        if (mManifest)
            sinks.push_back(&*mManifest);
        if (mFlashMeter)
            sinks.push_back(&*mFlashMeter);
        return sinks;
    }

    /// Completes what was asked for, with the frames from the piece's first to `end`.
    void Finish(int64_t end, const vyr::cShowFolder &show)
    {
        const bool isWhole = end == mPiece.mEnd;
        if (mManifest)
            mManifest->Finish(isWhole ? "" : "interrupted");
        if (mFlashMeter)
            WriteFlashReport(*mFlashReport, *mFlashMeter, mGrid, {mPiece.mFirst, end}, show);
        if (mVideo)
            mVideo->Finish(end);
    }

    bool HasFlashes() const { return mFlashMeter && !mFlashMeter->GetFlashes().empty(); }

private:
    static std::string Describe(const cOptions &options)
    {
        return std::to_string(options.mSize.mWidth) + "x" + std::to_string(options.mSize.mHeight) +
               ", " + options.mRate.ToText() + " frames a second, drawn by " +
               cStage::GetRendererName();
    }

    cFrameGrid mGrid;
    cFrameRange mPiece;
    std::optional<cTextFile> mFlashReport;
    std::optional<cFlashMeter> mFlashMeter;
    std::optional<cManifest> mManifest;
    std::optional<cCaptions> mCaptions;
    std::optional<cVideo> mVideo;
};

/// The path of a frame from the stage to the writer.
class cPipeline
{
public:
    cPipeline(cStage &stage, const cFrameGrid &grid, cFrameWriter &writer)
        : mStage(stage), mGrid(grid), mWriter(writer),
          mReadback(stage.GetSize().mWidth, stage.GetSize().mHeight)
    {}

    /// False when the writer takes no more.
    bool Draw(int64_t frame)
    {
        mStage.Draw(mGrid.Row(frame), mGrid.Seconds(frame));
        mReadback.Begin();
        mUnderWay.push_back(frame);
        return !mReadback.IsFull() || Deliver();
    }

    bool Flush()
    {
        while (!mReadback.IsEmpty())
            if (!Deliver())
                return false;
        return true;
    }

private:
    bool Deliver()
    {
        cDrawnFrame *slot = mWriter.Claim();
        if (!slot)
            return false;
        slot->mFrame = mUnderWay.front();
        mUnderWay.pop_front();
        slot->mRow = mGrid.Row(slot->mFrame);
        slot->mSeconds = mGrid.Seconds(slot->mFrame);
        if (!mReadback.Finish(slot->mPicture))
            throw cFailure("the driver lost a frame");
        mWriter.Submit();
        return true;
    }

    cStage &mStage;
    const cFrameGrid &mGrid;
    cFrameWriter &mWriter;
    cReadback mReadback;
    std::deque<int64_t> mUnderWay;
};

// Draws the frames of `piece` until all are drawn, somebody interrupts, or the writer gives up.
// Returns the end of those drawn.
int64_t DrawFrames(cStage &stage, const cFrameGrid &grid, const cFrameRange &piece,
                   cFrameWriter &writer)
{
    cPipeline pipeline(stage, grid, writer);
    cProgress progress(piece);
    stage.DrawFramesBefore(grid, grid.MicroRow(piece.mFirst));
    int64_t frame = piece.mFirst;
    while (frame < piece.mEnd && !IsInterrupted() && pipeline.Draw(frame)) {
        progress.Show(frame, grid.Row(frame));
        frame++;
    }
    pipeline.Flush();
    return frame;
}

// A fault in the last row is better known before the first one is drawn.
void CheckRows(cStage &stage, const cFrameGrid &grid, const cFrameRange &piece)
{
    for (int64_t frame = piece.mFirst; frame < piece.mEnd; frame++)
        stage.CheckRow(grid.Row(frame));
}

void SayFlashes(const cOptions &options)
{
    std::fprintf(stderr, "vyr-record: %s: more than three flashes in a second\n",
                 options.mFlashReport.c_str());
}

void SayInterrupted(const cOptions &options, const cFrameRange &piece, int64_t end)
{
    const std::string &file = !options.mOutput.empty()     ? options.mOutput
                              : !options.mManifest.empty() ? options.mManifest
                                                           : options.mFlashReport;
    std::fprintf(stderr, "vyr-record: interrupted: %s holds the first %lld of %lld frames\n",
                 file.c_str(), static_cast<long long>(end - piece.mFirst),
                 static_cast<long long>(piece.Count()));
}
} // namespace

eOutcome Record(const cOptions &options, vyr::cShowFolder &show)
{
    const cFrameGrid grid(options.mRate, show.GetDescription().mRowsPerSecond);
    const cFrameRange range = grid.Between(options.mFrom, options.mTo);
    const cFrameRange piece = range.Part(options.mPart, options.mParts);
    cStage stage(show, options.mSize);
    stage.LoadShow();
    CheckRows(stage, grid, piece);
    cResults results(options, grid, range, piece, show);
    cFrameWriter writer(results.GetSinks(), options.mSize.mWidth, options.mSize.mHeight);

    const int64_t end = DrawFrames(stage, grid, piece, writer);
    writer.Finish();
    if (end == piece.mFirst)
        throw cInterruption("interrupted before the first frame: nothing was written");
    results.Finish(end, show);
    if (end < piece.mEnd) {
        SayInterrupted(options, piece, end);
        return INTERRUPTED;
    }
    if (!results.HasFlashes())
        return DONE;
    SayFlashes(options);
    return FLASHES;
}

eOutcome RecordStill(const cOptions &options, vyr::cShowFolder &show)
{
    const cFrameGrid grid(options.mRate, show.GetDescription().mRowsPerSecond);
    const int64_t microRow = *options.mStill;
    cOutputFile output(options.mOutput);
    cStage stage(show, options.mSize);
    stage.LoadShow();
    const cPicture picture = stage.DrawStill(grid, microRow);
    if (!WritePng(output.GetTemporaryPath(), picture))
        throw cFailure(options.mOutput + ": can't be written");
    output.Commit();
    return DONE;
}
} // namespace record
