#pragma once

#include <QHashFunctions>
#include <QJsonObject>
#include <QMetaType>
#include <QString>

#include <optional>

namespace kestrum {

/// One entry of the profile list: an id, fixed once made, that prefixes the keys of
/// the profile's settings, and a name the user may change. Two profiles are equal
/// when both id and name are; the id alone identifies an entry in the list.
struct Profile {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString name MEMBER name)

public:
    QString id;
    QString name;

    /// The built-in first profile: id "default", named by the catalogue's
    /// "profile.default", looked up once per process (so load the catalogue first).
    static Profile defaultProfile();

    /// {"id": …, "name": …}
    QJsonObject toJson() const;
    /// The profile of an object with the string members "id" and "name"; nothing
    /// when either is missing or not a string.
    static std::optional<Profile> fromJson(const QJsonObject& object);

    friend bool operator==(const Profile&, const Profile&) = default;
};

inline size_t qHash(const Profile& profile, size_t seed = 0) noexcept
{
    return qHashMulti(seed, profile.id, profile.name);
}

} // namespace kestrum
