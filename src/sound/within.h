#pragma once

#include <chrono>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

namespace sound {

/// What `work` gives, or `late` when it is not done within `patience`. Late work goes on by itself
/// on its thread, so it must own all that it uses.
template <typename Result, typename Work>
Result Within(std::chrono::milliseconds patience, Result late, Work work)
{
    std::packaged_task<Result()> task(std::move(work));
    std::future<Result> result = task.get_future();
    std::thread thread;
    try {
        thread = std::thread(std::move(task));
    } catch (const std::system_error&) {
        return late;  // no thread to be had is as good as one that never ends
    }
    if (result.wait_for(patience) != std::future_status::ready) {
        thread.detach();
        return late;
    }
    thread.join();
    return result.get();
}

}  // namespace sound
