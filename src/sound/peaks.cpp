#include "sound/peaks.h"

#include <optional>
#include <system_error>
#include <utility>

#include "sound/gstreamer.h"
#include "sound/peak_cache.h"
#include "sound/peak_decoder.h"
#include "sound/pipeline.h"

namespace sound {
namespace {

constexpr std::chrono::milliseconds kFarewell{100};

std::string ProblemOf(OpenResult result, const Peaks* peaks, const std::filesystem::path& file)
{
    if (peaks == nullptr) {
        return OpenProblem(result == OpenResult::Opened ? OpenResult::NoSound : result, file);
    }
    return result == OpenResult::Opened
               ? ""
               : '"' + file.filename().string() + "\" cannot be read to its end.";
}

/// The whole work of the thread, which owns all that it uses, for it may hang anywhere in here.
void ReadPeaks(const std::filesystem::path& file, const std::filesystem::path& cacheFolder,
               const std::shared_ptr<PeakBoard>& board)
{
    if (std::string problem = FileProblem(file); !problem.empty()) {
        board->Finish(std::move(problem));
        return;
    }
    const std::optional<MusicStamp> stamp = cacheFolder.empty() ? std::nullopt : StampOf(file);
    if (stamp) {
        if (std::optional<Peaks> kept = KeptPeaks(cacheFolder, *stamp)) {
            board->Show(std::make_shared<const Peaks>(std::move(*kept)));
            board->Finish("");
            return;
        }
    }
    if (!GstreamerProblem().empty()) {
        board->Finish(GstreamerProblem());
        return;
    }
    board->Touch();
    PeakDecoder decoder(file, board);
    const OpenResult result = decoder.Run();
    if (board->Cancelled()) {
        return;
    }
    const std::shared_ptr<const Peaks> peaks = decoder.Take(result == OpenResult::Opened);
    if (peaks && peaks->complete && stamp && StampOf(file) == stamp) {
        KeepPeaks(cacheFolder, *stamp, *peaks);
    }
    board->Finish(ProblemOf(result, peaks.get(), file));
}

}  // namespace

PeakReader::PeakReader(std::filesystem::path cacheFolder, std::chrono::milliseconds patience)
    : cacheFolder_(std::move(cacheFolder)), patience_(patience)
{
}

PeakReader::~PeakReader()
{
    Leave();
}

void PeakReader::Leave()
{
    if (!board_) {
        return;
    }
    board_->Cancel();
    if (thread_.joinable()) {
        if (threadEnd_.wait_for(kFarewell) == std::future_status::ready) {
            thread_.join();
        } else {
            thread_.detach();
        }
    }
    board_.reset();
}

void PeakReader::Start(const std::filesystem::path& file)
{
    Leave();
    if (file.empty()) {
        return;
    }
    file_ = file;
    board_ = std::make_shared<PeakBoard>(patience_);
    std::packaged_task<void()> task(
        [file, folder = cacheFolder_, board = board_] { ReadPeaks(file, folder, board); });
    threadEnd_ = task.get_future();
    try {
        thread_ = std::thread(std::move(task));
    } catch (const std::system_error&) {
        board_->Finish("The computer is too busy to read " + file.filename().string() + ".");
    }
}

std::shared_ptr<const Peaks> PeakReader::Latest() const
{
    return board_ ? board_->Shown() : nullptr;
}

bool PeakReader::Busy() const
{
    return board_ && !board_->Finished() && !board_->Stalled();
}

std::string PeakReader::Problem() const
{
    if (!board_) {
        return {};
    }
    if (!board_->Finished() && board_->Stalled()) {
        return ProblemOf(OpenResult::TimedOut, board_->Shown().get(), file_);
    }
    return board_->Problem();
}

}  // namespace sound
