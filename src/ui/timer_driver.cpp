#include "ui/timer_driver.h"

#include <algorithm>

namespace ui {
namespace {

using editor::Editor;

constexpr int kSnippetPoll = 10;  // ms

}  // namespace

TimerDriver::TimerDriver(Editor& editor, QObject* parent) : QObject(parent), editor_(editor)
{
    for (int name = 0; name < Editor::kTimerCount; ++name) {
        QTimer& timer = tickers_[static_cast<std::size_t>(name)].timer;
        timer.setParent(this);
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, this, [this, name] {
            editor_.Tick(static_cast<Editor::TimerName>(name));
            emit Ticked();
        });
    }
    poll_.setParent(this);
    poll_.setTimerType(Qt::PreciseTimer);
    poll_.setSingleShot(true);
    connect(&poll_, &QTimer::timeout, this, &TimerDriver::Poll);
}

void TimerDriver::Observe()
{
    for (int name = 0; name < Editor::kTimerCount; ++name)
        ObserveTicker(static_cast<Editor::TimerName>(name));
    ObservePlayer();
}

void TimerDriver::ObserveTicker(Editor::TimerName name)
{
    Ticker& ticker = tickers_[static_cast<std::size_t>(name)];
    const fountain::Timer& timer = editor_.TimerOf(name);
    // The three seconds that one listens to are meant for the ear: the picture stands still.
    if (!timer.Ticks() || editor_.Playback().SnippetPlays()) {
        ticker.timer.stop();
        return;
    }
    if (ticker.timer.isActive() && ticker.periods == timer.Periods())
        return;
    ticker.periods = timer.Periods();
    ticker.timer.start(timer.Interval());
}

void TimerDriver::ObservePlayer()
{
    int delay = editor_.mmSong().PollDelay();
    if (editor_.Playback().SnippetPlays())
        delay = delay < 0 ? kSnippetPoll : std::min(delay, kSnippetPoll);
    if (delay < 0)
        poll_.stop();
    else if (!poll_.isActive() || poll_.remainingTime() > delay)
        poll_.start(delay);
}

void TimerDriver::Poll()
{
    editor_.mmSong().Poll();
    editor_.StepSnippet();
    emit Ticked();
}

void TimerDriver::Halt()
{
    for (Ticker& ticker : tickers_)
        ticker.timer.stop();
    poll_.stop();
}

}  // namespace ui
