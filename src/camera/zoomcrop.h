#pragma once

#include <QRect>
#include <QSize>

namespace kestrum {

/// The part of a frame of `size` that a lens zoomed in by `factor` would see: the middle
/// 1/factor of each axis, at least one pixel. A factor of 1 or less (or not a number)
/// keeps the whole frame.
QRect zoomCrop(QSize size, float factor);

} // namespace kestrum
