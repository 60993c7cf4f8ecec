#pragma once

#include <QMap>
#include <QMutex>
#include <QString>
#include <QVariant>
#include <QVariantHash>

#include <optional>

namespace kestrum {

/// The key-value preference store in which every setting of the meter lives.
///
/// Values are strings, 64-bit floats, integers, booleans and arrays of
/// string-to-string maps. A read returns what is stored under a key, else the
/// value registered for it as a fallback, else nothing. Registered fallbacks live
/// in memory only: they are never written. A stored value that does not parse as
/// the type asked for reads as absent, so the fallback applies.
///
/// Implementations only persist raw values; this class holds the registration
/// domain and the typed reading rules, so every implementation reads alike. Safe
/// to use from any thread.
class PreferenceStore {
public:
    using StringMap = QMap<QString, QString>;

    virtual ~PreferenceStore() = default;

    /// Adds fallback values (QString, double, qint64, bool or QVariantList of
    /// QVariantMap) for keys with nothing stored. Later registrations replace earlier ones.
    void registerDefaults(const QVariantHash& defaults);

    std::optional<QString> string(const QString& key) const;
    /// The float under `key`; 0.0 when absent and unregistered.
    double doubleValue(const QString& key) const;
    /// The integer under `key`; 0 when absent and unregistered.
    qint64 integer(const QString& key) const;
    /// The boolean under `key`; false when absent and unregistered.
    bool boolean(const QString& key) const;
    /// The array under `key` as stored: each element a QVariantMap of strings when
    /// well formed, anything else where the element is malformed. Nothing when the
    /// key holds no array.
    std::optional<QVariantList> array(const QString& key) const;

    void setString(const QString& key, const QString& value);
    void setDouble(const QString& key, double value);
    void setInteger(const QString& key, qint64 value);
    void setBoolean(const QString& key, bool value);
    void setArrayOfMaps(const QString& key, const QList<StringMap>& maps);

    /// Writes pending changes to permanent storage; false when that failed.
    virtual bool sync() = 0;

protected:
    /// What is persisted under `key`, or nothing. Numbers may come back as text.
    virtual std::optional<QVariant> stored(const QString& key) const = 0;
    /// Persists `value` (QString, double, qint64, bool or QVariantList of QVariantMap).
    virtual void store(const QString& key, const QVariant& value) = 0;

private:
    std::optional<QVariant> registered(const QString& key) const;
    template <typename T, typename Parse>
    std::optional<T> read(const QString& key, Parse parse) const;

    mutable QMutex m_registrationMutex;
    QVariantHash m_registered;
};

} // namespace kestrum
