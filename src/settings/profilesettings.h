#pragma once

#include "exposure/exposurecomponent.h"
#include "exposure/mode.h"

#include <QObject>
#include <QString>

#include <array>
#include <optional>

namespace kestrum {

class PreferenceStore;

/// The persisted meter choices of one profile: the scale step of aperture, speed
/// and ISO, a minimum and maximum of each, the metering mode, and the current ISO,
/// aperture and shutter speed.
///
/// Nothing is kept in memory: every read goes to the preference store and every
/// write goes straight to it, under keys that start with the profile id and a full
/// stop ("default.mode"), so profiles live side by side in one store and two
/// instances for one profile see each other's writes at once. `objectWillChange` is
/// emitted once before every write. Two rules keep a profile consistent: after a
/// step changes every limit moves onto the new scale (`snapLimits`), and after a
/// limit changes the current values move inside the limits (`snapValues`).
///
/// For shutter speeds the minimum is the slowest (longest) time, the maximum the
/// fastest, in the order of the speed scale. A pair stored in reverse order stops
/// the program when the values are snapped.
class ProfileSettings : public QObject {
    Q_OBJECT

public:
    /// Registers the fallback of every setting under the profile's keys; writes nothing.
    ProfileSettings(const std::optional<QString>& profileID, PreferenceStore& store,
                    QObject* parent = nullptr);

    /// The profile id and ".", or empty without an id.
    const QString& prefix() const { return m_prefix; }

    Fraction fractionForAperture() const;
    void setFractionForAperture(Fraction fraction);
    Fraction fractionForSpeed() const;
    void setFractionForSpeed(Fraction fraction);
    Fraction fractionForISO() const;
    void setFractionForISO(Fraction fraction);

    // Limits read back as the table entry nearest to the stored value.
    ShutterSpeed minimumSpeed() const;
    void setMinimumSpeed(const ShutterSpeed& speed);
    ShutterSpeed maximumSpeed() const;
    void setMaximumSpeed(const ShutterSpeed& speed);
    Aperture minimumAperture() const;
    void setMinimumAperture(const Aperture& aperture);
    Aperture maximumAperture() const;
    void setMaximumAperture(const Aperture& aperture);
    ISO minimumISO() const;
    void setMinimumISO(const ISO& iso);
    ISO maximumISO() const;
    void setMaximumISO(const ISO& iso);

    Mode mode() const;
    void setMode(Mode mode);

    // Current values read back as stored: step full, the stored value, no display
    // text. Those who show them match them against a scale themselves.
    ISO iso() const;
    void setISO(const ISO& iso);
    Aperture aperture() const;
    void setAperture(const Aperture& aperture);
    ShutterSpeed speed() const;
    void setSpeed(const ShutterSpeed& speed);

    /// Moves ISO, then aperture, then speed to the nearest entry of its scale cut
    /// to the limits; writes all three, changed or not.
    void snapValues();
    /// Moves each limit onto the current scale of its component, each move followed
    /// by `snapValues()`.
    void snapLimits();

signals:
    /// Emitted immediately before any stored value of this profile changes.
    void objectWillChange();

private:
    enum class Key {
        fractionForAperture,
        fractionForSpeed,
        fractionForISO,
        minimumSpeed,
        maximumSpeed,
        minimumAperture,
        maximumAperture,
        minimumISO,
        maximumISO,
        mode,
        iso,
        aperture,
        speed,
    };
    static constexpr std::size_t kKeyCount = 13;

    const QString& key(Key key) const;
    Fraction fraction(Key key) const;
    void setFraction(Key key, Fraction fraction);
    template <typename C> C limit(Key key) const;
    template <typename C> void setLimit(Key key, const C& entry);
    template <typename C> C current(Key key) const;
    template <typename C> void setCurrent(Key key, const C& entry);
    template <typename C>
    void snapValue(Fraction fraction, const C& minimum, const C& maximum, Key valueKey);
    template <typename C> void snapLimit(Fraction fraction, Key limitKey);
    void writeDouble(Key key, double value);

    PreferenceStore& m_store;
    QString m_prefix;
    std::array<QString, kKeyCount> m_keys;
};

} // namespace kestrum
