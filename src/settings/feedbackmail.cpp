#include "feedbackmail.h"

#include "settings.h"

#include <QFile>
#include <QStringDecoder>

#include <sys/utsname.h>

namespace kestrum::FeedbackMail {

namespace {
// Where the kernel names the device: the device tree on phones, the firmware elsewhere.
constexpr const char* kModelFiles[] = {"/proc/device-tree/model",
                                       "/sys/devices/virtual/dmi/id/product_name"};

QString modelName()
{
    for (const char* path : kModelFiles) {
        QFile file(QString::fromLatin1(path));
        if (file.open(QIODevice::ReadOnly))
            return QString::fromUtf8(file.readAll()).remove(QChar(0)).trimmed();
    }
    return QString();
}
} // namespace

MailMessage make(const QString& appName, const QString& appVersion, const QString& buildNumber,
                 const QString& hardware, const QString& osVersion)
{
    const QString body =
        QStringLiteral("\n\n-------\n"
                       "Please let me know what you think about the app above this line.\n"
                       "If you need help, please describe the issue as detailed as possible "
                       "and attach screenshots if possible.\n\n") +
        appName + u' ' + appVersion + QStringLiteral(" (") + buildNumber + QStringLiteral(")\n") +
        hardware + u'\n' + osVersion;
    return {QString::fromLatin1(kRecipient), QString::fromLatin1(kSubject), body};
}

MailMessage forThisDevice()
{
    return make(Settings::appName(), Settings::appVersion(), Settings::buildNumber(),
                hardwareIdentifier(), Settings::osVersion());
}

QString hardwareIdentifier()
{
    utsname system{};
    if (uname(&system) != 0)
        return modelName();
    auto decoder = QStringDecoder(QStringDecoder::Utf8);
    const QString machine = decoder(QByteArrayView(system.machine));
    return decoder.hasError() ? modelName() : machine;
}

} // namespace kestrum::FeedbackMail
