#pragma once

#include "haptics.h"

#include <QDBusConnection>
#include <QString>

namespace kestrum {

/// Haptics through feedbackd, the feedback daemon of Linux phones, on the session bus
/// (`org.sigxcpu.Feedback`). The daemon's theme and the user's feedback profile decide
/// whether an event vibrates, sounds or does nothing. Calls are sent without waiting
/// for an answer; without a bus or without the daemon nothing happens.
class FeedbackdHaptics final : public Haptics {
public:
    static constexpr auto kService = "org.sigxcpu.Feedback";
    static constexpr auto kPath = "/org/sigxcpu/Feedback";
    static constexpr auto kInterface = "org.sigxcpu.Feedback";

    /// Events are sent as coming from the app `appId` (its desktop entry's id).
    FeedbackdHaptics(QDBusConnection connection, QString appId);

    void play(Feedback feedback) override;

    /// The event of feedbackd's event naming that stands nearest to `feedback`.
    static QString eventName(Feedback feedback);

private:
    QDBusConnection m_connection;
    QString m_appId;
};

} // namespace kestrum
