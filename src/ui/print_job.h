#pragma once

#include <QString>
#include <QWidget>
#include <string>

#include "document/choreography.h"

class QPrinter;

namespace ui {

enum class PrintOutcome { Printed, Cancelled, Failed };

/// Both print what `asked` holds now while `frmPrint` stands over `window`, and let the program go
/// on after every line. A failure is told to the user. Closing `window` does not end the printing,
/// and the program ends no sooner than it. Cancelled at once when a script is being printed
/// already.
///
/// The file appears under its name, in place of one that is there, only when it is whole.
[[nodiscard]] PrintOutcome PrintToPdf(const document::Choreography& asked, const QString& name,
                                      QWidget* window);
/// The pages that `printer` is set to print. It is sent nothing before the user can no longer
/// cancel: print queues keep what they were given of a document that is given up.
[[nodiscard]] PrintOutcome PrintToPrinter(const document::Choreography& asked, QPrinter& printer,
                                          QWidget* window);

/// The control file without its folder, for titles.
[[nodiscard]] QString DocumentName(const document::Choreography& show);

/// A PDF file beside the control file, with its name; one among the user's documents for a
/// choreography that was never saved.
[[nodiscard]] QString SuggestedPdfName(const document::Choreography& show);

/// The present date and time, for the header of the script.
[[nodiscard]] std::string ScriptDateOfNow();

/// How many pages the script has. A last page that is just filled is followed by an empty one.
[[nodiscard]] int ScriptPageCount(const document::Choreography& show);

}  // namespace ui
