#include "render/strip_painter.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "document/packed.h"

namespace {

using render::Peak;
using render::StripBand;
using render::Waveform;
using timeline::StripTicks;
using timeline::StripView;

constexpr int kWidth = 800;
constexpr int kHeight = 56;
constexpr std::int32_t kLength = 80'000;  // 100 ms a pixel

struct Slot {
    std::int32_t time;
    std::string commands;
};

struct Strip {
    StripView view;
    StripTicks ticks;
    timeline::Marks marks;
    Waveform waveform;
    std::int32_t end = kLength;

    explicit Strip(const std::vector<Slot>& times = {}, std::vector<Peak> bins = {})
        : waveform(std::move(bins), 10)
    {
        view.SetWidth(kWidth);
        view.SetLength(kLength);
        document::Choreography show;
        for (const Slot& slot : times)
            document::InsertSlot(show, show.lngLastSlot(), slot.time,
                                 testing_support::Packed(slot.commands));
        ticks.Read(show);
    }

    [[nodiscard]] QImage Paint(double ratio = 1) const
    {
        return render::PaintStrip({view, ticks, marks, &waveform, end}, kHeight, ratio, QFont{});
    }
};

std::vector<Peak> RandomBins(std::size_t count, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution sample(0, 127);
    std::vector<Peak> bins(count);
    for (Peak& bin : bins)
        bin = {static_cast<std::int8_t>(-sample(random)), static_cast<std::int8_t>(sample(random))};
    return bins;
}

TEST(Waveform, FindsThePeakOfAnyStretch)
{
    std::mt19937 random(3);
    for (const std::size_t count : {1U, 2U, 7U, 64U, 1000U}) {
        const std::vector<Peak> bins = RandomBins(count, static_cast<unsigned>(count));
        const Waveform wave(bins, 10);
        for (int round = 0; round < 500; ++round) {
            const double length = static_cast<double>(count) * 10;
            const double first = std::uniform_real_distribution(-10.0, length + 10)(random);
            const double last = first + std::uniform_real_distribution(0.0, length / 3)(random);
            Peak expected;
            bool any = false;
            for (std::size_t i = 0; i < count; ++i) {
                const double left = static_cast<double>(i) * 10;
                if (left + 10 <= first || left >= last || last <= first)
                    continue;
                expected = any ? Peak{std::min(expected.low, bins[i].low),
                                      std::max(expected.high, bins[i].high)}
                               : bins[i];
                any = true;
            }
            ASSERT_EQ(wave.Between(first, last), expected)
                << count << " bins, " << first << " to " << last;
        }
    }
    EXPECT_EQ(Waveform().Between(0, 100), Peak{}) << "no bins";
}

// Pixels of a column that differ from how it is painted without sound.
int Loud(const QImage& image, const QImage& silent, int x, int from, int to)
{
    int count = 0;
    for (int y = from; y < to; ++y)
        count += image.pixel(x, y) != silent.pixel(x, y) ? 1 : 0;
    return count;
}

TEST(StripPainter, DrawsEveryColumnAsHighAsItsPeaks)
{
    // One loud bin among soft ones must be seen in the column that holds it, and nowhere else.
    std::vector<Peak> bins(kLength / 10, Peak{-2, 2});
    bins[4005] = {-127, 127};
    bins[6000] = {0, 100};
    const QImage image = Strip({}, bins).Paint();
    const QImage silent = Strip({}, std::vector<Peak>(bins.size())).Paint();
    const StripBand band = render::BandsOf(kHeight, true).wave;
    const int middle = band.top + band.height / 2;
    const auto above = [&](int x) { return Loud(image, silent, x, band.top, middle); };
    const auto below = [&](int x) { return Loud(image, silent, x, middle, band.Bottom()); };
    for (int x = 0; x < kWidth; ++x) {
        const auto first = bins.begin() + x * 10;
        const double high = std::max_element(first, first + 10, [](Peak one, Peak other) {
                                return one.high < other.high;
                            })->high;
        const double low = std::min_element(first, first + 10, [](Peak one, Peak other) {
                               return one.low < other.low;
                           })->low;
        const double half = band.height / 2.0;
        ASSERT_NEAR(above(x), half * render::WaveShare(high, 127), 1.01) << "column " << x;
        ASSERT_NEAR(below(x), -half * render::WaveShare(low, 127), 1.01) << "column " << x;
    }
}

TEST(StripPainter, DrawsATickWhereItIsPointedAt)
{
    const struct {
        const char* name;
        std::string commands;
        StripBand render::StripBands::*band;
        QColor color;
    } cases[] = {
        {"water", "001-017", &render::StripBands::water, render::kStripWater},
        {"lights", "017-001", &render::StripBands::lights, render::kStripLights},
        {"motion", "033-097", &render::StripBands::motion, render::kStripMotion},
        {"reset", "099-000", &render::StripBands::resets, render::kStripReset},
        {"one of several kinds", "099-000 033-097 001-017", &render::StripBands::motion,
         render::kStripMotion},
    };
    for (const double ratio : {1.0, 2.0})
        for (const auto& c : cases)
            for (const double zoom : {1.0, 0.1, 0.013}) {
                Strip strip({{40'300, c.commands}});
                strip.view.ZoomAround(403, zoom);
                const QImage image = strip.Paint(ratio);
                const StripBand band = render::BandsOf(kHeight, true).*c.band;
                const int y = static_cast<int>((band.top + band.height / 2.0) * ratio);
                int painted = 0;
                for (int x = 0; x < image.width(); ++x) {
                    if (image.pixel(x, y) != c.color.rgb())
                        continue;
                    ++painted;
                    EXPECT_EQ(strip.ticks.Near(strip.view, x / ratio, 1), 0) << c.name;
                    EXPECT_EQ(strip.ticks.TenthAt(strip.view, x / ratio), 40'300) << c.name;
                }
                EXPECT_GE(painted, 1) << c.name << " at " << zoom;
            }
}

TEST(StripPainter, WarnsOfMoreCommandsThanTheControllerTakes)
{
    std::string commands = "001-017";
    for (int k = 1; k < 11; ++k)
        commands += " 001-017";
    const QImage image =
        Strip({{20'000, commands}, {40'000, commands + " 001-017"}, {40'000 + 50, "002-017"}})
            .Paint();
    const render::StripBands bands = render::BandsOf(kHeight, true);
    for (int y = bands.resets.top; y < bands.motion.Bottom(); ++y) {
        EXPECT_NE(image.pixel(200, y), render::kStripWarning.rgb()) << "eleven, row " << y;
        EXPECT_EQ(image.pixel(400, y), render::kStripWarning.rgb()) << "twelve, row " << y;
    }
}

TEST(StripPainter, PutsAFlagAtEveryMark)
{
    Strip strip;
    const QImage bare = strip.Paint();
    strip.marks = {{100, 400, 799}, 1};
    const QImage marked = strip.Paint();
    const render::StripBands bands = render::BandsOf(kHeight, true);
    for (int x = 0; x < kWidth; ++x) {
        const bool flag = std::ranges::any_of(strip.marks.tenths, [&](std::int32_t tenth) {
            const QRect rect = render::FlagRect(strip.view, bands, tenth * 100);
            return x >= rect.left() && x <= rect.right() + 1;
        });
        bool changed = false;
        for (int y = 0; y < kHeight; ++y)
            changed = changed || bare.pixel(x, y) != marked.pixel(x, y);
        EXPECT_TRUE(flag || !changed) << "column " << x;
    }
    for (const int x : {100, 400, 799})
        EXPECT_NE(bare.pixel(x, kHeight - 2), marked.pixel(x, kHeight - 2)) << "pole at " << x;
}

TEST(StripPainter, DarkensWhatLiesBehindTheMusic)
{
    Strip strip;
    strip.end = kLength / 2;
    const QImage image = strip.Paint();
    const int y = render::BandsOf(kHeight, true).lights.top;
    EXPECT_GT(qGray(image.pixel(kWidth / 2 - 1, y)), qGray(image.pixel(kWidth / 2, y)));
    EXPECT_EQ(image.pixel(kWidth / 2, y), image.pixel(kWidth - 1, y));
}

// Only what the cursor's rectangle covers is repainted when it moves.
TEST(StripPainter, KeepsTheCursorWithinItsRectangle)
{
    Strip strip;
    const render::StripBands bands = render::BandsOf(kHeight, true);
    for (const double zoom : {1.0, 0.013})
        for (const auto kind : {render::Cursor::Playing, render::Cursor::Editing})
            for (const std::int32_t time : {0, 40'000, 40'133, kLength - 1}) {
                strip.view.ShowAll();
                strip.view.ZoomAround(strip.view.PixelOf(time), zoom);
                QImage image(kWidth, kHeight, QImage::Format_RGB32);
                image.fill(Qt::black);
                QPainter painter(&image);
                render::PaintStripCursor(painter, strip.view, bands, kHeight, time, kind);
                painter.end();
                const QRect rect = render::CursorRect(strip.view, kHeight, time, kind);
                const int at = static_cast<int>(strip.view.PixelOf(time));
                EXPECT_EQ(image.pixel(at, kHeight - 1), render::kStripCursor.rgb()) << time;
                for (int y = 0; y < kHeight; ++y)
                    for (int x = 0; x < kWidth; ++x)
                        ASSERT_TRUE(rect.contains(x, y) || image.pixel(x, y) == qRgb(0, 0, 0))
                            << x << ", " << y << " at " << time;
            }
}

TEST(StripBands, FitAnyHeight)
{
    for (int height = 40; height <= 300; ++height)
        for (const bool withMusic : {false, true}) {
            const render::StripBands bands = render::BandsOf(height, withMusic);
            const StripBand order[] = {bands.ruler, bands.wave,   bands.resets,
                                       bands.water, bands.lights, bands.motion};
            for (std::size_t i = 1; i < std::size(order); ++i)
                EXPECT_LE(order[i - 1].Bottom(), order[i].top) << height;
            EXPECT_LE(bands.motion.Bottom(), height) << height;
            EXPECT_EQ(bands.wave.height > 0, withMusic) << height;
        }
}

}  // namespace
