#include "ui/background_work.h"

#include <utility>

namespace ui {

BackgroundWork::BackgroundWork(QObject* parent) : QObject(parent)
{
    pool_.setMaxThreadCount(1);
}

BackgroundWork::~BackgroundWork()
{
    pool_.clear();
    pool_.waitForDone();
}

void BackgroundWork::Run(std::function<void()> work, std::function<void()> done)
{
    pool_.start([this, work = std::move(work), done = std::move(done), round = round_] {
        work();
        const auto deliver = [this, done, round] {
            if (round == round_)
                done();
        };
        QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
    });
}

void BackgroundWork::Forget()
{
    ++round_;
    pool_.clear();
}

}  // namespace ui
