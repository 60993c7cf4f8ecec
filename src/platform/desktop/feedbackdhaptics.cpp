#include "feedbackdhaptics.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace kestrum {

namespace {
// TriggerFeedback's timeout: -1 plays the event for as long as the theme says.
constexpr int kThemeLength = -1;
} // namespace

FeedbackdHaptics::FeedbackdHaptics(QDBusConnection connection, QString appId)
    : m_connection(std::move(connection))
    , m_appId(std::move(appId))
{}

QString FeedbackdHaptics::eventName(Feedback feedback)
{
    // feedbackd names events after what happened, not after how it should feel; of the
    // names it reserves for applications these are the closest:
    // - selection: "button-pressed", the input event of a control under the finger;
    // - success: "camera-shutter", a photo was taken (the meter's success is a logged
    //   exposure);
    // - error: "phone-failure", the one application event that stands for a failure.
    switch (feedback) {
    case Feedback::selection:
        return QStringLiteral("button-pressed");
    case Feedback::success:
        return QStringLiteral("camera-shutter");
    case Feedback::error:
        return QStringLiteral("phone-failure");
    }
    Q_UNREACHABLE();
}

void FeedbackdHaptics::play(Feedback feedback)
{
    if (!m_connection.isConnected())
        return;
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromLatin1(kService), QString::fromLatin1(kPath), QString::fromLatin1(kInterface),
        QStringLiteral("TriggerFeedback"));
    call << m_appId << eventName(feedback) << QVariantMap() << kThemeLength;
    // The reply (an event id, or an error when no daemon runs) is not waited for.
    m_connection.send(call);
}

} // namespace kestrum
