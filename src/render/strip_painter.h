#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QRect>
#include <cstdint>

#include "render/waveform.h"
#include "timeline/marks.h"
#include "timeline/strip.h"

class QPainter;

namespace render {

/// Water, lights and motion have a lane each, so that colour alone tells nothing.
// clang-format off
inline constexpr QColor kStripGround  {  12,  16,  40};
inline constexpr QColor kStripWater   {  84, 180, 255};
inline constexpr QColor kStripLights  { 255, 212,  96};
inline constexpr QColor kStripMotion  { 112, 222, 148};
inline constexpr QColor kStripReset   { 214, 214, 255};
inline constexpr QColor kStripOther   { 112, 120, 164};
inline constexpr QColor kStripWarning { 255,  88,  64};
inline constexpr QColor kStripMark    { 244, 132, 220};
inline constexpr QColor kStripCursor  { 255, 255, 255};
// clang-format on

/// A part of the strip's height, in logical pixels.
struct StripBand {
    int top = 0;
    int height = 0;

    [[nodiscard]] int Bottom() const { return top + height; }  ///< exclusive
    [[nodiscard]] bool Holds(double y) const { return y >= top && y < Bottom(); }
};

struct StripBands {
    StripBand ruler;
    StripBand wave;  ///< without height where there is no music
    StripBand resets;
    StripBand water;
    StripBand lights;
    StripBand motion;
};

/// `height` in logical pixels.
[[nodiscard]] StripBands BandsOf(int height, bool withMusic);

/// How much of half the band's height a sample takes, -1..1. As ears do, it makes more of soft
/// music.
[[nodiscard]] double WaveShare(double sample, int loudest);

/// What the strip shows; nothing is owned.
struct StripContent {
    const timeline::StripView& view;
    const timeline::StripTicks& ticks;
    const timeline::Marks& marks;
    const Waveform* waveform = nullptr;  ///< null without music
    std::int32_t end = 0;                ///< ms, of the show; what lies behind is darker
};

/// The strip without its cursor, as wide as its view and `height` logical pixels high, with `ratio`
/// device pixels to each.
[[nodiscard]] QImage PaintStrip(const StripContent& content, int height, double ratio,
                                const QFont& font);

/// The logical pixels that the flag of a mark (ms) covers.
[[nodiscard]] QRect FlagRect(const timeline::StripView& view, const StripBands& bands,
                             std::int32_t time);

enum class Cursor { Playing, Editing };

/// All that `PaintStripCursor` may touch.
[[nodiscard]] QRect CursorRect(const timeline::StripView& view, int height, std::int32_t time,
                               Cursor cursor);
/// While editing, the tenth of a second that is edited is shaded where it is wide enough.
void PaintStripCursor(QPainter& painter, const timeline::StripView& view, const StripBands& bands,
                      int height, std::int32_t time, Cursor cursor);

/// The line under the pointer with its time.
[[nodiscard]] QRect HoverRect(const timeline::StripView& view, int height, int x,
                              const QFont& font);
void PaintStripHover(QPainter& painter, const timeline::StripView& view, const StripBands& bands,
                     int height, int x, std::int32_t time, const QFont& font);

}  // namespace render
