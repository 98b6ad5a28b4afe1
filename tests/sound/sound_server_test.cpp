// A sound server that fails or hangs, played by an element that takes the place of the one which
// looks for a real server. No test reaches a real one.
#include <gst/gst.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "music_files.h"
#include "sound/gst_player.h"
#include "sound/gstreamer.h"

namespace sound {
namespace {

using timeline::PlayerMode;

constexpr auto kNoChange = static_cast<GstStateChange>(0);

struct Server {
    std::mutex mutex;
    std::condition_variable released;
    GstStateChange hangsAt = kNoChange;
    std::atomic<GstElement*> sink{nullptr};  // the last made
    std::atomic<int> sinks{0};
    std::atomic<int> streams{0};       // opened since the start
    std::atomic<gint64> frozenAt{-1};  // the position that it reports for ever, in ns
};

Server& TheServer()
{
    static Server* const server = new Server;  // outlives the threads that hang in it
    return *server;
}

GstElementClass* parentClass = nullptr;

GstStateChangeReturn ChangeState(GstElement* element, GstStateChange change)
{
    Server& server = TheServer();
    {
        std::unique_lock lock(server.mutex);
        server.released.wait(lock, [&] { return server.hangsAt != change; });
    }
    if (change == GST_STATE_CHANGE_READY_TO_PAUSED) {
        ++server.streams;
    }
    return parentClass->change_state(element, change);
}

gboolean Query(GstElement* element, GstQuery* query)
{
    const gint64 frozen = TheServer().frozenAt;
    if (frozen >= 0 && GST_QUERY_TYPE(query) == GST_QUERY_POSITION) {
        gst_query_set_position(query, GST_FORMAT_TIME, frozen);
        return TRUE;
    }
    return parentClass->query(element, query);
}

void Finalize(GObject* object)
{
    --TheServer().sinks;
    reinterpret_cast<GObjectClass*>(parentClass)->finalize(object);
}

void InitClass(gpointer type, gpointer)
{
    parentClass = static_cast<GstElementClass*>(g_type_class_peek_parent(type));
    auto* element = static_cast<GstElementClass*>(type);
    element->change_state = ChangeState;
    element->query = Query;
    static_cast<GObjectClass*>(type)->finalize = Finalize;
    gst_element_class_set_static_metadata(element, "Server", "Sink/Audio", "A test's", "-");
}

void InitSink(GTypeInstance* instance, gpointer)
{
    g_object_set(instance, "sync", TRUE, nullptr);
    TheServer().sink = reinterpret_cast<GstElement*>(instance);
    ++TheServer().sinks;
}

bool RegisterServer()
{
    GstElement* model = gst_element_factory_make("fakesink", nullptr);
    gst_object_ref_sink(model);
    GTypeQuery sizes;
    g_type_query(G_TYPE_FROM_INSTANCE(model), &sizes);
    const GType type =
        g_type_register_static_simple(sizes.type, "TestServerSink", sizes.class_size, InitClass,
                                      sizes.instance_size, InitSink, static_cast<GTypeFlags>(0));
    gst_object_unref(model);
    return gst_element_register(nullptr, "autoaudiosink", GST_RANK_NONE, type) != FALSE;
}

class SoundServer : public testing::Test {
 protected:
    static void SetUpTestSuite()
    {
        ASSERT_EQ(GstreamerProblem(), "");
        ASSERT_TRUE(RegisterServer());
    }

    void SetUp() override { music_ = folder_.Add("music.wav", WavBytes(2000)); }

    // What hung must have come to its end before the test program ends.
    void TearDown() override
    {
        SetHang(kNoChange);
        TheServer().frozenAt = -1;
        EXPECT_TRUE(Soon([] { return TheServer().sinks == 0; }));
    }

    static void SetHang(GstStateChange change)
    {
        const std::scoped_lock lock(TheServer().mutex);
        TheServer().hangsAt = change;
        TheServer().released.notify_all();
    }

    template <typename Condition>
    static bool Soon(Condition condition)
    {
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!condition() && std::chrono::steady_clock::now() < limit) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return condition();
    }

    static bool PlaysOn(GstPlayer& player)
    {
        const std::int32_t start = player.Position();
        return Soon([&] {
            player.Poll();
            return player.Mode() == PlayerMode::Playing && player.Position() > start + 20;
        });
    }

