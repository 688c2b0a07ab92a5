#include "tools/record/Recording.h"

#include "tools/record/Failure.h"
#include "tools/record/Fingerprint.h"
#include "tools/record/FlashReport.h"
#include "tools/record/FrameCosts.h"
#include "tools/record/Interrupt.h"
#include "tools/record/Manifest.h"
#include "tools/record/Progress.h"
#include "tools/record/Readback.h"
#include "tools/record/Stage.h"
#include "tools/record/Video.h"
#include "tools/support/Faults.h"

#include <cstdio>
#include <deque>
#include <memory>
#include <optional>

namespace record
{
namespace
{
// The driver says its name when a stage is open.
std::string DescribeRecording(const cOptions &options, const cFrameRange &range,
                              const vyr::cShowDescription &show)
{
    return tools::OnOneLine(show.mTitle) + " (" + FingerprintShow(show) + "), " +
           std::to_string(options.mSize.mWidth) + "x" + std::to_string(options.mSize.mHeight) +
           ", " + options.mRate.ToText() + " frames a second, frames " +
           std::to_string(range.mFirst) + "-" + std::to_string(range.mEnd - 1) + ", drawn by " +
           cStage::GetRendererName();
}

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
        const std::string remark = DescribeRecording(options, range, show.GetDescription());
        if (!options.mManifest.empty())
            mManifest.emplace(options.mManifest, remark);
        if (!options.mCosts.empty())
            mCosts.emplace(options.mCosts, remark);
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

    cFrameCosts *GetCosts() { return mCosts ? &*mCosts : nullptr; } ///< null: not asked for

    /// Completes what was asked for, with the frames from the piece's first to `end`.
    void Finish(int64_t end, const vyr::cShowFolder &show)
    {
        const bool isWhole = end == mPiece.mEnd;
        if (mManifest)
            mManifest->Finish(isWhole ? "" : "interrupted");
        if (mCosts)
            mCosts->Finish();
        if (mFlashMeter)
            WriteFlashReport(*mFlashReport, *mFlashMeter, mGrid, {mPiece.mFirst, end}, show);
        if (mVideo)
            mVideo->Finish(end);
    }

    bool HasFlashes() const { return mFlashMeter && !mFlashMeter->GetFlashes().empty(); }

private:
    cFrameGrid mGrid;
    cFrameRange mPiece;
    std::optional<cTextFile> mFlashReport;
    std::optional<cFlashMeter> mFlashMeter;
    std::optional<cManifest> mManifest;
    std::optional<cFrameCosts> mCosts;
    std::optional<cCaptions> mCaptions;
    std::optional<cVideo> mVideo;
};

/// The path of a frame from the stage to the writer.
class cPipeline
{
public:
    /// `costs` may be null.
    cPipeline(cStage &stage, const cFrameGrid &grid, cFrameWriter &writer, cFrameCosts *costs)
        : mStage(stage), mGrid(grid), mWriter(writer), mCosts(costs),
          mReadback(stage.GetSize().mWidth, stage.GetSize().mHeight)
    {}

    /// False when the writer takes no more.
    bool Draw(int64_t frame)
    {
        if (mCosts)
            mCosts->Begin();
        mStage.Draw(mGrid.Row(frame), mGrid.Seconds(frame));
        mReadback.Begin();
        if (mCosts)
            mCosts->End(frame, mGrid.Row(frame));
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
    cFrameCosts *mCosts;
    cReadback mReadback;
    std::deque<int64_t> mUnderWay;
};

// Draws the frames of `piece` until all are drawn, somebody interrupts, or the writer gives up.
// Returns the end of those drawn.
int64_t DrawFrames(cStage &stage, const cFrameGrid &grid, const cFrameRange &piece,
                   cFrameWriter &writer, cFrameCosts *costs)
{
    cPipeline pipeline(stage, grid, writer, costs);
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
    const std::string &file = !options.mOutput.empty()        ? options.mOutput
                              : !options.mManifest.empty()    ? options.mManifest
                              : !options.mFlashReport.empty() ? options.mFlashReport
                                                              : options.mCosts;
    std::fprintf(stderr, "vyr-record: interrupted: %s holds the first %lld of %lld frames\n",
                 file.c_str(), static_cast<long long>(end - piece.mFirst),
                 static_cast<long long>(piece.Count()));
}
} // namespace

eOutcome Record(const cOptions &options, vyr::cShowFolder &show)
{
    const cFrameGrid grid(options.mRate, show.GetDescription().mRowsPerSecond);
    const cFrameRange range = grid.Between(options.mFrom, options.mTo);
    const cFrameRange piece = FindPiece(options, range);
    cStage stage(show, options.mSize);
    stage.LoadShow();
    CheckRows(stage, grid, piece);
    cResults results(options, grid, range, piece, show);
    cFrameWriter writer(results.GetSinks(), options.mSize.mWidth, options.mSize.mHeight);

    const int64_t end = DrawFrames(stage, grid, piece, writer, results.GetCosts());
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

eOutcome Describe(const cOptions &options, vyr::cShowFolder &show)
{
    const vyr::cShowDescription &description = show.GetDescription();
    const cFrameGrid grid(options.mRate, description.mRowsPerSecond);
    const cFrameRange range = grid.Between(options.mFrom, options.mTo);
    const cStage stage(show, options.mSize);
    std::puts(DescribeRecording(options, range, description).c_str());
    return DONE;
}

eOutcome Join(const cOptions &options, vyr::cShowFolder &show)
{
    const vyr::cShowDescription &description = show.GetDescription();
    const cFrameGrid grid(options.mRate, description.mRowsPerSecond);
    const cFrameRange range = grid.Between(options.mFrom, options.mTo);
    show.LoadTracks();
    std::optional<cCaptions> captions;
    if (!options.mLyrics.empty())
        captions.emplace(options.mLyrics, show, grid, range);
    const cEncoding encoding{options.mSize, options.mRate, range, range, description.mMusic};
    JoinVideo(options.mOutput, encoding, captions ? &*captions : nullptr, options.mPictures);
    return DONE;
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
