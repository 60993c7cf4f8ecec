#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <functional>
#include <optional>

namespace kestrum {

/// A photo kept encoded, and decoded each time it is drawn.
///
/// A few hundred photos decoded at full size would take gigabytes (48 MB for each
/// 12-megapixel one), and even their JPEG bytes run to hundreds of megabytes, so the
/// album checks each photo's bytes once and keeps only a way to read them again from
/// where they are stored. Decoding happens on request, at full size or scaled down while
/// decoding (which for JPEG costs a fraction of a full decode). Copies share the source.
class EncodedImage {
public:
    /// Reads the stored bytes again; empty once they are gone. Called from any thread.
    using Source = std::function<QByteArray()>;

    EncodedImage() = default;

    /// The image in `data`, checked now and read again from `source` whenever it is
    /// decoded (from `data` itself, kept in memory, when there is no source). Nothing when
    /// the data holds no image of known size, or, for JPEG, is cut off before the end of
    /// its image data.
    static std::optional<EncodedImage> fromData(const QByteArray& data, Source source = {});

    bool isNull() const { return !m_source; }
    /// Width and height in pixels, as stored.
    QSize size() const { return m_size; }
    /// The bytes as stored now; empty when they are gone.
    QByteArray data() const { return m_source ? m_source() : QByteArray(); }

    /// The whole image at its stored size; null when it can no longer be read or decoded.
    QImage decoded() const;
    /// The image scaled to fit within `boundingSize`, keeping its aspect ratio; never
    /// larger than stored.
    QImage decoded(QSize boundingSize) const;

private:
    EncodedImage(Source source, QSize size);

    Source m_source;
    QSize m_size;
};

} // namespace kestrum
