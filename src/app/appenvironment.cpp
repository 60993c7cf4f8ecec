#include "appenvironment.h"

#include <QCoreApplication>

namespace kestrum {

void AppEnvironment::dismissPresentedViews(const std::function<void()>& completion)
{
    // Popups close synchronously in their handlers, so the main screen is uncovered
    // by the time the completion runs.
    emit dismissPresentedViewsRequested();
    if (completion)
        completion();
}

void AppEnvironment::dismissPresentedViews(QJSValue completion)
{
    dismissPresentedViews([&completion] {
        if (completion.isCallable())
            completion.call();
    });
}

void AppEnvironment::refuseScreenshotsMode() const
{
    if (QCoreApplication::arguments().contains(QStringLiteral("SCREENSHOTS_MODE")))
        qFatal("Fatal error");
}

} // namespace kestrum
