#pragma once

#include <QImage>

#include "editor/editor.h"

namespace cli {

/// Twelve moments of the show, evenly spread from its start to its end, 4 x 3, each with its time
/// below. The show is played from its start, so that sweeps, pulsation and lights move. Needs a
/// QGuiApplication for the text; leaves the editor at the last moment.
[[nodiscard]] QImage ContactSheet(editor::Editor& editor);

}  // namespace cli
