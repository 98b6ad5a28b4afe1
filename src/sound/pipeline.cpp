#include "sound/pipeline.h"

#include <algorithm>
#include <fstream>
#include <string_view>
#include <system_error>

#include "sound/gst_tools.h"

namespace sound {
namespace {

constexpr int kAudioOnly = 2;  // playbin's flags: a cover picture must not open a video window
constexpr std::chrono::milliseconds kErrorTextDelay{200};
constexpr std::chrono::seconds kMeasuringLimit{10};

/// An element by its name, which `GstreamerProblem` has found.
GstElement* Make(const char* element)
{
    return gst_element_factory_make(element, nullptr);
}

GstObject* AsObject(GstElement* element)
{
    return &element->object;
}

Owned<GstElement> MakeSink(Sink sink)
{
    GstElement* element = Make(sink == Sink::Automatic ? "autoaudiosink" : "fakesink");
    if (sink == Sink::Silent) {
        g_object_set(element, "sync", TRUE, nullptr);
    }
    gst_object_ref_sink(element);
    return Owned<GstElement>(element);
}

OpenResult ResultOf(GstMessage* message, GstElement* sink)
{
    GError* raw = nullptr;
    gst_message_parse_error(message, &raw, nullptr);
    const Owned<GError> error(raw);
    if (LacksDecoder(raw)) {
        return OpenResult::NoDecoder;
    }
    const bool ofSink = gst_object_has_as_ancestor(message->src, AsObject(sink));
    return ofSink || raw->domain != GST_STREAM_ERROR ? OpenResult::SinkFailed
                                                     : OpenResult::NotMusic;
}

/// The length of MPEG audio that has no header tag to tell it: known only by reading it all. A
/// picture in front must be taken off first, or its bytes are taken for audio.
std::int32_t MeasuredLength(const std::filesystem::path& file)
{
    const Owned<GstElement> pipeline(gst_parse_launch(
        "filesrc name=source ! id3demux ! mpegaudioparse ! fakesink sync=false", nullptr));
    if (!pipeline) {
        return 0;
    }
    const Owned<GstElement> source(
        gst_bin_get_by_name(reinterpret_cast<GstBin*>(pipeline.get()), "source"));
    g_object_set(source.get(), "location", file.c_str(), nullptr);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const Owned<GstBus> bus(gst_element_get_bus(pipeline.get()));
    const Owned<GstMessage> end(gst_bus_timed_pop_filtered(
        bus.get(), Nanoseconds(kMeasuringLimit), Kinds(GST_MESSAGE_EOS, GST_MESSAGE_ERROR)));
    const bool whole = end && GST_MESSAGE_TYPE(end.get()) == GST_MESSAGE_EOS;
    gint64 length = 0;
    if (!whole || !gst_element_query_position(pipeline.get(), GST_FORMAT_TIME, &length)) {
        length = 0;
    }
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    return Milliseconds(length);
}

bool IsFakeSink(GstElement* element)
{
    GstElementFactory* factory = gst_element_get_factory(element);
    return factory != nullptr &&
           std::string_view(gst_plugin_feature_get_name(factory)) == "fakesink";
}

std::string Quoted(const std::filesystem::path& file)
{
    return '"' + file.filename().string() + '"';
}

}  // namespace

std::string FileProblem(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (status.type() == std::filesystem::file_type::not_found) {
        return "There is no file " + Quoted(file) + ".";
    }
    if (std::filesystem::is_directory(status)) {
        return Quoted(file) + " is a folder, not music.";
    }
    if (!std::filesystem::is_regular_file(status) || !std::ifstream(file)) {
        return Quoted(file) + " cannot be read.";
    }
    if (std::filesystem::file_size(file, error) == 0) {
        return Quoted(file) + " is empty.";
    }
    return {};
}

std::string OpenProblem(OpenResult result, const std::filesystem::path& file)
{
    switch (result) {
        case OpenResult::Opened:
            return {};
        case OpenResult::NotMusic:
            return Quoted(file) + " is not music that can be played.";
        case OpenResult::NoDecoder:
            return "There is no decoder for " + Quoted(file) + ".";
        case OpenResult::NoSound:
            return "There is no sound in " + Quoted(file) + ".";
        case OpenResult::SinkFailed:
            return Quoted(file) + " cannot be played.";
        case OpenResult::TimedOut:
            return Quoted(file) + " takes too long to open.";
    }
    return {};
}

struct Pipeline::Parts {
    Owned<GstElement> sink;
    Owned<GstElement> playbin;
    Owned<GstBus> bus;

