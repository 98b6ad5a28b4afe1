#pragma once

#include <gst/gst.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>

namespace sound {

struct Unref {
    void operator()(GstElement* element) const { gst_object_unref(element); }
    void operator()(GstBus* bus) const { gst_object_unref(bus); }
    void operator()(GstMessage* message) const { gst_message_unref(message); }
    void operator()(GstCaps* caps) const { gst_caps_unref(caps); }
    void operator()(GstEvent* event) const { gst_event_unref(event); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(char* text) const { g_free(text); }
    void operator()(GstIterator* iterator) const { gst_iterator_free(iterator); }
};

/// What GStreamer gave us to give back.
template <typename T>
using Owned = std::unique_ptr<T, Unref>;

inline GstClockTime Nanoseconds(std::chrono::nanoseconds duration)
{
    return static_cast<GstClockTime>(std::max<std::int64_t>(duration.count(), 0));
}

inline std::int32_t Milliseconds(gint64 nanoseconds)
{
    constexpr gint64 kMost = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(
        std::clamp<gint64>(nanoseconds / static_cast<gint64>(GST_MSECOND), 0, kMost));
}

inline GstMessageType Kinds(unsigned first, unsigned second)
{
    return static_cast<GstMessageType>(first | second);
}

inline bool LacksDecoder(const GError* error)
{
    return g_error_matches(error, GST_CORE_ERROR, GST_CORE_ERROR_MISSING_PLUGIN) ||
           g_error_matches(error, GST_STREAM_ERROR, GST_STREAM_ERROR_CODEC_NOT_FOUND);
}

}  // namespace sound
