#include "fountain/colors.h"

namespace fountain {

// The wording is the fountain crew's own, misspelling and double blank included.
const std::array<std::string_view, 3> kLegendNotes{
    "Animations show instantaneous water level changes, but it is impossible for water to "
    "duplicate this achievement. The fountain will operate slightly behind the animation.",
    "Due to screen-resolution contraints and limitations of the graphical elements used, the "
    "animations provide only an  approximation of the actual capabilities of the Musical "
    "Fountain.",
    "The colors used for animation are intended only as visual cues for determining lighting "
    "combinations. Lighting does not mix as shown here. When multiple colors are used, all the "
    "colors will appear."};

}  // namespace fountain
