#include "profile.h"

#include <QJsonValue>

namespace kestrum {

namespace {
const QString kIDKey = QStringLiteral("id");
const QString kNameKey = QStringLiteral("name");
} // namespace

Profile Profile::defaultProfile()
{
    //% "Default"
    static const QString name = qtTrId("profile.default");
    return {QStringLiteral("default"), name};
}

QJsonObject Profile::toJson() const
{
    return {{kIDKey, id}, {kNameKey, name}};
}

std::optional<Profile> Profile::fromJson(const QJsonObject& object)
{
    const QJsonValue id = object.value(kIDKey);
    const QJsonValue name = object.value(kNameKey);
    if (!id.isString() || !name.isString())
        return std::nullopt;
    return Profile{id.toString(), name.toString()};
}

} // namespace kestrum
