#include "sound/music_length.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "music_files.h"

namespace sound {
namespace {

TEST(MusicLength, IsThatOfTheSound)
{
    const MusicFolder folder;
    const struct {
        const char* name;
        std::string bytes;
        std::int32_t length;
        std::int32_t tolerance;  // the padding of an encoder that left no tag
    } cases[] = {
        {"whole.wav", WavBytes(1500), 1500, 0},
        {"cut off.wav", WavBytes(1500).substr(0, 44 + 16 * 250), 250, 0},
        {"tag.mp3", DataBytes("header_tag.mp3"), 1500, 0},
        {"no tag.mp3", DataBytes("no_header_tag.mp3"), 1500, 80},
        {"picture and no tag.mp3", DataBytes("cover_no_header_tag.mp3"), 1500, 80},
        {"MPEG named.wav", DataBytes("header_tag.mp3"), 1500, 0},
    };
    for (const auto& c : cases) {
        const MusicLength music = MeasureMusic(folder.Add(c.name, c.bytes));
        EXPECT_EQ(music.problem, "") << c.name;
        EXPECT_NEAR(music.length, c.length, c.tolerance) << c.name;
    }
}

TEST(MusicLength, SaysWhatIsNoMusic)
{
    const MusicFolder folder;
    for (const NotMusic& file : NotMusicFiles()) {
        const MusicLength music = MeasureMusic(folder.Add(file.name, file.bytes));
        EXPECT_EQ(music.length, 0) << file.fault;
        EXPECT_NE(music.problem.find(file.problem), std::string::npos) << music.problem;
    }
    EXPECT_EQ(MeasureMusic(folder.Add("here.wav", "").replace_filename("gone.wav")).problem,
              "There is no file \"gone.wav\".");
}

// In a process of its own, because GStreamer looks for its plug-ins once.
TEST(MusicLengthDeathTest, NamesThePackagesThatAreMissing)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const MusicFolder folder;
    const std::filesystem::path wav = folder.Add("a.wav", WavBytes(100));
    const auto measureWithoutPlugins = [&] {
        setenv("GST_PLUGIN_SYSTEM_PATH_1_0", wav.parent_path().c_str(), 1);
        setenv("GST_REGISTRY", (wav.string() + ".registry").c_str(), 1);
        std::fputs(MeasureMusic(wav).problem.c_str(), stderr);
        std::exit(0);
    };
    EXPECT_EXIT(measureWithoutPlugins(), testing::ExitedWithCode(0),
                "libgstreamer1.0-0 and gstreamer1.0-plugins-base and gstreamer1.0-plugins-good");
}

}  // namespace
}  // namespace sound
