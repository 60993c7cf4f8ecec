#include "reviewrequest.h"

#include "platform/desktop/desktopservices.h"
#include "platform/time/clock.h"
#include "settings/settings.h"

namespace kestrum {

ReviewRequest::ReviewRequest(Settings& settings, Clock& clock, DesktopServices& links,
                             QObject* parent)
    : QObject(parent)
    , m_settings(settings)
    , m_clock(clock)
    , m_links(links)
{}

QUrl ReviewRequest::softwareCentreLink()
{
    return QUrl(QStringLiteral("appstream:" KESTRUM_APP_ID));
}

void ReviewRequest::scheduleAfterWindowShown()
{
    if (!m_settings.shouldPromptForReview())
        return;
    m_clock.callAfter(kDelayAfterWindowMs, this, [this] {
        emit requested();
        m_settings.recordReviewPrompt();
    });
}

void ReviewRequest::rate()
{
    if (!m_links.openUrl(softwareCentreLink()))
        qWarning("no software centre opened %s", qPrintable(softwareCentreLink().toString()));
}

} // namespace kestrum
