#include "memorypreferencestore.h"

#include <QMutexLocker>

namespace kestrum {

QStringList MemoryPreferenceStore::storedKeys() const
{
    const QMutexLocker lock(&m_mutex);
    return m_values.keys();
}

std::optional<QVariant> MemoryPreferenceStore::stored(const QString& key) const
{
    const QMutexLocker lock(&m_mutex);
    const auto found = m_values.constFind(key);
    if (found == m_values.constEnd())
        return std::nullopt;
    return *found;
}

void MemoryPreferenceStore::store(const QString& key, const QVariant& value)
{
    const QMutexLocker lock(&m_mutex);
    m_values.insert(key, value);
}

} // namespace kestrum
