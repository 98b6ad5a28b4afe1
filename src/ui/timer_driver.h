#pragma once

#include <QObject>
#include <QTimer>
#include <array>
#include <cstdint>

#include "editor/editor.h"

namespace ui {

/// Lets real time pass for the editor: ticks its timers, polls its music player and steps its
/// snippet. Whatever has happened is announced by `Ticked`.
class TimerDriver final : public QObject {
    Q_OBJECT

 public:
    TimerDriver(editor::Editor& editor, QObject* parent);

    /// Looks at what ticks now. To be called after every event that may have changed it. Nothing
    /// wakes the program up while nothing ticks.
    void Observe();
    /// Nothing ticks any more, until the next `Observe`.
    void Halt();

 signals:
    void Ticked();

 private:
    struct Ticker {
        QTimer timer;
        std::uint32_t periods = 0;
    };

    void ObserveTicker(editor::Editor::TimerName name);
    void ObservePlayer();
    void Poll();

    editor::Editor& editor_;
    std::array<Ticker, editor::Editor::kTimerCount> tickers_;
    QTimer poll_;
};

}  // namespace ui
