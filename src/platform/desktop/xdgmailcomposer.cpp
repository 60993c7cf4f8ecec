#include "xdgmailcomposer.h"

#include "desktopservices.h"

#include <QProcess>
#include <QtConcurrent/QtConcurrentRun>
#include <QtGlobal>

namespace kestrum {

namespace {
// xdg-mime is a shell script that reads a few files; a second is plenty, and the
// question must not keep the worker if the script hangs.
constexpr int kQueryTimeoutMs = 2000;

bool mailProgramIsSet()
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
} // namespace

XdgMailComposer::XdgMailComposer(DesktopServices& links)
    : m_links(links)
{}

QFuture<bool> XdgMailComposer::canSendMail() const
{
    return QtConcurrent::run(mailProgramIsSet);
}

bool XdgMailComposer::compose(const MailMessage& message)
{
    return m_links.openUrl(message.toMailtoUrl());
}

} // namespace kestrum
