#pragma once

#include <filesystem>
#include <memory>

#include "sound/peak_bins.h"
#include "sound/peak_board.h"
#include "sound/pipeline.h"

namespace sound {

/// Decodes one music file as fast as it goes, with the decoders that the player uses, and shows its
/// peaks as they come. What hangs in GStreamer makes the destructor hang too.
class PeakDecoder {
 public:
    /// GStreamer runs (`GstreamerProblem` is empty).
    PeakDecoder(const std::filesystem::path& file, std::shared_ptr<PeakBoard> board);
    ~PeakDecoder();
    PeakDecoder(const PeakDecoder&) = delete;
    PeakDecoder& operator=(const PeakDecoder&) = delete;

    /// Returns at the end of the music, or when the board says that it is no use to go on.
    OpenResult Run();

    /// All that has come, shown on the board too; `whole`: it is the music to its end.
    std::shared_ptr<const Peaks> Take(bool whole);

 private:
    class Listener;
    struct Parts;

    const std::shared_ptr<PeakBoard> board_;
    std::unique_ptr<Parts> parts_;
};

}  // namespace sound
