#pragma once

#include "app/coalescedcall.h"

#include "app/exposureenums.h"
#include "app/exposurescalemodel.h"
#include "exposure/componentview.h"

#include <QMetaObject>
#include <QObject>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace kestrum {

class CalculationController;
class Settings;

/// The meter as the main screen sees it (`Meter`): the calculation controller's mode,
/// hold and exposure, and the scales its controls offer.
///
/// ISO, aperture, speed and compensation are chosen by index into their scale:
/// `Meter.apertureScale.currentIndex = i` picks the i-th offered aperture, as a strip of
/// display texts knows which of its delegates the user stopped on. The scales follow the
/// current profile's steps and limits: apertures and speeds from the calculator, ISO
/// speeds cut to the profile's ISO limits, compensations on the profile's ISO step.
/// `manualScale` is the compensation scale on which the manual deviation is shown; its
/// `currentIndex` is the entry nearest to the deviation, and it cannot be chosen from.
class MeterFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Meter)
    QML_SINGLETON
    Q_PROPERTY(kestrum::ExposureEnums::Mode mode READ mode WRITE setMode NOTIFY modeChanged)
    Q_PROPERTY(bool hold READ hold WRITE setHold NOTIFY holdChanged)
    Q_PROPERTY(kestrum::ComponentView iso READ iso NOTIFY isoChanged)
    Q_PROPERTY(kestrum::ComponentView aperture READ aperture NOTIFY apertureChanged)
    Q_PROPERTY(kestrum::ComponentView speed READ speed NOTIFY speedChanged)
    Q_PROPERTY(kestrum::ComponentView compensation READ compensation NOTIFY compensationChanged)
    Q_PROPERTY(
        kestrum::ComponentView manualExposure READ manualExposure NOTIFY manualExposureChanged)
    Q_PROPERTY(
        kestrum::ExposureEnums::Error exposureError READ exposureError NOTIFY exposureErrorChanged)
    /// The light value the meter works from, as shown: "LV 12.3"; empty before a reading.
    Q_PROPERTY(QString lightValueText READ lightValueText NOTIFY lightValueTextChanged)
    Q_PROPERTY(kestrum::ExposureScaleModel* isoScale READ isoScale CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* apertureScale READ apertureScale CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* speedScale READ speedScale CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* compensationScale READ compensationScale CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* manualScale READ manualScale CONSTANT)

public:
    /// `settings` tells when the current profile, and with it the scales, changes; both
    /// must outlive the facade.
    MeterFacade(CalculationController& meter, Settings& settings, QObject* parent = nullptr);

    static MeterFacade* create(QQmlEngine*, QJSEngine*);
    /// The instance `create()` hands out; the composition root sets it before QML loads.
    static void setInstance(MeterFacade* instance) { s_instance = instance; }

    ExposureEnums::Mode mode() const;
    void setMode(ExposureEnums::Mode mode);
    bool hold() const;
    void setHold(bool hold);
    ComponentView iso() const;
    ComponentView aperture() const;
    ComponentView speed() const;
    ComponentView compensation() const;
    ComponentView manualExposure() const;
    ExposureEnums::Error exposureError() const;
    QString lightValueText() const;

    ExposureScaleModel* isoScale() const { return m_isoScale; }
    ExposureScaleModel* apertureScale() const { return m_apertureScale; }
    ExposureScaleModel* speedScale() const { return m_speedScale; }
    ExposureScaleModel* compensationScale() const { return m_compensationScale; }
    ExposureScaleModel* manualScale() const { return m_manualScale; }

signals:
    void modeChanged();
    void holdChanged();
    void isoChanged();
    void apertureChanged();
    void speedChanged();
    void compensationChanged();
    void manualExposureChanged();
    void exposureErrorChanged();
    void lightValueTextChanged();

private:
    void followCurrentProfile();
    void scheduleRefresh();
    void refreshScales();

    static inline MeterFacade* s_instance = nullptr;

    CalculationController& m_meter;
    Settings& m_settings;
    ExposureScaleModel* m_isoScale;
    ExposureScaleModel* m_apertureScale;
    ExposureScaleModel* m_speedScale;
    ExposureScaleModel* m_compensationScale;
    ExposureScaleModel* m_manualScale;
    QMetaObject::Connection m_profileConnection;
    CoalescedCall m_refresh{this, [this] { refreshScales(); }};
};

} // namespace kestrum
