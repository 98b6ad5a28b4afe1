#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "document/choreography.h"

namespace timeline {

/// True while a script is printed; whoever clears it cancels the printing. The one global flag.
extern bool gblnPrint;

inline constexpr std::string_view kScriptFont = "Courier New";
inline constexpr int kScriptFontSize = 10;    ///< points
inline constexpr int kScriptPageLines = 66;   ///< with the header
inline constexpr int kScriptHeaderLines = 5;  ///< file name, date, page number, two empty lines

/// The printer that a script is printed on, line by line from the top of the first page on.
class Printer {
 public:
    virtual ~Printer() = default;

    /// Neither bold nor italic nor underlined. `size` in points.
    virtual void SetFont(std::string_view name, int size) = 0;
    virtual void SetBold(bool bold) = 0;
    virtual void PrintText(std::string_view text) = 0;
    virtual void NewPage() = 0;
    virtual void EndDocument() = 0;      ///< sends what was printed
    virtual void AbandonDocument() = 0;  ///< nothing that was printed remains
};

/// Prints a whole choreography as a script, every command described in English.
class ScriptPrint {
 public:
    /// `date` is the header's text. `letEventsRun` is called after every line and may clear
    /// `gblnPrint`. Everything outlives the printing.
    ScriptPrint(const document::Choreography& choreography, std::string date, Printer& printer,
                std::function<void()> letEventsRun);

    /// True when the document was sent, false when it was cancelled.
    bool PrintScript();

 private:
    void PrintHeader();
    void PrintLine(std::string_view text, bool bold);
    void PrintTime(std::int32_t time, const document::Commands& commands);

    const document::Choreography& choreography_;
    std::string date_;
    Printer& printer_;
    std::function<void()> letEventsRun_;
    int page_ = 0;
    int line_ = 0;
};

/// The script without pages: the lines of every time, each time followed by an empty line.
[[nodiscard]] std::string ScriptText(const document::Choreography& choreography);

/// The header's date: "M/D/YYYY at H:mm:ssAM". `hour` is 0..23.
[[nodiscard]] std::string ScriptDate(int year, int month, int day, int hour, int minute,
                                     int second);

}  // namespace timeline
