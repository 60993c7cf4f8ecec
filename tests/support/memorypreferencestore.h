#pragma once

#include "platform/store/preferencestore.h"

#include <QHash>

namespace kestrum {

/// A preference store that keeps its values in memory only: for tests, and for
/// runs that must leave no trace.
class MemoryPreferenceStore final : public PreferenceStore {
public:
    bool sync() override { return true; }

    /// Every persisted key, for checks that something was or was not written.
    QStringList storedKeys() const;
    /// Puts a raw value in place without the typed setters, as another program would.
    void storeRaw(const QString& key, const QVariant& value) { store(key, value); }

protected:
    std::optional<QVariant> stored(const QString& key) const override;
    void store(const QString& key, const QVariant& value) override;

private:
    mutable QMutex m_mutex;
    QHash<QString, QVariant> m_values;
};

} // namespace kestrum
