#include "xdgmailcomposer.h"

#include <QProcess>
#include <QtGlobal>

namespace kestrum {

namespace {
// xdg-mime is a shell script that reads a few files; a second is plenty, and the
// question must not hang the settings screen if the script does.
constexpr int kQueryTimeoutMs = 2000;
} // namespace

bool XdgMailComposer::canSendMail() const
{
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"),
                                             QStringLiteral("x-scheme-handler/mailto")});
    if (!query.waitForFinished(kQueryTimeoutMs)) {
        qWarning("xdg-mime could not tell the mail program: %s", qPrintable(query.errorString()));
        query.kill();
        query.waitForFinished();
        return false;
    }
    // The answer is the handler's desktop file name, or nothing when none is set.
    return query.exitStatus() == QProcess::NormalExit && query.exitCode() == 0 &&
           !query.readAllStandardOutput().trimmed().isEmpty();
}

} // namespace kestrum
