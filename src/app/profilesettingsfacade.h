#pragma once

#include "app/coalescedcall.h"

#include "app/exposureenums.h"
#include "app/exposurescalemodel.h"
#include "exposure/componentview.h"

#include <QMetaObject>
#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

#include <memory>

namespace kestrum {

class PreferenceStore;
class ProfileSettings;
class Settings;

/// One profile's settings for the profile editor (`ProfileSettings`, made by
/// `AppSettings.profileSettings(id)`): the three steps, the six limits, the mode and the
/// stored ISO, aperture and speed, read from and written straight to the preference
/// store.
///
/// Limits are chosen by index into their choices (`minimumISOChoices.currentIndex = i`),
/// which offer the step's scale cut at the editor's pivots. Writing a step moves the
/// limits onto the new scale and writing a limit moves the values inside the limits, as
/// ProfileSettings does. `changed` follows every write, from here or from anyone else
/// working on the same profile object.
///
/// Edits of the current profile go through the settings object the meter follows, so the
/// meter takes them up at once.
class ProfileSettingsFacade : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(ProfileSettings)
    QML_UNCREATABLE("made by AppSettings.profileSettings(id)")
    Q_PROPERTY(QString profileId READ profileId CONSTANT)
    Q_PROPERTY(kestrum::ExposureEnums::Step fractionForAperture READ fractionForAperture WRITE
                   setFractionForAperture NOTIFY changed)
    Q_PROPERTY(kestrum::ExposureEnums::Step fractionForSpeed READ fractionForSpeed WRITE
                   setFractionForSpeed NOTIFY changed)
    Q_PROPERTY(kestrum::ExposureEnums::Step fractionForISO READ fractionForISO WRITE
                   setFractionForISO NOTIFY changed)
    Q_PROPERTY(kestrum::ExposureEnums::Mode mode READ mode WRITE setMode NOTIFY changed)
    Q_PROPERTY(kestrum::ComponentView minimumAperture READ minimumAperture NOTIFY changed)
    Q_PROPERTY(kestrum::ComponentView maximumAperture READ maximumAperture NOTIFY changed)
    Q_PROPERTY(kestrum::ComponentView minimumSpeed READ minimumSpeed NOTIFY changed)
    Q_PROPERTY(kestrum::ComponentView maximumSpeed READ maximumSpeed NOTIFY changed)
    Q_PROPERTY(kestrum::ComponentView minimumISO READ minimumISO NOTIFY changed)
    Q_PROPERTY(kestrum::ComponentView maximumISO READ maximumISO NOTIFY changed)
    Q_PROPERTY(
        kestrum::ExposureScaleModel* minimumApertureChoices MEMBER m_minimumApertures CONSTANT)
    Q_PROPERTY(
        kestrum::ExposureScaleModel* maximumApertureChoices MEMBER m_maximumApertures CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* minimumSpeedChoices MEMBER m_minimumSpeeds CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* maximumSpeedChoices MEMBER m_maximumSpeeds CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* minimumISOChoices MEMBER m_minimumISOs CONSTANT)
    Q_PROPERTY(kestrum::ExposureScaleModel* maximumISOChoices MEMBER m_maximumISOs CONSTANT)
    Q_PROPERTY(double isoSpeed READ isoSpeed WRITE setISOSpeed NOTIFY changed)
    Q_PROPERTY(double fNumber READ fNumber WRITE setFNumber NOTIFY changed)
    Q_PROPERTY(double exposureTimeS READ exposureTimeS WRITE setExposureTimeS NOTIFY changed)

public:
    /// The settings of profile `profileId`; `settings` and `store` must outlive it.
    ProfileSettingsFacade(const QString& profileId, Settings& settings, PreferenceStore& store,
                          QObject* parent = nullptr);
    ~ProfileSettingsFacade() override;

    const QString& profileId() const { return m_profileId; }

    ExposureEnums::Step fractionForAperture() const;
    void setFractionForAperture(ExposureEnums::Step step);
    ExposureEnums::Step fractionForSpeed() const;
    void setFractionForSpeed(ExposureEnums::Step step);
    ExposureEnums::Step fractionForISO() const;
    void setFractionForISO(ExposureEnums::Step step);
    ExposureEnums::Mode mode() const;
    void setMode(ExposureEnums::Mode mode);

    ComponentView minimumAperture() const;
    ComponentView maximumAperture() const;
    ComponentView minimumSpeed() const;
    ComponentView maximumSpeed() const;
    ComponentView minimumISO() const;
    ComponentView maximumISO() const;

    /// The stored values: ISO speed, f-number, exposure time in seconds.
    double isoSpeed() const;
    void setISOSpeed(double iso);
    double fNumber() const;
    void setFNumber(double fNumber);
    double exposureTimeS() const;
    void setExposureTimeS(double seconds);

signals:
    void changed();

private:
    ProfileSettings& profile() const { return *m_profile; }
    void follow();
    void scheduleRefresh();
    void refresh();
    template <typename Write> void write(Write write);
    template <typename C>
    ExposureScaleModel* choices(bool minimum, C (ProfileSettings::*limit)() const,
                                void (ProfileSettings::*setLimit)(const C&),
                                Fraction (ProfileSettings::*fraction)() const);

    const QString m_profileId;
    Settings& m_settings;
    PreferenceStore& m_store;
    std::unique_ptr<ProfileSettings> m_own; // when the profile is not the current one
    ProfileSettings* m_profile = nullptr;
    QMetaObject::Connection m_profileConnection;
    CoalescedCall m_refresh{this, [this] { refresh(); }};
    ExposureScaleModel* m_minimumApertures;
    ExposureScaleModel* m_maximumApertures;
    ExposureScaleModel* m_minimumSpeeds;
    ExposureScaleModel* m_maximumSpeeds;
    ExposureScaleModel* m_minimumISOs;
    ExposureScaleModel* m_maximumISOs;
};

} // namespace kestrum
