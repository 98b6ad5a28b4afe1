#include "ui/design_form.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <string_view>

#include <QFontMetricsF>
#include <QStringList>

namespace ui {
namespace {

// clang-format off
constexpr std::array kForm = std::to_array<FormControl>({
    // name                  x    y   width height font  sample                     accessible name, tool tip
    {"mnuBar",               0,   0, 1024,  26,  14, "",                           "Menus", ""},
    {"viewArea",             0,  26, 1024, 320,   0, "",                           "View", ""},
    {"fraView",              0,  26, 1024, 320,   0, "",                           "Fountain", ""},
    {"fraLegends",         704,  26,  320, 320,  10, "",                           "Legends", ""},
    {"timeStrip",            0, 346, 1024,  56,   0, "",                           "Time strip",
     "The music with the times of the choreography and the marks; click to go to a time, "
     "turn the wheel to zoom, with Shift to move along"},
    {"lblTime",             12, 403,  188,  48,  38, "100:00.0",                   "Current time",
     "The current time: minutes, seconds and tenths; a click shifts the commands of this time and "
     "all after it (F9), a click with the right button makes every step lead to the next command"},
    {"fraSong",            208, 406,  248,  42,   0, "",                           "Music", ""},
    {"lblSong",            218, 410,   44,  34,  13, "Music",                      "Music", "Play the music"},
    {"mmSong_prev",        266, 410,   42,  34,   0, "",                           "Return to the start",
     "Return to the start of the piece (Previous media key)"},
    {"mmSong_play",        312, 410,   42,  34,   0, "",                           "Play the music",
     "Play the music from the current time (Space)"},
    {"mmSong_pause",       358, 410,   42,  34,   0, "",                           "Pause the music",
     "Pause the music (Space)"},
    {"mmSong_stop",        404, 410,   42,  34,   0, "",                           "Stop the music",
     "Stop the music (Stop media key)"},
    {"fraEditing",         468, 406,  302,  42,   0, "",                           "Editing", ""},
    {"lblEditing",         478, 410,   52,  34,  13, "Editing",                    "Editing",
     "Listen while editing, and the marks"},
    {"mmEditing_play",     534, 410,   42,  34,   0, "",                           "Play a snippet",
     "Play three seconds of the music from the current time; "
     "without music, play the choreography (Space)"},
    {"mmEditing_add",      580, 410,   42,  34,   0, "",                           "Add a mark",
     "Mark the time that is playing (M)"},
    {"mmEditing_prev",     626, 410,   42,  34,   0, "",                           "Previous mark",
     "Go to the previous mark (Ctrl+Page Down)"},
    {"mmEditing_next",     672, 410,   42,  34,   0, "",                           "Next mark",
     "Go to the next mark (Ctrl+Page Up)"},
    {"mmEditing_clear",    718, 410,   42,  34,   0, "",                           "Clear the marks",
     "Clear the marks; without music, stop playing the choreography (Space)"},
    {"fraTime",            782, 406,  230,  42,   0, "",                           "Step in time", ""},
    {"lblTimeField_0",     790, 410,   24,  34,  11, "min",                        "Minutes", "Minutes of the current time"},
    {"updnTime_0",         814, 410,   48,  34,  15, "000",                        "Minutes",
     "Step by a minute; Shift makes it 2, Ctrl 5, Alt 10 minutes"},
    {"lblTimeField_1",     866, 410,   24,  34,  11, "sec",                        "Seconds", "Seconds of the current time"},
    {"updnTime_1",         890, 410,   48,  34,  15, "000",                        "Seconds",
     "Step by a second; Shift makes it 2, Ctrl 5, Alt 10 seconds"},
    {"lblTimeField_2",     942, 410,   24,  34,  11, "1/10",                       "Tenths", "Tenths of a second of the current time"},
    {"updnTime_2",         966, 410,   40,  34,  15, "00",                         "Tenths of a second",
     "Step by a tenth of a second; Shift makes it 2, Ctrl 5, Alt 10 tenths"},
    {"lblMarks",            12, 452,   46,  18,  13, "Marks",                      "Marks",
     "Points in the music, in tenths of a second"},
    {"lstMarks",            62, 452,  950,  18,  13, "",                           "Marks",
     "The marks; a click selects one, a double-click or Enter goes there"},
    {"lblABCodes",          12, 470, 1000,  16,  13,
     "099-000 016-000 017-000 018-000 019-000 020-000 021-000 022-000 023-000 049-000 050-000",
     "Commands at this time", "The commands at this time: address and data of each"},
    {"fraControls",          0, 486, 1024, 214,   0, "",                           "Control panel", ""},
    {"lblStored",           21, 702,  991,  19,  13, "",                           "Stored here",
     "What is stored at the current time"},
    {"lblPending",          21, 721,  991,  19,  13, "",                           "Pending here",
     "What the panel will write when you leave the current time"},
    {"lblControlFile",      12, 744,  420,  22,  13, "",                           "Control file",
     "The control file"},
    {"lblMusic",           444, 744,  350,  22,  13, "",                           "Music file",
     "The music file"},
    {"lblCounts",          806, 744,  206,  22,  13, "54,000 times, 594,000 commands", "Contents",
     "How many times the choreography has, and how many commands"},
});
// clang-format on

static_assert(std::string_view(std::ranges::find_if(kForm,
                                                    [](const FormControl& control) {
                                                        return std::string_view(control.name) ==
                                                               "lblABCodes";
                                                    })
                                   ->sample)
                  .size() == kLongestCodesLine);

bool Fits(const FormControl& control, fountain::ScaleFactors scale, const QFont& font)
{
    // Where it stands rounds its size; lines of one height shall have one size of letters.
    const double width = std::round(control.width * scale.x);
    const double height = std::round(control.height * scale.y);
    const QFontMetricsF metrics(font);
    return metrics.height() <= height &&
           metrics.horizontalAdvance(QString::fromLatin1(control.sample)) <= width;
}

QFont FontFamilies(const QStringList& families, QFont::StyleHint hint)
{
    QFont font;
    font.setFamilies(families);
    font.setStyleHint(hint);
    return font;
}

}  // namespace

std::span<const FormControl> Form()
{
    return kForm;
}

const FormControl& FormEntry(const char* name)
{
    const auto* const entry = std::ranges::find_if(kForm, [name](const FormControl& control) {
        return std::string_view(control.name) == name;
    });
    assert(entry != kForm.end());
    return *entry;
}

QRect Scaled(const QRectF& design, fountain::ScaleFactors scale)
{
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    const QPoint topLeft(whole(design.left() * scale.x), whole(design.top() * scale.y));
    const QPoint end(whole(design.right() * scale.x), whole(design.bottom() * scale.y));
    return {topLeft, QSize(end.x() - topLeft.x(), end.y() - topLeft.y())};
}

QRect PlaceOf(const FormControl& control, fountain::ScaleFactors scale)
{
    return Scaled({control.x, control.y, control.width, control.height}, scale);
}

QFont FormFont()
{
    return FontFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"),
                         QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")},
                        QFont::SansSerif);
}

QFont CodesFont()
{
    return FontFamilies({QStringLiteral("Liberation Mono"), QStringLiteral("DejaVu Sans Mono")},
                        QFont::Monospace);
}

QFont FontOf(const FormControl& control, fountain::ScaleFactors scale, QFont family)
{
    const auto pixels = [&](double factor) {
        return std::max(1, static_cast<int>(control.font * factor));
    };
    family.setPixelSize(pixels(std::max(scale.x, scale.y)));
    if (!Fits(control, scale, family))
        family.setPixelSize(pixels(std::min(scale.x, scale.y)));
    return family;
}

}  // namespace ui
