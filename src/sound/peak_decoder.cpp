#include "sound/peak_decoder.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string_view>
#include <utility>

#include "sound/gst_tools.h"

namespace sound {
namespace {

// Each time all that has come is copied: a piece of 90 minutes is 1 MB.
constexpr std::chrono::milliseconds kShowEvery{250};
constexpr std::chrono::milliseconds kLookEvery{20};

// Pictures and videos are left alone. The channels are not mixed: two of them in opposite phase
// would cancel each other out.
constexpr const char* kPipeline =
    "filesrc name=source ! decodebin expose-all-streams=false caps=audio/x-raw ! audioconvert ! "
    "audio/x-raw,format=S16LE,layout=interleaved ! "
    "fakesink name=sink sync=false qos=false enable-last-sample=false signal-handoffs=true";

Owned<GstElement> Find(const Owned<GstElement>& bin, const char* name)
{
    return Owned<GstElement>(gst_bin_get_by_name(reinterpret_cast<GstBin*>(bin.get()), name));
}

/// ns in the music, as a player counts its position.
std::optional<std::int64_t> TimeOf(GstBuffer* buffer, GstPad* pad)
{
    const Owned<GstEvent> event(gst_pad_get_sticky_event(pad, GST_EVENT_SEGMENT, 0));
    if (!event || !GST_BUFFER_PTS_IS_VALID(buffer)) {
        return std::nullopt;
    }
    const GstSegment* segment = nullptr;
    gst_event_parse_segment(event.get(), &segment);
    guint64 time = 0;
    const int sign =
        gst_segment_to_stream_time_full(segment, GST_FORMAT_TIME, GST_BUFFER_PTS(buffer), &time);
    if (sign == 0 || time > G_MAXINT64) {
        return std::nullopt;
    }
    return sign * static_cast<std::int64_t>(time);
}

OpenResult ResultOf(GstMessage* message)
{
    GError* raw = nullptr;
    gst_message_parse_error(message, &raw, nullptr);
    const Owned<GError> error(raw);
    return LacksDecoder(raw) ? OpenResult::NoDecoder : OpenResult::NotMusic;
}

}  // namespace

/// Receives the samples on a thread of GStreamer.
class PeakDecoder::Listener {
 public:
    explicit Listener(std::shared_ptr<PeakBoard> board) : board_(std::move(board)) {}

    void Receive(GstBuffer* buffer, GstPad* pad);
    [[nodiscard]] bool Full();
    std::shared_ptr<const Peaks> Show(bool whole);

 private:
    using Clock = std::chrono::steady_clock;

    void NoteFormat(GstPad* pad);

    const std::shared_ptr<PeakBoard> board_;
    std::mutex mutex_;
    PeakBinner binner_;
    Owned<GstCaps> format_;             // of the samples that came last
    std::optional<std::int32_t> told_;  // ms that the file says it is long, 0 when it does not
    Clock::time_point shown_;
};

void PeakDecoder::Listener::Receive(GstBuffer* buffer, GstPad* pad)
{
    board_->Touch();
    if (board_->Cancelled()) {
        return;
    }
    if (!told_) {
        // As the player does it: at the first sample, before anything is guessed from what has
        // come.
        gint64 length = 0;
        const bool known = gst_pad_peer_query_duration(pad, GST_FORMAT_TIME, &length) != FALSE;
        const std::scoped_lock lock(mutex_);
        told_ = known ? Milliseconds(length) : 0;
    }
    GstMapInfo map;
    if (gst_buffer_map(buffer, &map, GST_MAP_READ) == FALSE) {
        return;
    }
    {
        const std::scoped_lock lock(mutex_);
        NoteFormat(pad);
        binner_.Add({reinterpret_cast<const char*>(map.data), map.size}, TimeOf(buffer, pad));
    }
    gst_buffer_unmap(buffer, &map);
    if (Clock::now() - shown_ >= kShowEvery) {
        Show(false);
        shown_ = Clock::now();
    }
}

void PeakDecoder::Listener::NoteFormat(GstPad* pad)
{
    Owned<GstCaps> format(gst_pad_get_current_caps(pad));
    if (!format || format == format_) {
        return;
    }
    const GstStructure* fields = gst_caps_get_structure(format.get(), 0);
    int rate = 0;
    int channels = 0;
    gst_structure_get_int(fields, "rate", &rate);
    gst_structure_get_int(fields, "channels", &channels);
    binner_.SetFormat(rate, channels);
    format_ = std::move(format);
}

bool PeakDecoder::Listener::Full()
{
    const std::scoped_lock lock(mutex_);
    return binner_.Full();
}

std::shared_ptr<const Peaks> PeakDecoder::Listener::Show(bool whole)
{
    const auto peaks = std::make_shared<Peaks>();
    {
        const std::scoped_lock lock(mutex_);
        if (binner_.Bins().empty()) {
            return nullptr;
        }
        peaks->bins = binner_.Bins();
        peaks->length = told_.value_or(0);
        if (whole) {
            peaks->length = std::max(peaks->length, binner_.Length());
        }
        peaks->complete = whole;
    }
    board_->Show(peaks);
    return peaks;
}

struct PeakDecoder::Parts {
    explicit Parts(std::shared_ptr<PeakBoard> board) : listener(std::move(board)) {}

    Listener listener;
    Owned<GstElement> pipeline;
    Owned<GstBus> bus;
};

PeakDecoder::PeakDecoder(const std::filesystem::path& file, std::shared_ptr<PeakBoard> board)
    : board_(board), parts_(std::make_unique<Parts>(std::move(board)))
{
    parts_->pipeline.reset(gst_parse_launch(kPipeline, nullptr));
    if (!parts_->pipeline) {
        return;
    }
    parts_->bus.reset(gst_element_get_bus(parts_->pipeline.get()));
    g_object_set(Find(parts_->pipeline, "source").get(), "location", file.c_str(), nullptr);
    using Handoff = void (*)(GstElement*, GstBuffer*, GstPad*, gpointer);
    const Handoff onHandoff = [](GstElement*, GstBuffer* buffer, GstPad* pad, gpointer listener) {
        static_cast<Listener*>(listener)->Receive(buffer, pad);
    };
    g_signal_connect_data(Find(parts_->pipeline, "sink").get(), "handoff",
                          reinterpret_cast<GCallback>(onHandoff), &parts_->listener, nullptr,
                          static_cast<GConnectFlags>(0));
}

PeakDecoder::~PeakDecoder()
{
    if (parts_->pipeline) {
        gst_element_set_state(parts_->pipeline.get(), GST_STATE_NULL);
    }
}

OpenResult PeakDecoder::Run()
{
    if (!parts_->pipeline) {
        return OpenResult::NoDecoder;
    }
    gst_element_set_state(parts_->pipeline.get(), GST_STATE_PLAYING);
    while (!board_->Cancelled() && !parts_->listener.Full()) {
        const Owned<GstMessage> message(gst_bus_timed_pop_filtered(
            parts_->bus.get(), Nanoseconds(kLookEvery), Kinds(GST_MESSAGE_EOS, GST_MESSAGE_ERROR)));
        if (board_->Stalled()) {
            return OpenResult::TimedOut;
        }
        if (message) {
            const bool ended = GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS;
            return ended ? OpenResult::Opened : ResultOf(message.get());
        }
    }
    return OpenResult::Opened;
}

std::shared_ptr<const Peaks> PeakDecoder::Take(bool whole)
{
    return parts_->listener.Show(whole);
}

}  // namespace sound
