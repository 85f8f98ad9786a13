#include "platform/linux/process/ProcessorTimeAlarm.h"

#include <cassert>
#include <cmath>
#include <csignal>
#include <pthread.h>
#include <system_error>
#include <time.h>
#include <unistd.h>
#include <utility>

namespace quorvane::platform {
namespace {

/// Reaches the alarm's thread alone, so that it does not matter who else uses it.
int alarmSignal() {
    return SIGRTMIN;
}

/// The thread that the signal goes to. Some C libraries have the field without a name for it.
pid_t& receiver(sigevent& event) {
#ifdef sigev_notify_thread_id
    return event.sigev_notify_thread_id;
#else
    return event._sigev_un._tid;
#endif
}

timespec timeOf(double seconds) {
    const double whole = std::floor(seconds);
    return {.tv_sec = static_cast<time_t>(whole), .tv_nsec = static_cast<long>((seconds - whole) * 1e9)};
}

/// The kernel's timer; its signal goes to the thread that has made it.
class CpuTimer {
public:
    explicit CpuTimer(double cpuSeconds) {
        sigevent event{};
        event.sigev_notify = SIGEV_THREAD_ID;
        event.sigev_signo = alarmSignal();
        receiver(event) = ::gettid();
        isThere_ = ::timer_create(CLOCK_PROCESS_CPUTIME_ID, &event, &id_) == 0;
        const itimerspec once{.it_interval = {}, .it_value = timeOf(cpuSeconds)};
        isSet_ = isThere_ && ::timer_settime(id_, 0, &once, nullptr) == 0;
    }
    CpuTimer(const CpuTimer&) = delete;
    CpuTimer& operator=(const CpuTimer&) = delete;
    ~CpuTimer() {
        if (isThere_) ::timer_delete(id_);
    }
    [[nodiscard]] bool isSet() const { return isSet_; }

private:
    timer_t id_{};
    bool isThere_ = false;
    bool isSet_ = false;
};

}  // namespace

std::unique_ptr<ProcessorTimeAlarm> ProcessorTimeAlarm::set(double cpuSeconds, std::function<void()> fire) {
    assert(cpuSeconds > 0);
    std::unique_ptr<ProcessorTimeAlarm> alarm(new ProcessorTimeAlarm(std::move(fire)));
    if (!alarm->begin(cpuSeconds)) alarm.reset();
    return alarm;
}

ProcessorTimeAlarm::~ProcessorTimeAlarm() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isCancelled_ = true;
        // A thread that rings has left its shelter: the signal would end the process.
        if (!isRinging_) ::pthread_kill(thread_.native_handle(), alarmSignal());
    }
    thread_.join();
}

bool ProcessorTimeAlarm::begin(double cpuSeconds) {
    std::promise<bool> promise;
    auto hasBegun = promise.get_future();
    try {
        thread_ = std::thread(
            [this, cpuSeconds, promise = std::move(promise)]() mutable { run(cpuSeconds, std::move(promise)); });
    } catch (const std::system_error&) {  // the machine has no thread left
        return false;
    }
    return hasBegun.get();  // from then on the thread can be sent its signal
}

void ProcessorTimeAlarm::run(double cpuSeconds, std::promise<bool> hasBegun) {
    pthread_setname_np(pthread_self(), "cpu-alarm");
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    {
        const CpuTimer timer(cpuSeconds);
        hasBegun.set_value(timer.isSet());
        if (!timer.isSet() || !waitUntilItRings()) return;
    }
    // Threads and programs that `fire` starts get the mask of this thread, and shall get the usual one.
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    fire_();
}

/// False if it is cancelled.
bool ProcessorTimeAlarm::waitUntilItRings() {
    sigset_t awaited;
    sigemptyset(&awaited);
    sigaddset(&awaited, alarmSignal());
    for (;;) {
        siginfo_t info{};
        if (sigwaitinfo(&awaited, &info) < 0) continue;  // a tool has stopped the thread meanwhile
        const std::lock_guard lock(mutex_);
        if (isCancelled_) return false;
        if (info.si_code != SI_TIMER) continue;  // somebody else's
        isRinging_ = true;
        return true;
    }
}

}  // namespace quorvane::platform
