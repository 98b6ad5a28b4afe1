#pragma once

#include <QObject>
#include <QThreadPool>
#include <functional>

namespace ui {

/// Does work, one after another, while the window goes on. What is not done when it goes is
/// forgotten; it waits only for what has begun.
class BackgroundWork final : public QObject {
    Q_OBJECT

 public:
    explicit BackgroundWork(QObject* parent = nullptr);
    ~BackgroundWork() override;
    Q_DISABLE_COPY_MOVE(BackgroundWork)

    /// `work` is done on another thread, then `done` on this one.
    void Run(std::function<void()> work, std::function<void()> done);
    /// What was asked for is no longer wanted: `done` is not called for it.
    void Forget();

 private:
    QThreadPool pool_;
    int round_ = 0;  // those of an earlier one are forgotten
};

}  // namespace ui
