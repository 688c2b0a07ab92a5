#include "tools/record/FrameWriter.h"

#include <utility>

namespace record
{
cFrameWriter::cFrameWriter(std::vector<cFrameSink *> sinks, int width, int height)
    : mSinks(std::move(sinks))
{
    for (cDrawnFrame &slot : mSlots)
        slot.mPicture = cPicture(width, height);
    mThread = std::thread([this] { Run(); });
}

cFrameWriter::~cFrameWriter()
{
    {
        const std::lock_guard lock(mMutex);
        mIsEnding = true;
        mHasFailed = true;
    }
    mChanged.notify_all();
    if (mThread.joinable())
        mThread.join();
}

cDrawnFrame *cFrameWriter::Claim()
{
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return mHasFailed || mSubmitted - mTaken < kSlots; });
    return mHasFailed ? nullptr : &mSlots[mSubmitted % kSlots];
}

void cFrameWriter::Submit()
{
    {
        const std::lock_guard lock(mMutex);
        mSubmitted++;
    }
    mChanged.notify_all();
}

void cFrameWriter::Finish()
{
    {
        const std::lock_guard lock(mMutex);
        mIsEnding = true;
    }
    mChanged.notify_all();
    mThread.join();
    if (mFailure)
        std::rethrow_exception(mFailure);
}

bool cFrameWriter::WaitForFrame()
{
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return mIsEnding || mTaken < mSubmitted; });
    return !mHasFailed && mTaken < mSubmitted;
}

void cFrameWriter::Deliver(const cDrawnFrame &frame)
{
    std::exception_ptr failure;
    try {
        for (cFrameSink *sink : mSinks)
            sink->Take(frame);
    } catch (...) {
        failure = std::current_exception();
    }
    {
        const std::lock_guard lock(mMutex);
        mFailure = failure;
        mHasFailed = mHasFailed || failure;
        mTaken++;
    }
    mChanged.notify_all();
}

void cFrameWriter::Run()
{
    while (WaitForFrame())
        Deliver(mSlots[mTaken % kSlots]); // only this thread changes mTaken
}
} // namespace record
