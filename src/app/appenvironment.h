#pragma once

#include <QJSValue>
#include <QObject>

#include <functional>

namespace kestrum {

/// What the window tells the views inside it: its safe areas, and a way to close
/// whatever sheets and dialogs are open over the main screen (as a quick action that
/// arrives while one is open does before it switches the profile).
///
/// Every sheet and dialog listens to `dismissPresentedViewsRequested` and closes at once,
/// without its exit transition.
class AppEnvironment : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool hasNotch READ hasNotch CONSTANT)
    Q_PROPERTY(double topSafeAreaInset READ topSafeAreaInset CONSTANT)

public:
    using QObject::QObject;

    /// Whether the screen has a bottom safe-area inset (a notch-style phone, no home
    /// button). Qt 6.4 reports no safe areas on any Linux platform, so no window has one.
    bool hasNotch() const { return false; }
    /// The window's top safe-area inset in points; 0 for the same reason.
    double topSafeAreaInset() const { return 0.0; }

    /// Closes every open sheet and dialog, then runs `completion`.
    void dismissPresentedViews(const std::function<void()>& completion);
    /// The same for QML: `completion` is a function, or undefined for none.
    Q_INVOKABLE void dismissPresentedViews(QJSValue completion);

    /// Stops the program when it was launched with "SCREENSHOTS_MODE": a run made for
    /// store screenshots must never build the main screen. Called by the window's
    /// content before it shows anything.
    Q_INVOKABLE void refuseScreenshotsMode() const;

signals:
    /// Every open sheet and dialog closes now.
    void dismissPresentedViewsRequested();
};

} // namespace kestrum
