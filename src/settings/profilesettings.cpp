#include "profilesettings.h"

#include "exposure/scale.h"
#include "platform/store/preferencestore.h"

namespace kestrum {

namespace {

constexpr std::array<const char*, 13> kKeyNames = {
    "fractionForAperture",
    "fractionForSpeed",
    "fractionForISO",
    "minimumSpeed",
    "maximumSpeed",
    "minimumAperture",
    "maximumAperture",
    "minimumISO",
    "maximumISO",
    "mode",
    "iso",
    "aperture",
    "speed",
};

// Fallbacks: full-stop scales, 4s … 1/1000, f/1.4 … f/22, ISO 50 … 1600, aperture
// priority, ISO 100 at f/2.8 and 1/125 s.
constexpr double kDefaultMinimumSpeedS = 4.0;
constexpr double kDefaultMaximumSpeedS = 0.0009765625;
constexpr double kDefaultMinimumAperture = 1.41;
constexpr double kDefaultMaximumAperture = 22.63;
constexpr double kDefaultMinimumISO = 50.0;
constexpr double kDefaultMaximumISO = 1600.0;
constexpr double kDefaultISO = 100.0;
constexpr double kDefaultAperture = 2.828;
constexpr double kDefaultSpeedS = 0.0078125;

} // namespace

ProfileSettings::ProfileSettings(const std::optional<QString>& profileID, PreferenceStore& store,
                                 QObject* parent)
    : QObject(parent)
    , m_store(store)
    , m_prefix(profileID ? *profileID + QLatin1Char('.') : QString())
{
    for (std::size_t i = 0; i < kKeyCount; ++i)
        m_keys[i] = m_prefix + QLatin1String(kKeyNames[i]);

    const QString full = rawValue(Fraction::full);
    m_store.registerDefaults({
        {key(Key::fractionForAperture), full},
        {key(Key::fractionForSpeed), full},
        {key(Key::fractionForISO), full},
        {key(Key::minimumSpeed), kDefaultMinimumSpeedS},
        {key(Key::maximumSpeed), kDefaultMaximumSpeedS},
        {key(Key::minimumAperture), kDefaultMinimumAperture},
        {key(Key::maximumAperture), kDefaultMaximumAperture},
        {key(Key::minimumISO), kDefaultMinimumISO},
        {key(Key::maximumISO), kDefaultMaximumISO},
        {key(Key::mode), rawValue(Mode::av)},
        {key(Key::iso), kDefaultISO},
        {key(Key::aperture), kDefaultAperture},
        {key(Key::speed), kDefaultSpeedS},
    });
}

const QString& ProfileSettings::key(Key key) const
{
    return m_keys[static_cast<std::size_t>(key)];
}

Fraction ProfileSettings::fraction(Key key) const
{
    return fractionOrFull(m_store.string(this->key(key)));
}

void ProfileSettings::setFraction(Key key, Fraction fraction)
{
    emit objectWillChange();
    m_store.setString(this->key(key), rawValue(fraction));
    snapLimits();
}

template <typename C> C ProfileSettings::limit(Key key) const
{
    return nearestEntry<C>(limitCandidates<C>(), m_store.doubleValue(this->key(key)));
}

template <typename C> void ProfileSettings::setLimit(Key key, const C& entry)
{
    writeDouble(key, entry.value);
    snapValues();
}

template <typename C> C ProfileSettings::current(Key key) const
{
    return C{Fraction::full, m_store.doubleValue(this->key(key)), QString()};
}

template <typename C> void ProfileSettings::setCurrent(Key key, const C& entry)
{
    writeDouble(key, entry.value);
}

void ProfileSettings::writeDouble(Key key, double value)
{
    emit objectWillChange();
    m_store.setDouble(this->key(key), value);
}

Fraction ProfileSettings::fractionForAperture() const
{
    return fraction(Key::fractionForAperture);
}
void ProfileSettings::setFractionForAperture(Fraction f)
{
    setFraction(Key::fractionForAperture, f);
}
Fraction ProfileSettings::fractionForSpeed() const
{
    return fraction(Key::fractionForSpeed);
}
void ProfileSettings::setFractionForSpeed(Fraction f)
{
    setFraction(Key::fractionForSpeed, f);
}
Fraction ProfileSettings::fractionForISO() const
{
    return fraction(Key::fractionForISO);
}
void ProfileSettings::setFractionForISO(Fraction f)
{
    setFraction(Key::fractionForISO, f);
}

ShutterSpeed ProfileSettings::minimumSpeed() const
{
    return limit<ShutterSpeed>(Key::minimumSpeed);
}
void ProfileSettings::setMinimumSpeed(const ShutterSpeed& s)
{
    setLimit(Key::minimumSpeed, s);
}
ShutterSpeed ProfileSettings::maximumSpeed() const
{
    return limit<ShutterSpeed>(Key::maximumSpeed);
}
void ProfileSettings::setMaximumSpeed(const ShutterSpeed& s)
{
    setLimit(Key::maximumSpeed, s);
}
Aperture ProfileSettings::minimumAperture() const
{
    return limit<Aperture>(Key::minimumAperture);
}
void ProfileSettings::setMinimumAperture(const Aperture& a)
{
    setLimit(Key::minimumAperture, a);
}
Aperture ProfileSettings::maximumAperture() const
{
    return limit<Aperture>(Key::maximumAperture);
}
void ProfileSettings::setMaximumAperture(const Aperture& a)
{
    setLimit(Key::maximumAperture, a);
}
ISO ProfileSettings::minimumISO() const
{
    return limit<ISO>(Key::minimumISO);
}
void ProfileSettings::setMinimumISO(const ISO& iso)
{
    setLimit(Key::minimumISO, iso);
}
ISO ProfileSettings::maximumISO() const
{
    return limit<ISO>(Key::maximumISO);
}
void ProfileSettings::setMaximumISO(const ISO& iso)
{
    setLimit(Key::maximumISO, iso);
}

Mode ProfileSettings::mode() const
{
    return modeOrAperturePriority(m_store.string(key(Key::mode)));
}

void ProfileSettings::setMode(Mode mode)
{
    emit objectWillChange();
    m_store.setString(key(Key::mode), rawValue(mode));
}

ISO ProfileSettings::iso() const
{
    return current<ISO>(Key::iso);
}
void ProfileSettings::setISO(const ISO& iso)
{
    setCurrent(Key::iso, iso);
}
Aperture ProfileSettings::aperture() const
{
    return current<Aperture>(Key::aperture);
}
void ProfileSettings::setAperture(const Aperture& a)
{
    setCurrent(Key::aperture, a);
}
ShutterSpeed ProfileSettings::speed() const
{
    return current<ShutterSpeed>(Key::speed);
}
void ProfileSettings::setSpeed(const ShutterSpeed& s)
{
    setCurrent(Key::speed, s);
}

template <typename C>
void ProfileSettings::snapValue(Fraction fraction, const C& minimum, const C& maximum, Key valueKey)
{
    const std::vector<C> cut = cutScale<C>(scale<C>(fraction), minimum.value, maximum.value);
    const C& nearest = nearestEntry<C>(cut, m_store.doubleValue(key(valueKey)));
    writeDouble(valueKey, nearest.value);
}

void ProfileSettings::snapValues()
{
    snapValue(fractionForISO(), minimumISO(), maximumISO(), Key::iso);
    snapValue(fractionForAperture(), minimumAperture(), maximumAperture(), Key::aperture);
    snapValue(fractionForSpeed(), minimumSpeed(), maximumSpeed(), Key::speed);
}

template <typename C> void ProfileSettings::snapLimit(Fraction fraction, Key limitKey)
{
    const C& nearest = nearestEntry<C>(scale<C>(fraction), limit<C>(limitKey).value);
    writeDouble(limitKey, nearest.value);
    snapValues();
}

void ProfileSettings::snapLimits()
{
    snapLimit<ISO>(fractionForISO(), Key::minimumISO);
    snapLimit<ISO>(fractionForISO(), Key::maximumISO);
    snapLimit<Aperture>(fractionForAperture(), Key::minimumAperture);
    snapLimit<Aperture>(fractionForAperture(), Key::maximumAperture);
    snapLimit<ShutterSpeed>(fractionForSpeed(), Key::minimumSpeed);
    snapLimit<ShutterSpeed>(fractionForSpeed(), Key::maximumSpeed);
}

} // namespace kestrum
