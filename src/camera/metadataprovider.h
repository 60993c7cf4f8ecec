#pragma once

#include <QFuture>
#include <QVariantMap>

#include <functional>

namespace kestrum {

/// Supplies the image properties of a photo being logged (groups "{Exif}", "{TIFF}",
/// "{GPS}"). The app shell installs one on the live camera; an empty function means
/// none is installed.
using MetadataProvider = std::function<QFuture<QVariantMap>()>;

} // namespace kestrum
