#include "hapticsfacade.h"

#include "app/qmlsingleton.h"
#include "platform/desktop/haptics.h"

namespace kestrum {

HapticsFacade::HapticsFacade(Haptics& haptics, QObject* parent)
    : QObject(parent)
    , m_haptics(haptics)
{}

HapticsFacade* HapticsFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "Haptics");
}

void HapticsFacade::selectionChanged()
{
    m_haptics.play(Haptics::Feedback::selection);
}

void HapticsFacade::notifySuccess()
{
    m_haptics.play(Haptics::Feedback::success);
}

void HapticsFacade::notifyError()
{
    m_haptics.play(Haptics::Feedback::error);
}

} // namespace kestrum
