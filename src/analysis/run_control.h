#pragma once
// How a caller follows and stops a long analysis: a progress callback, a
// cancel flag that another thread may set, and the threads to use.
#include <atomic>
#include <functional>

namespace qm {

struct RunControl
{
    /// Called with the work done and the whole, from the thread that
    /// started the analysis, never from two threads at once.
    std::function<void(int done, int total)> progress;
    /// Read between pieces of work; once true the analysis returns early
    /// with what it had, marked as cancelled.
    const std::atomic<bool>* cancel = nullptr;
    /// Threads to work on; 0 takes the machine's cores. The result is the
    /// same for any number.
    int threads = 0;

    bool cancelled() const { return cancel && cancel->load(std::memory_order_relaxed); }
};

} // namespace qm
