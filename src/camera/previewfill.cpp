#include "previewfill.h"

#include <algorithm>

namespace kestrum {

PreviewFill::PreviewFill(QSizeF frameSize, QSizeF viewSize)
{
    if (frameSize.isEmpty())
        return;
    const double scale =
        std::max(viewSize.width() / frameSize.width(), viewSize.height() / frameSize.height());
    const QSizeF filled = frameSize * scale;
    m_frameRect = QRectF(QPointF((viewSize.width() - filled.width()) / 2.0,
                                 (viewSize.height() - filled.height()) / 2.0),
                         filled);
}

QPointF PreviewFill::devicePoint(QPointF viewPoint) const
{
    if (m_frameRect.isEmpty())
        return {};
    return {(viewPoint.x() - m_frameRect.x()) / m_frameRect.width(),
            (viewPoint.y() - m_frameRect.y()) / m_frameRect.height()};
}

QPointF PreviewFill::viewPoint(QPointF devicePoint) const
{
    return {m_frameRect.x() + devicePoint.x() * m_frameRect.width(),
            m_frameRect.y() + devicePoint.y() * m_frameRect.height()};
}

} // namespace kestrum
