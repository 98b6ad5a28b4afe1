#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "document/control_text.h"
#include "require_order.h"

using document::Choreography;
using fuzzing::Require;
using fuzzing::RequireOrder;

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
