#pragma once

#include "platform/desktop/mailmessage.h"

namespace kestrum {

/// The feedback mail the settings screen offers: to the makers, with the subject
/// "Feedback Kestrum" and a body that leaves the user room above a dashed line and ends
/// with what the app and the device are.
namespace FeedbackMail {

inline constexpr auto kRecipient = "feedback@kestrum.org";
inline constexpr auto kSubject = "Feedback Kestrum";

/// The mail for the app `appName`, `appVersion` (`buildNumber`) on the device
/// `hardware` (see `hardwareIdentifier`) running `osVersion`.
MailMessage make(const QString& appName, const QString& appVersion, const QString& buildNumber,
                 const QString& hardware, const QString& osVersion);

/// The mail for this app on this device.
MailMessage forThisDevice();

/// The device's hardware identifier: the machine field of uname ("aarch64",
/// "x86_64"), or, should that not be valid UTF-8, the device's model name.
QString hardwareIdentifier();

} // namespace FeedbackMail

} // namespace kestrum
