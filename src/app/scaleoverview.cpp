#include "scaleoverview.h"

#include "app/dependencycontainer.h"
#include "exposure/calculator.h"
#include "exposure/scale.h"
#include "settings/profilesettings.h"

#include <QTimer>

namespace kestrum {

namespace {
template <typename C> QStringList signedDisplays(const std::vector<C>& entries)
{
    QStringList texts;
    for (const C& entry : entries)
        texts.append(entry.signedDisplay());
    return texts;
}
} // namespace

ScaleOverview::ScaleOverview(ProfileSettings& settings, QObject* parent)
    : QObject(parent)
    , m_settings(settings)
{
    // The settings announce before they write: re-read once the write is done.
    connect(&m_settings, &ProfileSettings::objectWillChange, this,
            [this] { QTimer::singleShot(0, this, &ScaleOverview::changed); });
}

ScaleOverview* ScaleOverview::create(QQmlEngine*, QJSEngine*)
{
    return new ScaleOverview(DependencyContainer::shared().profileSettings());
}

QStringList ScaleOverview::apertures() const
{
    return signedDisplays(Calculator([this] { return &m_settings; }).possibleApertures());
}

QStringList ScaleOverview::speeds() const
{
    return signedDisplays(Calculator([this] { return &m_settings; }).possibleSpeeds());
}

QStringList ScaleOverview::isos() const
{
    return signedDisplays(cutScale<ISO>(scale<ISO>(m_settings.fractionForISO()),
                                        m_settings.minimumISO().value,
                                        m_settings.maximumISO().value));
}

QStringList ScaleOverview::compensations() const
{
    return signedDisplays(scale<Compensation>(m_settings.fractionForISO()));
}

QString ScaleOverview::steps() const
{
    return tr("Aperture %1 · Speed %2 · ISO %3")
        .arg(rawValue(m_settings.fractionForAperture()), rawValue(m_settings.fractionForSpeed()),
             rawValue(m_settings.fractionForISO()));
}

QString ScaleOverview::mode() const
{
    return rawValue(m_settings.mode()).toUpper();
}

} // namespace kestrum
