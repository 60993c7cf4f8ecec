#include "inipreferencestore.h"

#include <QFile>
#include <QLocale>
#include <QMutexLocker>
#include <QStandardPaths>
#include <QStringDecoder>
#include <QtGlobal>

#include <utility>

namespace kestrum {

namespace {

const QString kArraySizeKey = QStringLiteral("size");

QVariant storedForm(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::LongLong:
    case QMetaType::Int:
        return QString::number(value.toLongLong());
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    default:
        return value;
    }
}

// Whether the file holds what no settings file would: QSettings reads through such
// bytes without complaint and drops them on the next write.
bool holdsBinary(const QString& filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    if (bytes.contains('\0'))
        return true;
    QStringDecoder utf8(QStringDecoder::Utf8);
    [[maybe_unused]] const QString text = utf8(bytes);
    return utf8.hasError();
}

} // namespace

IniPreferenceStore::IniPreferenceStore(const QString& filePath)
{
    m_settings.emplace(filePath, QSettings::IniFormat);
    m_keepCorruptCopy = m_settings->status() == QSettings::FormatError || holdsBinary(filePath);
    if (m_keepCorruptCopy)
        qWarning("settings file %s is damaged; readable values are used", qPrintable(filePath));
}

IniPreferenceStore::~IniPreferenceStore()
{
    sync();
}

QString IniPreferenceStore::defaultFilePath()
{
    const QString fromEnvironment = qEnvironmentVariable("KESTRUM_SETTINGS");
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    const QSettings standard(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Kestrum"),
                             QStringLiteral("kestrum"));
    return standard.fileName();
}

QString IniPreferenceStore::filePath() const
{
    return m_settings->fileName();
}

bool IniPreferenceStore::sync()
{
    const QMutexLocker lock(&m_mutex);
    m_settings->sync();
    const bool written = std::exchange(m_unsynced, false);
    if (m_settings->status() != QSettings::FormatError)
        return m_settings->status() == QSettings::NoError;
    if (!written)
        return true; // a damaged file that was only read stays as it is
    // QSettings reads a damaged file again while writing it and keeps reporting the damage
    // ever after, which would hide whether the write worked. Carry the values over to a
    // fresh QSettings on the same file, whose status then tells.
    QList<std::pair<QString, QVariant>> values;
    for (const QString& key : m_settings->allKeys())
        values.append({key, m_settings->value(key)});
    const QString path = m_settings->fileName();
    m_settings.emplace(path, QSettings::IniFormat);
    for (const auto& [key, value] : values)
        m_settings->setValue(key, value);
    m_settings->sync();
    return m_settings->status() == QSettings::NoError;
}

std::optional<QVariant> IniPreferenceStore::stored(const QString& key) const
{
    const QMutexLocker lock(&m_mutex);
    if (m_settings->contains(key))
        return m_settings->value(key);
    if (m_settings->childGroups().contains(key))
        return storedArray(key);
    return std::nullopt;
}

// An array group as QVariantList; an element that is not a group of plain strings
// is passed on as it stands, so that callers can reject the array as a whole. An
// element with no entries at all is an empty map, as `store` writes one.
std::optional<QVariant> IniPreferenceStore::storedArray(const QString& key) const
{
    m_settings->beginGroup(key);
    bool sizeIsNumber = false;
    const int size = m_settings->value(kArraySizeKey).toString().toInt(&sizeIsNumber);
    QVariantList elements;
    if (sizeIsNumber && size >= 0) {
        const QStringList groups = m_settings->childGroups();
        for (int index = 1; index <= size; ++index) {
            const QString element = QString::number(index);
            if (!groups.contains(element)) {
                elements.append(m_settings->contains(element) ? m_settings->value(element)
                                                              : QVariant(QVariantMap()));
                continue;
            }
            m_settings->beginGroup(element);
            QVariantMap map;
            for (const QString& mapKey : m_settings->childKeys())
                map.insert(mapKey, m_settings->value(mapKey));
            m_settings->endGroup();
            elements.append(map);
        }
    }
    m_settings->endGroup();
    if (!sizeIsNumber || size < 0)
        return QVariant(); // not an array
    return elements;
}

void IniPreferenceStore::store(const QString& key, const QVariant& value)
{
    const QMutexLocker lock(&m_mutex);
    keepCorruptCopy();
    m_unsynced = true;
    m_settings->remove(key);
    if (value.typeId() != QMetaType::QVariantList) {
        m_settings->setValue(key, storedForm(value));
        return;
    }
    const QVariantList elements = value.toList();
    m_settings->beginWriteArray(key, static_cast<int>(elements.size()));
    for (qsizetype index = 0; index < elements.size(); ++index) {
        m_settings->setArrayIndex(static_cast<int>(index));
        const QVariantMap map = elements.at(index).toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it)
            m_settings->setValue(it.key(), storedForm(it.value()));
    }
    m_settings->endArray();
}

void IniPreferenceStore::keepCorruptCopy()
{
    if (!m_keepCorruptCopy)
        return;
    m_keepCorruptCopy = false;
    const QString path = m_settings->fileName();
    const QString copy = path + QStringLiteral(".corrupt");
    QFile::remove(copy);
    if (!QFile::copy(path, copy))
        qWarning("could not keep a copy of the damaged settings file at %s", qPrintable(copy));
}

} // namespace kestrum
