#include "tools/record/Failure.h"
#include "tools/record/Interrupt.h"
#include "tools/record/Recording.h"
#include "tools/record/Sheet.h"
#include "tools/record/ShowFiles.h"
#include "tools/support/Faults.h"

#include <filesystem>
#include <iostream>

namespace
{
int Run(int argc, char **argv)
{
    const auto line = record::ReadCommandLine(argc, argv);
    if (!line)
        return record::DONE;
    record::WatchForInterrupt();
    std::filesystem::current_path(record::FindShow(line->mShow));
    vyr::cShowFolder show(".");
    const record::cOptions options = record::ReadOptions(*line, show.GetDescription());
    if (options.mIsSheet)
        return record::RecordSheet(options, show);
    if (!options.mPictures.empty())
        return record::Join(options, show);
    if (options.mIsDescription)
        return record::Describe(options, show);
    return options.mStill ? record::RecordStill(options, show) : record::Record(options, show);
}

int Fail(const std::exception &error, record::eOutcome outcome)
{
    const std::string line = tools::OnOneLine(error.what());
    if (!line.empty())
        std::cerr << "vyr-record: " << line << '\n';
    return outcome;
}
} // namespace

int main(int argc, char **argv)
{
    try {
        return Run(argc, argv);
    } catch (const record::cUsageError &error) {
        return Fail(error, record::MISUSED);
    } catch (const record::cInterruption &error) {
        return Fail(error, record::INTERRUPTED);
    } catch (const std::exception &error) {
        return Fail(error, record::FAILED);
    }
}
