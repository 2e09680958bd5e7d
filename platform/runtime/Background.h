// A job on a thread of its own, so that nobody waits for a medium that takes long: one at a time, its result taken when
// it is there. The job knows only what was given to it by value.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

namespace runtime {

template <class Result>
class Background {
public:
    using Job = std::function<Result()>;

    Background() = default;
    ~Background() = default;  // does not wait: a job that is under way is left to end by itself
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    // Returns at once. False, and nothing is done, while a job is under way or where the system gives no thread.
    bool Start(Job tJob) {
        {
            const std::scoped_lock tLock(m_pState->tMutex);
            if (m_pState->bBusy) return false;
            m_pState->bBusy = true;
        }
        try {
            std::thread([pState = m_pState, tRun = std::move(tJob)] { pState->End(tRun()); }).detach();
        } catch (const std::system_error&) {
            m_pState->End(std::nullopt);  // GCOVR_EXCL_BR_LINE: the compiler asks what of nothing is to be destroyed
            return false;
        }
        return true;
    }
    // The result of the latest job that has ended, once.
    std::optional<Result> Take() {
        const std::scoped_lock tLock(m_pState->tMutex);
        return std::exchange(m_pState->tResult, std::nullopt);
    }
    // Until no job is under way.
    void Wait() {
        std::unique_lock tLock(m_pState->tMutex);
        m_pState->tEnded.wait(tLock, [this] { return !m_pState->bBusy; });
    }

private:
    struct State {  // the job's as well, which may live on
        void End(std::optional<Result> t) {
            {
                const std::scoped_lock tLock(tMutex);
                bBusy = false;
                tResult = std::move(t);
            }
            tEnded.notify_all();
        }

        std::mutex tMutex;  // for all that follows
        std::condition_variable tEnded;
        bool bBusy = false;
        std::optional<Result> tResult;
    };
    std::shared_ptr<State> m_pState = std::make_shared<State>();
};

}  // namespace runtime