    MusicFolder folder_;
    std::filesystem::path music_;
};

TEST_F(SoundServer, IsUsedWhenItWorks)
{
    GstPlayer player(Sink::Automatic);
    ASSERT_TRUE(player.Open(music_)) << player.LastError();
    EXPECT_FALSE(player.Silent());
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    EXPECT_FALSE(player.Silent());
}

// A stream that stood since the opening would start as late as it stood.
TEST_F(SoundServer, GetsAFreshStreamForTheFirstPlay)
{
    GstPlayer player(Sink::Automatic);
    ASSERT_TRUE(player.Open(music_));
    const int opened = TheServer().streams;
    player.SetFrom(500);
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    EXPECT_GE(player.Position(), 500);
    EXPECT_EQ(TheServer().streams, opened + 1);
    player.Stop();
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    EXPECT_EQ(TheServer().streams, opened + 1);
}

TEST_F(SoundServer, IsDoneWithoutWhereItHangs)
{
    const struct {
        const char* name;
        GstStateChange hangsAt;
        bool opensSilently;
    } cases[] = {
        {"at the first connection", GST_STATE_CHANGE_NULL_TO_READY, true},
        {"at the first sample", GST_STATE_CHANGE_READY_TO_PAUSED, true},
        {"when it shall play", GST_STATE_CHANGE_PAUSED_TO_PLAYING, false},
    };
    for (const auto& c : cases) {
        {
            SetHang(c.hangsAt);
            GstPlayer player(Sink::Automatic, std::chrono::milliseconds(250));
            ASSERT_TRUE(player.Open(music_)) << c.name << ": " << player.LastError();
            EXPECT_EQ(player.Silent(), c.opensSilently) << c.name;
            player.SetFrom(700);
            player.Play();
            EXPECT_GE(player.Position(), 700) << c.name;
            EXPECT_TRUE(PlaysOn(player)) << c.name;
            EXPECT_TRUE(player.Silent()) << c.name;

            ASSERT_TRUE(player.Open(music_)) << c.name;
            EXPECT_EQ(TheServer().sinks, 1) << "asks again while it hangs " << c.name;
        }
        SetHang(kNoChange);
        EXPECT_TRUE(Soon([] { return TheServer().sinks == 0; })) << c.name;
    }
}

TEST_F(SoundServer, IsDoneWithoutWhenItHangsAtAStop)
{
    GstPlayer player(Sink::Automatic, std::chrono::milliseconds(250));
    ASSERT_TRUE(player.Open(music_));
    player.SetFrom(300);
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    SetHang(GST_STATE_CHANGE_PLAYING_TO_PAUSED);
    player.Stop();
    EXPECT_EQ(player.Mode(), PlayerMode::Stopped);
    EXPECT_GE(player.Position(), 300);
    EXPECT_TRUE(player.Silent());
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
}

TEST_F(SoundServer, IsTriedAgainOnceItAnswers)
{
    GstPlayer player(Sink::Automatic, std::chrono::milliseconds(250));
    SetHang(GST_STATE_CHANGE_NULL_TO_READY);
    ASSERT_TRUE(player.Open(music_));
    EXPECT_TRUE(player.Silent());
    SetHang(kNoChange);
    ASSERT_TRUE(Soon([] { return TheServer().sinks == 0; }));
    EXPECT_TRUE(Soon([&] { return player.Open(music_) && !player.Silent(); }));
}

TEST_F(SoundServer, MayDieWhileTheMusicPlays)
{
    GstPlayer player(Sink::Automatic);
    ASSERT_TRUE(player.Open(music_));
    player.SetFrom(400);
    player.SetTo(900);
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    const std::int32_t before = player.Position();
    GST_ELEMENT_ERROR(TheServer().sink.load(), RESOURCE, WRITE, ("gone"), (nullptr));
    EXPECT_TRUE(PlaysOn(player));
    EXPECT_GE(player.Position(), before);
    EXPECT_TRUE(player.Silent());
    EXPECT_NE(player.LastError(), "");
    EXPECT_TRUE(Soon([&] { return player.Mode() == PlayerMode::Stopped; }));
    EXPECT_EQ(player.Position(), 900);
}

TEST_F(SoundServer, MayDieWhileTheMusicStands)
{
    GstPlayer player(Sink::Automatic);
    ASSERT_TRUE(player.Open(music_));
    GST_ELEMENT_ERROR(TheServer().sink.load(), RESOURCE, WRITE, ("gone"), (nullptr));
    player.SetFrom(600);
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    EXPECT_TRUE(player.Silent());
    EXPECT_GE(player.Position(), 600);
}

TEST_F(SoundServer, MayStandStillWhileTheMusicPlays)
{
    GstPlayer player(Sink::Automatic, std::chrono::milliseconds(250));
    ASSERT_TRUE(player.Open(music_));
    player.Play();
    EXPECT_TRUE(PlaysOn(player));
    TheServer().frozenAt = 100 * static_cast<gint64>(GST_MSECOND);
    EXPECT_TRUE(Soon([&] {
        player.Poll();
        return player.Silent();
    }));
    EXPECT_LT(player.Position(), 1000);
    EXPECT_TRUE(PlaysOn(player));
}

}  // namespace
}  // namespace sound
