#include "zoomcrop.h"

#include <QtMath>

#include <algorithm>

namespace kestrum {

QRect zoomCrop(QSize size, float factor)
{
    if (!(factor > 1.0f) || size.isEmpty())
        return QRect(QPoint(0, 0), size);
    const QSize cropped(std::max(1, qRound(size.width() / factor)),
                        std::max(1, qRound(size.height() / factor)));
    const QPoint corner((size.width() - cropped.width()) / 2,
                        (size.height() - cropped.height()) / 2);
    return QRect(corner, cropped);
}

} // namespace kestrum
