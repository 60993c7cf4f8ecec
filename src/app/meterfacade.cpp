#include "meterfacade.h"

#include "app/qmlsingleton.h"
#include "exposure/calculationcontroller.h"
#include "exposure/lightvalue.h"
#include "settings/settings.h"

namespace kestrum {

MeterFacade::MeterFacade(CalculationController& meter, Settings& settings, QObject* parent)
    : QObject(parent)
    , m_meter(meter)
    , m_settings(settings)
    , m_isoScale(new ExposureScaleModel(
          ExposureScaleModel::Source<ISO>{[&meter] { return meter.possibleISOs(); },
                                          [&meter] { return meter.iso(); },
                                          [&meter](const ISO& iso) { meter.setISO(iso); }},
          this))
    , m_apertureScale(new ExposureScaleModel(
          ExposureScaleModel::Source<Aperture>{
              [&meter] { return meter.possibleApertures(); }, [&meter] { return meter.aperture(); },
              [&meter](const Aperture& aperture) { meter.setAperture(aperture); }},
          this))
    , m_speedScale(new ExposureScaleModel(
          ExposureScaleModel::Source<ShutterSpeed>{
              [&meter] { return meter.possibleSpeeds(); }, [&meter] { return meter.speed(); },
              [&meter](const ShutterSpeed& speed) { meter.setSpeed(speed); }},
          this))
    , m_compensationScale(new ExposureScaleModel(
          ExposureScaleModel::Source<Compensation>{
              [&meter] { return meter.possibleCompensations(); },
              [&meter] { return meter.compensation(); },
              [&meter](const Compensation& compensation) { meter.setCompensation(compensation); }},
          this))
    , m_manualScale(new ExposureScaleModel(ExposureScaleModel::Source<Compensation>{
                                               [&meter] { return meter.possibleCompensations(); },
                                               [&meter] { return meter.manualExposure(); },
                                               {},
                                               true},
                                           this))
{
    using C = CalculationController;
    connect(&meter, &C::modeChanged, this, &MeterFacade::modeChanged);
    connect(&meter, &C::holdChanged, this, &MeterFacade::holdChanged);
    connect(&meter, &C::isoChanged, this, &MeterFacade::isoChanged);
    connect(&meter, &C::apertureChanged, this, &MeterFacade::apertureChanged);
    connect(&meter, &C::speedChanged, this, &MeterFacade::speedChanged);
    connect(&meter, &C::compensationChanged, this, &MeterFacade::compensationChanged);
    connect(&meter, &C::manualExposureChanged, this, &MeterFacade::manualExposureChanged);
    connect(&meter, &C::exposureErrorChanged, this, &MeterFacade::exposureErrorChanged);
    connect(&meter, &C::lightValueChanged, this, &MeterFacade::lightValueTextChanged);
    connect(&meter, &C::isoChanged, m_isoScale, &ExposureScaleModel::refresh);
    connect(&meter, &C::apertureChanged, m_apertureScale, &ExposureScaleModel::refresh);
    connect(&meter, &C::speedChanged, m_speedScale, &ExposureScaleModel::refresh);
    connect(&meter, &C::compensationChanged, m_compensationScale, &ExposureScaleModel::refresh);
    connect(&meter, &C::manualExposureChanged, m_manualScale, &ExposureScaleModel::refresh);
    // The composition root points the meter at each new current profile first.
    connect(&settings, &Settings::currentProfileSettingsChanged, this,
            &MeterFacade::followCurrentProfile);
    followCurrentProfile();
}

MeterFacade* MeterFacade::create(QQmlEngine*, QJSEngine*)
{
    return offeredSingleton(s_instance, "Meter");
}

void MeterFacade::followCurrentProfile()
{
    disconnect(m_profileConnection);
    if (ProfileSettings* profile = m_settings.currentProfileSettings()) {
        m_profileConnection = connect(profile, &ProfileSettings::objectWillChange, this,
                                      &MeterFacade::scheduleRefresh);
    }
    refreshScales();
}

void MeterFacade::scheduleRefresh()
{
    // Steps and limits are read once the profile's writes, and the meter's reload after
    // them, are done.
    m_refresh.schedule();
}

void MeterFacade::refreshScales()
{
    for (ExposureScaleModel* scale :
         {m_isoScale, m_apertureScale, m_speedScale, m_compensationScale, m_manualScale})
        scale->refresh();
}

ExposureEnums::Mode MeterFacade::mode() const
{
    return qmlMode(m_meter.mode());
}

void MeterFacade::setMode(ExposureEnums::Mode mode)
{
    m_meter.setMode(modeFromQml(mode));
}

bool MeterFacade::hold() const
{
    return m_meter.hold();
}

void MeterFacade::setHold(bool hold)
{
    m_meter.setHold(hold);
}

ComponentView MeterFacade::iso() const
{
    return ComponentView(m_meter.iso());
}

ComponentView MeterFacade::aperture() const
{
    return ComponentView(m_meter.aperture());
}

ComponentView MeterFacade::speed() const
{
    return ComponentView(m_meter.speed());
}

ComponentView MeterFacade::compensation() const
{
    return ComponentView(m_meter.compensation());
}

ComponentView MeterFacade::manualExposure() const
{
    return ComponentView(m_meter.manualExposure());
}

ExposureEnums::Error MeterFacade::exposureError() const
{
    return qmlError(m_meter.exposureError());
}

QString MeterFacade::lightValueText() const
{
    const std::optional<double> lightValue = m_meter.lightValue();
    return lightValue ? kestrum::lightValueText(*lightValue) : QString();
}

} // namespace kestrum
