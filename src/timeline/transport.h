#pragma once

#include <array>
#include <cstdint>

namespace timeline {

enum Menu : int { kFileMenu = 0, kDisplayMenu = 1, kHelpMenu = 2 };

/// The buttons of the music player's row.
struct SongButtons {
    bool prev = false;
    bool play = false;
    bool pause = false;
    bool stop = false;

    friend bool operator==(const SongButtons&, const SongButtons&) = default;
};

/// The buttons of the editing row.
struct EditingButtons {
    bool play = true;
    bool add = false;
    bool prev = false;
    bool next = false;
    bool clear = false;

    friend bool operator==(const EditingButtons&, const EditingButtons&) = default;
};

/// What the user may operate at the moment.
struct Transport {
    SongButtons mmSong;
    EditingButtons mmEditing;
    bool updnTimeEnabled = true;
    bool fraControlsEnabled = true;
    /// Item i of a menu is enabled when bit 2^i is set; by `Menu`.
    std::array<std::uint16_t, 3> menuMasks{515, 63, 11};

    [[nodiscard]] bool ItemEnabled(Menu menu, int item) const
    {
        return (menuMasks[static_cast<std::size_t>(menu)] >> item & 1) != 0;
    }
    friend bool operator==(const Transport&, const Transport&) = default;
};

}  // namespace timeline
