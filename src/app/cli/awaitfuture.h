#pragma once

#include <QEventLoop>
#include <QFuture>
#include <QFutureWatcher>

namespace kestrum {

/// Runs the calling thread's event loop until `future` finishes, then yields its result
/// (rethrowing its failure). For command-line tools and benchmarks, which have nothing
/// else to do meanwhile; continuations attached with a context on this thread run
/// inside the wait.
template <typename T> T awaitFuture(QFuture<T> future)
{
    QFutureWatcher<T> watcher;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcher<T>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(future);
    if (!future.isFinished())
        loop.exec();
    if constexpr (std::is_void_v<T>)
        future.waitForFinished(); // rethrows the failure
    else
        return future.result(); // rethrows the failure
}

} // namespace kestrum
