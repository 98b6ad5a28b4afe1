#include "sound/music_length.h"

#include <chrono>
#include <utility>

#include "sound/gstreamer.h"
#include "sound/pipeline.h"

namespace sound {

MusicLength MeasureMusic(const std::filesystem::path& file)
{
    if (!GstreamerProblem().empty()) {
        return {0, GstreamerProblem()};
    }
    if (std::string problem = FileProblem(file); !problem.empty()) {
        return {0, std::move(problem)};
    }
    Pipeline pipeline(file, Sink::Silent);
    OpenResult result = pipeline.Open(std::chrono::seconds(10));
    const std::int32_t length = result == OpenResult::Opened ? pipeline.Length() : 0;
    if (result == OpenResult::Opened && length == 0) {
        result = OpenResult::NoSound;
    }
    return {length, OpenProblem(result, file)};
}

}  // namespace sound
