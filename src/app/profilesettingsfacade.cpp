#include "profilesettingsfacade.h"

#include "settings/limitchoices.h"
#include "settings/profilesettings.h"
#include "settings/settings.h"

namespace kestrum {

ProfileSettingsFacade::ProfileSettingsFacade(const QString& profileId, Settings& settings,
                                             PreferenceStore& store, QObject* parent)
    : QObject(parent)
    , m_profileId(profileId)
    , m_settings(settings)
    , m_store(store)
{
    using P = ProfileSettings;
    follow();
    m_minimumApertures = choices<Aperture>(true, &P::minimumAperture, &P::setMinimumAperture,
                                           &P::fractionForAperture);
    m_maximumApertures = choices<Aperture>(false, &P::maximumAperture, &P::setMaximumAperture,
                                           &P::fractionForAperture);
    m_minimumSpeeds =
        choices<ShutterSpeed>(true, &P::minimumSpeed, &P::setMinimumSpeed, &P::fractionForSpeed);
    m_maximumSpeeds =
        choices<ShutterSpeed>(false, &P::maximumSpeed, &P::setMaximumSpeed, &P::fractionForSpeed);
    m_minimumISOs = choices<ISO>(true, &P::minimumISO, &P::setMinimumISO, &P::fractionForISO);
    m_maximumISOs = choices<ISO>(false, &P::maximumISO, &P::setMaximumISO, &P::fractionForISO);
    connect(&settings, &Settings::currentProfileSettingsChanged, this,
            &ProfileSettingsFacade::follow);
}

ProfileSettingsFacade::~ProfileSettingsFacade() = default;

template <typename C>
ExposureScaleModel* ProfileSettingsFacade::choices(bool minimum,
                                                   C (ProfileSettings::*limit)() const,
                                                   void (ProfileSettings::*setLimit)(const C&),
                                                   Fraction (ProfileSettings::*fraction)() const)
{
    ExposureScaleModel::Source<C> source{
        [this, minimum, fraction] {
            const Fraction step = (profile().*fraction)();
            return minimum ? minimumChoices<C>(step) : maximumChoices<C>(step);
        },
        [this, limit] { return (profile().*limit)(); },
        [this, setLimit](const C& entry) {
            write([&](ProfileSettings& p) { (p.*setLimit)(entry); });
        },
    };
    return new ExposureScaleModel(std::move(source), this);
}

void ProfileSettingsFacade::follow()
{
    ProfileSettings* target = nullptr;
    if (m_profileId == m_settings.currentProfileID()) {
        target = m_settings.currentProfileSettings();
        m_own.reset();
    } else {
        if (!m_own)
            m_own = std::make_unique<ProfileSettings>(m_profileId, m_store);
        target = m_own.get();
    }
    if (target == m_profile)
        return;
    disconnect(m_profileConnection);
    m_profile = target;
    m_profileConnection = connect(target, &ProfileSettings::objectWillChange, this,
                                  &ProfileSettingsFacade::scheduleRefresh);
}

void ProfileSettingsFacade::scheduleRefresh()
{
    m_refresh.schedule();
}

void ProfileSettingsFacade::refresh()
{
    for (ExposureScaleModel* model : {m_minimumApertures, m_maximumApertures, m_minimumSpeeds,
                                      m_maximumSpeeds, m_minimumISOs, m_maximumISOs})
        model->refresh();
    emit changed();
}

template <typename Write> void ProfileSettingsFacade::write(Write write)
{
    write(profile());
    refresh();
}

ExposureEnums::Step ProfileSettingsFacade::fractionForAperture() const
{
    return qmlStep(profile().fractionForAperture());
}

void ProfileSettingsFacade::setFractionForAperture(ExposureEnums::Step step)
{
    write([step](ProfileSettings& p) { p.setFractionForAperture(fractionFromQml(step)); });
}

ExposureEnums::Step ProfileSettingsFacade::fractionForSpeed() const
{
    return qmlStep(profile().fractionForSpeed());
}

void ProfileSettingsFacade::setFractionForSpeed(ExposureEnums::Step step)
{
    write([step](ProfileSettings& p) { p.setFractionForSpeed(fractionFromQml(step)); });
}

ExposureEnums::Step ProfileSettingsFacade::fractionForISO() const
{
    return qmlStep(profile().fractionForISO());
}

void ProfileSettingsFacade::setFractionForISO(ExposureEnums::Step step)
{
    write([step](ProfileSettings& p) { p.setFractionForISO(fractionFromQml(step)); });
}

ExposureEnums::Mode ProfileSettingsFacade::mode() const
{
    return qmlMode(profile().mode());
}

void ProfileSettingsFacade::setMode(ExposureEnums::Mode mode)
{
    write([mode](ProfileSettings& p) { p.setMode(modeFromQml(mode)); });
}

ComponentView ProfileSettingsFacade::minimumAperture() const
{
    return ComponentView(profile().minimumAperture());
}

ComponentView ProfileSettingsFacade::maximumAperture() const
{
    return ComponentView(profile().maximumAperture());
}

ComponentView ProfileSettingsFacade::minimumSpeed() const
{
    return ComponentView(profile().minimumSpeed());
}

ComponentView ProfileSettingsFacade::maximumSpeed() const
{
    return ComponentView(profile().maximumSpeed());
}

ComponentView ProfileSettingsFacade::minimumISO() const
{
    return ComponentView(profile().minimumISO());
}

ComponentView ProfileSettingsFacade::maximumISO() const
{
    return ComponentView(profile().maximumISO());
}

double ProfileSettingsFacade::isoSpeed() const
{
    return profile().iso().value;
}

void ProfileSettingsFacade::setISOSpeed(double iso)
{
    write([iso](ProfileSettings& p) { p.setISO(ISO{Fraction::full, iso, QString()}); });
}

double ProfileSettingsFacade::fNumber() const
{
    return profile().aperture().value;
}

void ProfileSettingsFacade::setFNumber(double fNumber)
{
    write([fNumber](ProfileSettings& p) {
        p.setAperture(Aperture{Fraction::full, fNumber, QString()});
    });
}

double ProfileSettingsFacade::exposureTimeS() const
{
    return profile().speed().value;
}

void ProfileSettingsFacade::setExposureTimeS(double seconds)
{
    write([seconds](ProfileSettings& p) {
        p.setSpeed(ShutterSpeed{Fraction::full, seconds, QString()});
    });
}

} // namespace kestrum
