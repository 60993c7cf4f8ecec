#pragma once

#include <QObject>
#include <QUrl>

namespace kestrum {

class Clock;
class DesktopServices;
class Settings;

/// Asks the user, now and then, to rate Kestrum in the software centre: on the starts
/// that `Settings::shouldPromptForReview` picks, 3 s after the window has appeared (on
/// the injected clock). The request is recorded when it is made, whatever the answer.
class ReviewRequest : public QObject {
    Q_OBJECT

public:
    static constexpr qint64 kDelayAfterWindowMs = 3000;

    /// All three must outlive this object.
    ReviewRequest(Settings& settings, Clock& clock, DesktopServices& links,
                  QObject* parent = nullptr);

    /// The software centre's page of this app: `appstream:<app id>`.
    static QUrl softwareCentreLink();

    /// Called once the window of this (counted) start is shown: schedules the request
    /// when this start should ask.
    void scheduleAfterWindowShown();

public slots:
    /// The user chose to rate: opens the app's page in the software centre.
    void rate();

signals:
    /// Ask now: the review dialog shows.
    void requested();

private:
    Settings& m_settings;
    Clock& m_clock;
    DesktopServices& m_links;
};

} // namespace kestrum
