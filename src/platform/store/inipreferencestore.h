#pragma once

#include "preferencestore.h"

#include <QSettings>

#include <optional>

namespace kestrum {

/// The preference store kept in an INI file through QSettings.
///
/// Numbers are written as their shortest round-trip text, so a float reads back
/// exactly. An array of maps becomes a QSettings array group (`key/size`,
/// `key/1/<map key>=<value>`, ...). A damaged file (one QSettings cannot parse, or
/// binary bytes) is read for what it yields and copied aside to "<file>.corrupt" before
/// the first write, so nothing a user had is silently lost; the write keeps what was
/// readable. The file is only written when a value is set.
class IniPreferenceStore final : public PreferenceStore {
public:
    explicit IniPreferenceStore(const QString& filePath);
    ~IniPreferenceStore() override;

    /// The app's settings file: `KESTRUM_SETTINGS` when set, else the per-user
    /// QSettings location (~/.config/Kestrum/kestrum.ini on Linux).
    static QString defaultFilePath();

    QString filePath() const;
    bool sync() override;

protected:
    std::optional<QVariant> stored(const QString& key) const override;
    void store(const QString& key, const QVariant& value) override;

private:
    std::optional<QVariant> storedArray(const QString& key) const;
    void keepCorruptCopy();

    mutable QMutex m_mutex;
    mutable std::optional<QSettings> m_settings; // replaced once a damaged file is rewritten
    bool m_keepCorruptCopy = false;
    bool m_unsynced = false; // values set since the last sync
};

} // namespace kestrum
