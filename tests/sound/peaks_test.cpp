#include "sound/peaks.h"

#include <gst/gst.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <condition_variable>
#include <fstream>
#include <functional>
#include <iterator>
#include <mutex>
#include <optional>
#include <utility>

#include "music_files.h"
#include "sound/gstreamer.h"
#include "sound/music_length.h"

namespace sound {
namespace {

namespace fs = std::filesystem;

// Stands before the place where the samples come to, and lets through as many buffers as allowed:
// so a test can hold a reading in its middle, for ever if it likes.
struct Gate {
    std::mutex mutex;
    std::condition_variable changed;
    bool guardsNewSinks = false;
    int allowed = INT_MAX;
    int arrived = 0;
    int sinksMade = 0;
    int sinksAlive = 0;
};

Gate& TheGate()
{
    static Gate* const gate = new Gate;  // outlives the threads that wait at it
    return *gate;
}

GObjectClass* parentClass = nullptr;

GstPadProbeReturn Wait(GstPad*, GstPadProbeInfo*, gpointer)
{
    Gate& gate = TheGate();
    std::unique_lock lock(gate.mutex);
    ++gate.arrived;
    gate.changed.notify_all();
    gate.changed.wait(lock, [&gate] { return gate.allowed > 0; });
    --gate.allowed;
    return GST_PAD_PROBE_OK;
}

void InitSink(GTypeInstance* instance, gpointer)
{
    Gate& gate = TheGate();
    const std::scoped_lock lock(gate.mutex);
    ++gate.sinksMade;
    ++gate.sinksAlive;
    if (gate.guardsNewSinks) {
        GstPad* pad = gst_element_get_static_pad(reinterpret_cast<GstElement*>(instance), "sink");
        gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, Wait, nullptr, nullptr);
        gst_object_unref(pad);
    }
}

void Finalize(GObject* object)
{
    parentClass->finalize(object);
    const std::scoped_lock lock(TheGate().mutex);
    --TheGate().sinksAlive;
}

void InitClass(gpointer type, gpointer)
{
    parentClass = static_cast<GObjectClass*>(g_type_class_peek_parent(type));
    static_cast<GObjectClass*>(type)->finalize = Finalize;
}

bool RegisterGatedSink()
{
    GstElement* model = gst_element_factory_make("fakesink", nullptr);
    gst_object_ref_sink(model);
    GTypeQuery sizes;
    g_type_query(G_TYPE_FROM_INSTANCE(model), &sizes);
    const GType type =
        g_type_register_static_simple(sizes.type, "TestGatedSink", sizes.class_size, InitClass,
                                      sizes.instance_size, InitSink, static_cast<GTypeFlags>(0));
    gst_object_unref(model);
    return gst_element_register(nullptr, "fakesink", GST_RANK_NONE, type) != FALSE;
}

template <typename Condition>
bool Soon(Condition condition)
{
    const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition() && std::chrono::steady_clock::now() < limit) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return condition();
}

class PeakReading : public testing::Test {
 protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(GstreamerProblem(), "");
        static const bool registered = RegisterGatedSink();
        ASSERT_TRUE(registered);
    }

    void TearDown() override { OpenGate(); }

    // What hung must have come to its end before the next hangs, or the program ends.
    static void OpenGate()
    {
        Allow(INT_MAX);
        EXPECT_TRUE(Soon([] { return Read(&Gate::sinksAlive) == 0; }));
    }

    static int Read(int Gate::*number)
    {
        const std::scoped_lock lock(TheGate().mutex);
        return TheGate().*number;
    }

    static void Allow(int buffers)
    {
        const std::scoped_lock lock(TheGate().mutex);
        TheGate().allowed = buffers;
        TheGate().guardsNewSinks = buffers != INT_MAX;
        TheGate().arrived = 0;
        TheGate().changed.notify_all();
    }

    // Starts and comes back when `buffers` have been read and the next waits.
    static void StartAndHold(PeakReader& reader, const fs::path& file, int buffers)
    {
        Allow(buffers);
        reader.Start(file);
        ASSERT_TRUE(Soon([&] { return Read(&Gate::arrived) > buffers; })) << reader.Problem();
    }

    static std::shared_ptr<const Peaks> ReadAll(PeakReader& reader, const fs::path& file)
    {
        reader.Start(file);
        EXPECT_TRUE(Soon([&] { return !reader.Busy(); })) << file;
        return reader.Latest();
    }

    MusicFolder folder_;
    const fs::path cache_ = folder_.Add("x", "").parent_path() / "cache" / "peaks";
};