    [[nodiscard]] bool Settle(std::chrono::milliseconds patience) const
    {
        return gst_element_get_state(playbin.get(), nullptr, nullptr, Nanoseconds(patience)) ==
               GST_STATE_CHANGE_SUCCESS;
    }
};

Pipeline::Pipeline(const std::filesystem::path& file, Sink sink)
    : file_(file), parts_(std::make_unique<Parts>())
{
    parts_->sink = MakeSink(sink);
    parts_->playbin.reset(Make("playbin"));
    gst_object_ref_sink(parts_->playbin.get());
    parts_->bus.reset(gst_element_get_bus(parts_->playbin.get()));
    const Owned<char> uri(gst_filename_to_uri(file.c_str(), nullptr));
    g_object_set(parts_->playbin.get(), "uri", uri.get(), "flags", kAudioOnly, "audio-sink",
                 parts_->sink.get(), nullptr);
}

Pipeline::~Pipeline()
{
    gst_element_set_state(parts_->playbin.get(), GST_STATE_NULL);
}

OpenResult Pipeline::Open(std::chrono::milliseconds patience)
{
    GstElement* playbin = parts_->playbin.get();
    gst_element_set_state(playbin, GST_STATE_PAUSED);
    switch (gst_element_get_state(playbin, nullptr, nullptr, Nanoseconds(patience))) {
        case GST_STATE_CHANGE_SUCCESS:
            return OpenResult::Opened;
        case GST_STATE_CHANGE_FAILURE:
            break;
        default:
            return OpenResult::TimedOut;
    }
    const Owned<GstMessage> message(gst_bus_timed_pop_filtered(
        parts_->bus.get(), Nanoseconds(kErrorTextDelay), GST_MESSAGE_ERROR));
    return message ? ResultOf(message.get(), parts_->sink.get()) : OpenResult::NotMusic;
}

std::int32_t Pipeline::Length() const
{
    gint64 length = 0;
    if (gst_element_query_duration(parts_->playbin.get(), GST_FORMAT_TIME, &length)) {
        return Milliseconds(length);
    }
    return MeasuredLength(file_);
}

bool Pipeline::Cue(std::int32_t start, std::int32_t stop, std::chrono::milliseconds patience)
{
    if (!hasRun_ && !Silent()) {
        // A stream of PulseAudio that has never run starts as late as it has waited: make it anew.
        gst_element_set_state(parts_->playbin.get(), GST_STATE_READY);
    }
    if (!Halt(patience)) {
        return false;
    }
    // The stop is always set: "none" would keep that of the range before.
    constexpr auto kFlags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    constexpr auto kUnit = static_cast<gint64>(GST_MSECOND);
    if (!gst_element_seek(parts_->playbin.get(), 1.0, GST_FORMAT_TIME, kFlags, GST_SEEK_TYPE_SET,
                          start * kUnit, GST_SEEK_TYPE_SET, stop < 0 ? -1 : stop * kUnit)) {
        return false;
    }
    if (!parts_->Settle(patience)) {
        return false;
    }
    // The end of the play before must not be taken for the end of the next.
    while (const Owned<GstMessage> old{gst_bus_pop_filtered(parts_->bus.get(), GST_MESSAGE_EOS)}) {
    }
    return true;
}

bool Pipeline::Run()
{
    hasRun_ = true;
    return gst_element_set_state(parts_->playbin.get(), GST_STATE_PLAYING) !=
           GST_STATE_CHANGE_FAILURE;
}

bool Pipeline::Halt(std::chrono::milliseconds patience)
{
    gst_element_set_state(parts_->playbin.get(), GST_STATE_PAUSED);
    return parts_->Settle(patience);
}

std::optional<std::int32_t> Pipeline::Position() const
{
    gint64 position = 0;
    if (!gst_element_query_position(parts_->playbin.get(), GST_FORMAT_TIME, &position)) {
        return std::nullopt;
    }
    return Milliseconds(position);
}

Pipeline::News Pipeline::NextNews()
{
    const Owned<GstMessage> message(
        gst_bus_pop_filtered(parts_->bus.get(), Kinds(GST_MESSAGE_ERROR, GST_MESSAGE_EOS)));
    if (!message) {
        return News::None;
    }
    if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS) {
        return News::Ended;
    }
    return gst_object_has_as_ancestor(message->src, AsObject(parts_->sink.get())) ? News::SinkFailed
                                                                                  : News::Failed;
}

bool Pipeline::Silent() const
{
    GstElement* sink = parts_->sink.get();
    if (!GST_IS_BIN(sink)) {
        return IsFakeSink(sink);
    }
    const Owned<GstIterator> children(gst_bin_iterate_sinks(reinterpret_cast<GstBin*>(sink)));
    bool silent = false;
    GValue child = G_VALUE_INIT;
    while (gst_iterator_next(children.get(), &child) == GST_ITERATOR_OK) {
        silent = silent || IsFakeSink(static_cast<GstElement*>(g_value_get_object(&child)));
        g_value_reset(&child);
    }
    g_value_unset(&child);
    return silent;
}

}  // namespace sound
