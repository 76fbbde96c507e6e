// Part of the program when it is built under the sanitizers, where it ends too abruptly for their own look at
// its end: signal USR2 looks for memory that nothing points to any more, and tells of it on the standard
// error.

#include <csignal>
#include <thread>

#include <sanitizer/lsan_interface.h>

namespace {

struct LeakCheck {
    LeakCheck()
    {
        // All later threads inherit the mask, so that the signal waits for the one that asks for it.
        sigset_t wanted;
        sigemptyset(&wanted);
        sigaddset(&wanted, SIGUSR2);
        pthread_sigmask(SIG_BLOCK, &wanted, nullptr);
        std::thread([wanted] {
            for (int signal = 0; sigwait(&wanted, &signal) == 0;)
                __lsan_do_recoverable_leak_check();
        }).detach();
    }
};

const LeakCheck leakCheck;

} // namespace
