#include "sound/gstreamer.h"

#include <gst/gst.h>

namespace sound {
namespace {

struct Need {
    const char* element;
    const char* package;
};

// clang-format off
constexpr Need kNeeds[] = {
    {"fakesink",       "libgstreamer1.0-0"},
    {"filesrc",        "libgstreamer1.0-0"},
    {"playbin",        "gstreamer1.0-plugins-base"},
    {"audioconvert",   "gstreamer1.0-plugins-base"},
    {"audioresample",  "gstreamer1.0-plugins-base"},
    {"wavparse",       "gstreamer1.0-plugins-good"},
    {"id3demux",       "gstreamer1.0-plugins-good"},
    {"mpegaudioparse", "gstreamer1.0-plugins-good"},
    {"mpg123audiodec", "gstreamer1.0-plugins-good"},
    {"autoaudiosink",  "gstreamer1.0-plugins-good"},
};
// clang-format on

bool Has(const char* element)
{
    GstElementFactory* factory = gst_element_factory_find(element);
    if (factory == nullptr) {
        return false;
    }
    gst_object_unref(factory);
    return true;
}

std::string MissingPackages()
{
    std::string packages;
    for (const Need& need : kNeeds) {
        if (Has(need.element) || packages.find(need.package) != std::string::npos) {
            continue;
        }
        packages += packages.empty() ? "" : " and ";
        packages += need.package;
    }
    return packages.empty() ? "" : "Music cannot be played until " + packages + " is installed.";
}

std::string Start()
{
    GError* error = nullptr;
    if (gst_init_check(nullptr, nullptr, &error)) {
        return MissingPackages();
    }
    g_clear_error(&error);
    return "Music cannot be played: GStreamer does not start.";
}

}  // namespace

const std::string& GstreamerProblem()
{
    static const std::string problem = Start();
    return problem;
}

}  // namespace sound
