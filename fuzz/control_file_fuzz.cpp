#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "document/control_text.h"

namespace {

using document::Choreography;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void RequireOrder(const Choreography& show)
{
    Require(show.lngTime.size() == show.strCommands.size());
    Require(show.lngTime.size() == show.blnReset.size());
    Require(show.lngTime.back() == document::kEndSentinel);
    for (std::size_t slot = 0; slot < show.lngTime.size(); ++slot) {
        Require(slot == 0 || show.lngTime[slot - 1] < show.lngTime[slot]);
        Require((show.blnReset[slot] != 0) == document::BeginsWithReset(show.strCommands[slot]));
    }
}

}  // namespace

/// Whatever the bytes are, reading them gives a choreography in order that, once its times are the
/// tenths that a file can hold, opens as it was saved.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Choreography first;
    document::ReadControlText(first, {reinterpret_cast<const char*>(data), size});
    RequireOrder(first);

    Choreography tenths;
    document::ReadControlText(tenths, document::ControlText(first));
    RequireOrder(tenths);

    const std::string saved = document::ControlText(tenths);
    Choreography again;
    document::ReadControlText(again, saved);
    Require(again.lngTime == tenths.lngTime);
    Require(again.strCommands == tenths.strCommands);
    Require(!again.blnChanged);
    Require(document::ControlText(again) == saved);
    return 0;
}
