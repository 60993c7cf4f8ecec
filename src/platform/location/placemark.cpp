#include "placemark.h"

#include <QStringList>

namespace kestrum {

QString humanReadableLocation(const Placemark& placemark)
{
    QStringList parts;
    for (const auto& part : {placemark.name, placemark.locality}) {
        if (part && !part->isEmpty())
            parts.append(*part);
    }
    return parts.join(u", ");
}

} // namespace kestrum
