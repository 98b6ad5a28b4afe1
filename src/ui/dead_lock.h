#pragma once

#include <QString>

namespace ui {

/// Removes a lock file that was made and never signed, because its process died in between: it
/// would be nobody's for ever, and whoever waits for it waits for half a minute.
void RemoveDeadLock(const QString& lockFile);

}  // namespace ui