// `length` ms of silence with two samples of full strength at each time.
std::string Clicks(std::uint32_t rate, std::uint32_t channels, std::int32_t length,
                   const std::vector<std::int32_t>& times)
{
    const auto frame = [rate](std::int32_t time) {
        return static_cast<std::size_t>(static_cast<std::uint64_t>(time) * rate / 1000);
    };
    std::vector<std::int16_t> samples(frame(length) * channels);
    for (const std::int32_t time : times) {
        samples[frame(time) * channels] = INT16_MAX;
        samples[(frame(time) + 1) * channels + channels - 1] = INT16_MIN;
    }
    return WavBytes(rate, channels, samples);
}

TEST_F(PeakReading, ShowsEveryClickInItsHundredth)
{
    const std::vector<std::int32_t> times = {5, 55, 995, 1005, 9605};
    const std::pair<std::uint32_t, std::uint32_t> formats[] = {
        {8000, 1}, {11'025, 1}, {22'050, 2}, {44'100, 1}, {44'100, 2}, {48'000, 2}, {96'000, 6}};
    for (const auto& [rate, channels] : formats) {
        PeakReader reader("");
        const fs::path file = folder_.Add("clicks.wav", Clicks(rate, channels, 10'000, times));
        const std::shared_ptr<const Peaks> peaks = ReadAll(reader, file);
        ASSERT_TRUE(peaks) << rate << ": " << reader.Problem();
        Peaks expected{std::vector<Peaks::Bin>(1000), 10'000, true};
        for (const std::int32_t time : times) {
            expected.bins[static_cast<std::size_t>(time / Peaks::kBin)] = {-127, 127};
        }
        EXPECT_EQ(*peaks, expected) << rate << " Hz, " << channels << " channels";
        EXPECT_EQ(reader.Problem(), "");
    }
}

// A burst begins 1000 ms after the beginning. Without a header tag nobody can know how long the
// encoder's lead-in is, so it is heard, and shown, later.
TEST_F(PeakReading, ShowsCompressedMusicWhereItIsHeard)
{
    const struct {
        const char* file;
        std::size_t firstLoud;
    } cases[] = {
        {"header_tag.mp3", 100}, {"no_header_tag.mp3", 102}, {"cover_no_header_tag.mp3", 102}};
    for (const auto& c : cases) {
        const fs::path file = folder_.Add(c.file, DataBytes(c.file));
        PeakReader reader("");
        const std::shared_ptr<const Peaks> peaks = ReadAll(reader, file);
        ASSERT_TRUE(peaks) << reader.Problem();
        const auto loud = std::ranges::find_if(
            peaks->bins, [](const Peaks::Bin& bin) { return bin.high - bin.low > 80; });
        EXPECT_EQ(static_cast<std::size_t>(loud - peaks->bins.begin()), c.firstLoud) << c.file;
        EXPECT_EQ(peaks->length, MeasureMusic(file).length) << c.file;
        EXPECT_EQ(peaks->bins.size(), static_cast<std::size_t>((peaks->length + 9) / 10));
    }
}

TEST_F(PeakReading, ShowsMoreAndMore)
{
    const fs::path file = folder_.Add("clicks.wav", Clicks(8000, 1, 600'000, {5, 599'995}));
    PeakReader reader("");
    StartAndHold(reader, file, 1);
    const std::shared_ptr<const Peaks> first = reader.Latest();
    ASSERT_TRUE(first);
    const Peaks copy = *first;
    EXPECT_EQ(copy.bins.front(), (Peaks::Bin{-127, 127}));
    EXPECT_LT(copy.bins.size(), 1000U);
    EXPECT_EQ(copy.length, 600'000);
    EXPECT_FALSE(copy.complete);
    EXPECT_EQ(reader.Latest(), first) << "a new object though no more has come";

    ASSERT_TRUE(Soon([&] {
        Allow(1);
        return reader.Latest() != first;
    }));
    const std::shared_ptr<const Peaks> second = reader.Latest();
    EXPECT_GT(second->bins.size(), copy.bins.size());
    EXPECT_FALSE(second->complete);
    EXPECT_TRUE(reader.Busy());

    Allow(INT_MAX);
    ASSERT_TRUE(Soon([&] { return !reader.Busy(); }));
    EXPECT_TRUE(reader.Latest()->complete);
    EXPECT_EQ(reader.Latest()->bins.size(), 60'000U);
    EXPECT_EQ(reader.Latest()->bins.back(), (Peaks::Bin{-127, 127}));
    EXPECT_EQ(*first, copy) << "changed after it was given out";
}

TEST_F(PeakReading, SaysWhatIsNoMusic)
{
    PeakReader reader(cache_);
    const auto expectProblem = [&](const fs::path& file, const char* problem) {
        EXPECT_FALSE(ReadAll(reader, file)) << file;
        EXPECT_NE(reader.Problem().find(problem), std::string::npos) << reader.Problem();
    };
    for (const NotMusic& file : NotMusicFiles()) {
        expectProblem(folder_.Add(file.name, file.bytes), file.problem);
    }
    expectProblem(cache_ / "gone.mp3", "There is no file \"gone.mp3\"");
    expectProblem("/dev/zero", "cannot be read");
    expectProblem(cache_.parent_path().parent_path(), "is a folder");
    EXPECT_FALSE(fs::exists(cache_));
}

class PeakCache : public PeakReading {
 protected:
    void SetUp() override
    {
        ExpectRead(true, "the first time");
        file_ = fs::directory_iterator(cache_)->path();
        std::ifstream stream(file_, std::ios::binary);
        kept_.assign(std::istreambuf_iterator<char>(stream), {});
    }

    // Expects the right peaks, decoded or not.
    void ExpectRead(bool decoded, const std::string& why)
    {
        const int before = Read(&Gate::sinksMade);
        PeakReader reader(cache_);
        const std::shared_ptr<const Peaks> peaks = ReadAll(reader, music_);
        ASSERT_TRUE(peaks) << why;
        Peaks expected{std::vector<Peaks::Bin>(300), 3000, true};
        expected.bins[100] = {-127, 127};
        EXPECT_EQ(*peaks, expected) << why;
        EXPECT_EQ(Read(&Gate::sinksMade) - before, decoded ? 1 : 0) << why;
    }

    static void Write(const fs::path& file, const std::string& bytes)
    {
        std::ofstream(file, std::ios::binary) << bytes;
    }

    const fs::path music_ = folder_.Add("clicks.wav", Clicks(8000, 1, 3000, {1005}));
    fs::path file_;
    std::string kept_;
};

TEST_F(PeakCache, SparesTheDecoding)
{
    ExpectRead(false, "the second time");
    fs::last_write_time(music_, fs::last_write_time(music_) - std::chrono::hours(1));
    ExpectRead(true, "after the music has changed");
    ExpectRead(false, "kept anew");
}

TEST_F(PeakCache, IsNotTrustedWhenItIsBroken)
{
    const std::string other = Clicks(8000, 1, 3000, {5});
    PeakReader otherReader(cache_);
    ASSERT_TRUE(ReadAll(otherReader, folder_.Add("other.wav", other)));
    std::string ofOther;
    for (const auto& entry : fs::directory_iterator(cache_)) {
        if (entry.path() != file_) {
            std::ifstream stream(entry.path(), std::ios::binary);
            ofOther.assign(std::istreambuf_iterator<char>(stream), {});
        }
    }
    ASSERT_FALSE(ofOther.empty());

    std::vector<std::pair<std::string, std::string>> broken = {
        {"empty", ""},
        {"text", "not peaks at all\n"},
        {"of another piece", ofOther},
        {"with more behind it", kept_ + "x"},
        {"of another version", std::string(kept_).replace(8, 1, "\x7F")},
    };
    for (std::size_t size = 1; size < kept_.size(); size += 97) {
        broken.emplace_back("cut to " + std::to_string(size), kept_.substr(0, size));
    }
    for (std::size_t i = 0; i < kept_.size(); i += i < 150 ? 7 : 101) {
        broken.emplace_back("wrong at " + std::to_string(i), kept_);
        broken.back().second[i] = static_cast<char>(broken.back().second[i] ^ 0x10);
    }
    for (const auto& [why, bytes] : broken) {
        Write(file_, bytes);
        ExpectRead(true, why);
    }
    ExpectRead(false, "made whole by the last reading");

    fs::remove_all(cache_);
    Write(cache_, "a file where the folder should be");
    ExpectRead(true, "no folder to be had");
}

TEST_F(PeakCache, KeepsWhatWasUsedLast)
{
    const auto now = fs::last_write_time(file_);
    const auto old = [&](int age) { return cache_ / (std::to_string(age) + ".peaks"); };
    for (int age = 1; age <= 60; ++age) {
        Write(old(age), "x");
        fs::last_write_time(old(age), now - std::chrono::minutes(age));
    }
    Write(cache_ / "9.peaks-new", "left over");
    Write(cache_ / "letter.txt", "not ours");
    for (const char* name : {"9.peaks-new", "letter.txt"}) {
        fs::last_write_time(cache_ / name, now - std::chrono::hours(9));
    }
    fs::last_write_time(file_, now - std::chrono::hours(9));
    ExpectRead(false, "marks it as used");
    PeakReader reader(cache_);
    ASSERT_TRUE(ReadAll(reader, folder_.Add("new.wav", Clicks(8000, 1, 500, {5}))));
    EXPECT_TRUE(fs::exists(file_));
    EXPECT_TRUE(fs::exists(cache_ / "letter.txt"));
    EXPECT_FALSE(fs::exists(cache_ / "9.peaks-new"));
    EXPECT_TRUE(fs::exists(old(48)));
    EXPECT_FALSE(fs::exists(old(49)));
}

TEST_F(PeakCache, KeepsNothingOfMusicThatChangedMeanwhile)
{
    const fs::path file = folder_.Add("cut.wav", Clicks(8000, 1, 60'000, {5}));
    PeakReader reader(cache_);
    StartAndHold(reader, file, 3);
    fs::resize_file(file, 40'000);
    Allow(INT_MAX);
    ASSERT_TRUE(Soon([&] { return !reader.Busy(); }));
    ASSERT_TRUE(reader.Latest());
    EXPECT_EQ(reader.Latest()->bins.at(0).high, 127);
    EXPECT_LT(reader.Latest()->bins.size(), 6000U);
    const auto files = std::distance(fs::directory_iterator(cache_), fs::directory_iterator());
    EXPECT_EQ(files, 1) << "more than that of the other piece";
}

TEST_F(PeakReading, DropsWhatItReadForWhatIsAskedNext)
{
    const fs::path slow = folder_.Add("slow.wav", Clicks(8000, 1, 60'000, {5}));
    const fs::path next = folder_.Add("next.wav", Clicks(8000, 1, 300, {155}));
    PeakReader reader(cache_);
    StartAndHold(reader, slow, 2);  // and it hangs from now on
    {
        const std::scoped_lock lock(TheGate().mutex);
        TheGate().guardsNewSinks = false;
    }
    const std::shared_ptr<const Peaks> peaks = ReadAll(reader, next);
    ASSERT_TRUE(peaks) << reader.Problem();
    EXPECT_EQ(peaks->bins.size(), 30U);
    EXPECT_EQ(peaks->bins[15].high, 127);

    OpenGate();
    EXPECT_EQ(reader.Latest(), peaks) << "what was dropped has come all the same";
    reader.Start("");
    EXPECT_FALSE(reader.Latest());
    EXPECT_FALSE(reader.Busy());
    EXPECT_EQ(reader.Problem(), "");
}

TEST_F(PeakReading, EndsWhileGstreamerHangs)
{
    const fs::path slow = folder_.Add("slow.wav", Clicks(8000, 1, 60'000, {5}));
    for (const int buffers : {0, 1, 5}) {
        std::optional<PeakReader> reader(std::in_place, cache_);
        StartAndHold(*reader, slow, buffers);
        reader.reset();
        EXPECT_GT(Read(&Gate::sinksAlive), 0) << "does not hang";
        OpenGate();
    }
    for (int i = 0; i < 50; ++i) {  // wherever it may be
        PeakReader reader("");
        reader.Start(slow);
        std::this_thread::sleep_for(std::chrono::microseconds(40 * i));
    }
}

TEST_F(PeakReading, GivesUpWhatHangs)
{
    const fs::path slow = folder_.Add("slow.wav", Clicks(8000, 1, 60'000, {5}));
    const struct {
        int buffers;
        const char* problem;
    } cases[] = {{0, "takes too long"}, {2, "to its end"}};
    for (const auto& c : cases) {
        PeakReader reader(cache_, std::chrono::milliseconds(500));
        StartAndHold(reader, slow, c.buffers);
        ASSERT_TRUE(Soon([&] { return !reader.Busy(); }));
        EXPECT_TRUE(Soon([&] { return reader.Problem().find(c.problem) != std::string::npos; }))
            << reader.Problem();
        EXPECT_EQ(reader.Latest() != nullptr, c.buffers > 0);
        EXPECT_FALSE(reader.Latest() && reader.Latest()->complete);
        OpenGate();
    }
    EXPECT_FALSE(fs::exists(cache_));
}

// Blocks of 8 samples a hundredth of a second at 800 Hz: {time in ms, hundredths}.
TEST(PeakBinner, FollowsTheTimesOfTheSamples)
{
    using Blocks = std::vector<std::pair<std::optional<std::int64_t>, int>>;
    const struct {
        const char* name;
        Blocks blocks;
        const char* bins;  // x: sound, .: silence
    } cases[] = {
        {"one after the other", {{0, 2}, {20, 2}}, "xxxx"},
        {"times unknown", {{std::nullopt, 2}, {std::nullopt, 2}}, "xxxx"},
        {"late begin", {{30, 2}}, "...xx"},
        {"too little off to be heard", {{0, 2}, {60, 1}, {0, 1}}, "xxxx"},
        {"gap", {{0, 2}, {70, 1}}, "xx.....x"},
        {"back", {{100, 1}, {20, 2}}, "..xx......x"},
        {"before the beginning", {{-20, 3}, {10, 1}}, "xx"},
        {"all before the beginning", {{-20, 2}, {0, 1}}, "x"},
        {"long before", {{INT64_MIN, 1}, {0, 1}}, "x"},
    };
    const std::string samples(2 * 8 * 10, '\x40');
    for (const auto& c : cases) {
        PeakBinner binner;
        binner.SetFormat(800, 1);
        for (const auto& [time, hundredths] : c.blocks) {
            const auto bytes = static_cast<std::size_t>(16 * hundredths);
            binner.Add(std::string_view(samples).substr(0, bytes),
                       time && *time > INT64_MIN ? std::optional(*time * 1'000'000) : time);
        }
        std::string bins;
        for (const Peaks::Bin& bin : binner.Bins()) {
            bins += bin.high > 0 ? 'x' : '.';
        }
        EXPECT_EQ(bins, c.bins) << c.name;
    }
}

TEST(PeakBinner, SurvivesFormatsAndTimesThatMakeNoSense)
{
    const std::string samples(1001, '\x40');
    const std::int64_t times[] = {INT64_MIN, -1, 0, 1, 3'600'000'000'000, INT64_MAX};
    const std::int32_t numbers[] = {INT32_MIN, 0, 1, 99, 48'000, INT32_MAX};
    for (const std::int32_t rate : numbers) {
        for (const std::int32_t channels : numbers) {
            PeakBinner binner;
            for (const std::int64_t time : times) {
                binner.SetFormat(rate, channels);
                binner.Add(samples, time);
                binner.SetFormat(8000, 1);
                binner.Add(samples, std::nullopt);
            }
            EXPECT_LE(binner.Bins().size(), Peaks::kMostBins);
            EXPECT_TRUE(binner.Full()) << rate << " " << channels;
        }
    }
}

}  // namespace
}  // namespace sound
