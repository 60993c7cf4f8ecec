#include "encodedimage.h"

#include "platform/photos/jpegsegments.h"

#include <QBuffer>
#include <QImageReader>

namespace kestrum {

EncodedImage::EncodedImage(Source source, QSize size)
    : m_source(std::move(source))
    , m_size(size)
{}

std::optional<EncodedImage> EncodedImage::fromData(const QByteArray& data, Source source)
{
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!reader.canRead() || !size.isValid() || size.isEmpty())
        return std::nullopt;
    if (reader.format() == "jpeg") {
        const auto segments = JpegSegments::of(data);
        if (!segments || !segments->complete)
            return std::nullopt;
    }
    if (!source)
        source = [data] { return data; };
    return EncodedImage(std::move(source), size);
}

QImage EncodedImage::decoded() const
{
    return decoded(m_size);
}

QImage EncodedImage::decoded(QSize boundingSize) const
{
    QBuffer buffer;
    buffer.setData(data());
    QImageReader reader(&buffer);
    const QSize fitted = m_size.scaled(boundingSize.boundedTo(m_size), Qt::KeepAspectRatio);
    if (fitted != m_size && !fitted.isEmpty())
        reader.setScaledSize(fitted);
    return reader.read();
}

} // namespace kestrum
