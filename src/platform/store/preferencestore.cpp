#include "preferencestore.h"

#include <QMutexLocker>

#include <charconv>
#include <cmath>
#include <string>

namespace kestrum {

namespace {

// Reads the whole text as a number or fails: "12abc", " 12" and "" are not numbers.
template <typename T> std::optional<T> parseWhole(const QString& text)
{
    const std::string bytes = text.toStdString();
    T parsed{};
    const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), parsed);
    if (error != std::errc() || end != bytes.data() + bytes.size() || bytes.empty())
        return std::nullopt;
    return parsed;
}

std::optional<double> asDouble(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::LongLong:
    case QMetaType::Int:
        return value.toDouble();
    case QMetaType::QString:
        if (const auto parsed = parseWhole<double>(value.toString());
            parsed && std::isfinite(*parsed))
            return parsed;
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<qint64> asInteger(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::Int:
        return value.toLongLong();
    case QMetaType::QString:
        return parseWhole<qint64>(value.toString());
    default:
        return std::nullopt;
    }
}

std::optional<bool> asBoolean(const QVariant& value)
{
    if (value.typeId() == QMetaType::Bool)
        return value.toBool();
    if (value.typeId() == QMetaType::QString) {
        const QString text = value.toString();
        if (text == u"true")
            return true;
        if (text == u"false")
            return false;
    }
    if (const auto number = asInteger(value))
        return *number != 0;
    return std::nullopt;
}

std::optional<QString> asString(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    return std::nullopt;
}

std::optional<QVariantList> asArray(const QVariant& value)
{
    if (value.typeId() == QMetaType::QVariantList)
        return value.toList();
    return std::nullopt;
}

} // namespace

void PreferenceStore::registerDefaults(const QVariantHash& defaults)
{
    const QMutexLocker lock(&m_registrationMutex);
    m_registered.insert(defaults);
}

std::optional<QVariant> PreferenceStore::registered(const QString& key) const
{
    const QMutexLocker lock(&m_registrationMutex);
    const auto found = m_registered.constFind(key);
    if (found == m_registered.constEnd())
        return std::nullopt;
    return *found;
}

template <typename T, typename Parse>
std::optional<T> PreferenceStore::read(const QString& key, Parse parse) const
{
    if (const auto value = stored(key)) {
        if (auto parsed = parse(*value))
            return parsed;
    }
    if (const auto value = registered(key))
        return parse(*value);
    return std::nullopt;
}

std::optional<QString> PreferenceStore::string(const QString& key) const
{
    return read<QString>(key, asString);
}

double PreferenceStore::doubleValue(const QString& key) const
{
    return read<double>(key, asDouble).value_or(0.0);
}

qint64 PreferenceStore::integer(const QString& key) const
{
    return read<qint64>(key, asInteger).value_or(0);
}

bool PreferenceStore::boolean(const QString& key) const
{
    return read<bool>(key, asBoolean).value_or(false);
}

std::optional<QVariantList> PreferenceStore::array(const QString& key) const
{
    return read<QVariantList>(key, asArray);
}

void PreferenceStore::setString(const QString& key, const QString& value)
{
    store(key, value);
}

void PreferenceStore::setDouble(const QString& key, double value)
{
    store(key, value);
}

void PreferenceStore::setInteger(const QString& key, qint64 value)
{
    store(key, value);
}

void PreferenceStore::setBoolean(const QString& key, bool value)
{
    store(key, value);
}

void PreferenceStore::setArrayOfMaps(const QString& key, const QList<StringMap>& maps)
{
    QVariantList array;
    array.reserve(maps.size());
    for (const StringMap& map : maps) {
        QVariantMap element;
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            element.insert(it.key(), it.value());
        array.append(element);
    }
    store(key, array);
}

} // namespace kestrum
