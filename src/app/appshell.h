#pragma once

#include "appstartup.h"

#include <QObject>
#include <QPointer>

#include <functional>

class QQuickWindow;

namespace kestrum {

class AdapterFactory;
class Clock;
class DependencyContainer;
class LocationManager;
class ReviewRequest;

/// The app around its one window: the start-up sequence, the launcher's quick actions,
/// a later start's hand-over, and the review request.
///
/// It has a location manager of its own, beside the container's, from which logged
/// photos take their position; while it exists.
class AppShell : public QObject {
    Q_OBJECT

public:
    /// The factory and the container must outlive the shell.
    AppShell(AdapterFactory& adapters, DependencyContainer& container, QObject* parent = nullptr);
    ~AppShell() override;

    /// The start: fills the container, performs the quick action that started the app
    /// (so the window shows its profile from the first frame), gives the window the icon
    /// the launcher shows, shows the window through `showWindow` (which may give none, as
    /// in tests), counts the start and, when this start should ask for a review, asks 3 s
    /// later. From then on the quick actions are rewritten whenever the app leaves the
    /// foreground and when it quits.
    void start(const StartupOptions& options, const std::function<QQuickWindow*()>& showWindow);

    /// A quick action performed while the app runs: switches to its profile. Returns
    /// whether it was handled.
    bool performQuickAction(const QuickAction& action);
    /// Another start's command line: the window comes to the front and, when it carries
    /// a quick action, whatever is presented closes before the action is performed.
    void takeHandOver(const QStringList& arguments);
    /// Writes one quick action per profile for the launcher.
    bool publishQuickActions();

signals:
    /// The review is asked for now.
    void reviewRequested();

private:
    void showReviewDialog();

    AdapterFactory& m_adapters;
    DependencyContainer& m_container;
    std::unique_ptr<Clock> m_clock; // paces the own location manager's geocoder
    std::unique_ptr<LocationManager> m_locationManager;
    QPointer<QQuickWindow> m_window;
    ReviewRequest* m_review = nullptr; // a child of this object
};

} // namespace kestrum
